#pragma once

#include "BitmapLink.h"
#include "Common/BitmapData.h"
#include "ObjectLink.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/ColorProfile.h>

#include <cstdint>
#include <memory>
#include <string>

namespace Corvane::Rasterloom::Codecs {

/// The properties of a frame that its reader is asked for.
enum class FrameProperty : std::uint32_t {
    Name,
    Width,
    Height,
    PixelFormat,
    HorizontalResolution,
    VerticalResolution,
    ColorProfile,
    Left,
    Top
};

/// The fields of a `Frame`.
struct Frame::Impl {
    /// A property; not loaded means that the reader has to be asked.
    template <class T>
    struct Cell {
        T Value{};
        bool Loaded = true;

        void Set(T value) {
            Value = std::move(value);
            Loaded = true;
        }
    };

    struct Cells {
        Cell<std::string> Name;
        Cell<std::int32_t> Width;
        Cell<std::int32_t> Height;
        Cell<Rasterloom::PixelFormat> PixelFormat{Rasterloom::PixelFormat::FormatUnknown};
        Cell<float> HorizontalResolution{static_cast<float>(ImagingFramework::BitmapData::DefaultResolution)};
        Cell<float> VerticalResolution{static_cast<float>(ImagingFramework::BitmapData::DefaultResolution)};
        Cell<std::shared_ptr<Rasterloom::ColorProfile>> ColorProfile;
        Cell<std::int32_t> Left;
        Cell<std::int32_t> Top;

        /// Calls `body` for each cell of this together with its twin in `other`.
        template <class Body>
        void ForEach(const Cells& other, Body body) {
            body(Name, other.Name);
            body(Width, other.Width);
            body(Height, other.Height);
            body(PixelFormat, other.PixelFormat);
            body(HorizontalResolution, other.HorizontalResolution);
            body(VerticalResolution, other.VerticalResolution);
            body(ColorProfile, other.ColorProfile);
            body(Left, other.Left);
            body(Top, other.Top);
        }
    };

    /// Makes the frame one of `reader`, with nothing loaded.
    void Bind(FormatReader& reader);
    void SetImageProperties(const ImagingFramework::BitmapData& raster);
    template <class T>
    const T& Read(Frame& frame, Cell<T> Cells::*pCell, FrameProperty property);

    std::int32_t m_intIndex = 0;
    Cells m_cells;

    /// Null in a frame that never had a reader.
    std::shared_ptr<ObjectLink<FormatReader>> m_pReaderLink;
    /// Of the reader's openings the one that the frame is of.
    std::uint64_t m_uintReaderOpening = 0;

    /// The frame's own image; null without one, and while the reference below stands for it.
    std::shared_ptr<Bitmap> m_pBitmap;
    /// The host's bitmap, for the events of saving.
    std::shared_ptr<BitmapLink> m_pBitmapToSave;
    /// The host's bitmap is the image: there is no copy.
    bool m_bImageByReference = false;

    /// Where a load goes, locked by this frame; null while none is under way, and when the result stays here.
    Bitmap* m_pLoadingBitmap = nullptr;
    BitmapChange m_enLoadingChange = BitmapChange::Load;
    std::unique_ptr<ImagingFramework::BitmapData> m_pLoadedRaster;
};

} // namespace Corvane::Rasterloom::Codecs
