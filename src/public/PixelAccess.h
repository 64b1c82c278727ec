#pragma once

#include "Common/BitmapData.h"
#include "Common/PixelWalker.h"

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/PixelArray.h>

#include <array>
#include <cstdint>

namespace Corvane::Rasterloom {

class Bitmap;

/// A colour of `space` from its 16-bit channels in memory order.
Color MakeColor(ColorSpace space, const std::array<std::int32_t, 5>& channels);

/// Random access to pixels of an engine raster in public terms; what `Bitmap` and its view have in common.
class PixelAccess {
public:
    using Walker = ImagingFramework::PixelWalker<std::uint16_t, std::uint32_t>;

    /// Borrows the raster, which must not be empty.
    explicit PixelAccess(ImagingFramework::BitmapData& raster) : m_raster(raster) {}

    /// Whether the channels of a format can be read and written one by one.
    static bool HasWholeSamples(ImagingFramework::PixelFormat format);

    Color GetPixel(std::int32_t x, std::int32_t y);
    void SetPixel(std::int32_t x, std::int32_t y, const Color& color);
    void Clear(const Color& color);
    /// The bitmap counts the rows: its progress, its abort flag and its time limit work between them.
    PixelArray Export(Bitmap& bitmap);
    void Import(const PixelArray& array, Bitmap& bitmap);

private:
    void CheckPosition(std::int32_t x, std::int32_t y) const;
    void CheckManipulable() const;
    void CheckArrayFormat() const;
    ImagingFramework::ColorMap& Palette() const;
    std::uint32_t NearestIndex(const Color& color) const;
    /// A walker on one pixel.
    Walker WalkerAt(std::int32_t x, std::int32_t y) const;
    void WriteColor(Walker& walker, const Color& color) const;
    void WriteIndex(std::uint8_t* pRow, std::uint32_t x, std::uint32_t index) const;
    template <class Visit> void VisitSamples(Visit visit, Bitmap& bitmap) const;

    ImagingFramework::BitmapData& m_raster;
};

} // namespace Corvane::Rasterloom
