#pragma once

#include "Common/BitmapData.h"
#include "ObjectLink.h"

#include <Corvane/Rasterloom/Codecs/FormatReader.h>

#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// What is to be loaded; the sizes are those of a thumbnail's box.
struct FormatReader::Loading {
    ActionType m_enActionType = ActionType::None;
    Frame* m_pFrame = nullptr;
    std::int32_t m_intThumbnailWidth = 0;
    std::int32_t m_intThumbnailHeight = 0;
    Transforms::InterpolationMode m_enThumbnailInterpolation = Transforms::InterpolationMode::Anisotropic4;
};

/// The fields of a `FormatReader`.
struct FormatReader::Impl {
    explicit Impl(FormatReader* pReader) : m_pLink(std::make_shared<ObjectLink<FormatReader>>(pReader)) {}

    /// How frames and cursors find this reader.
    std::shared_ptr<ObjectLink<FormatReader>> m_pLink;
    /// Tells the openings apart, so that a frame of an earlier one is found out.
    std::uint64_t m_uintOpening = 0;
    std::int32_t m_intFrameCount = 0;

    // The load under way.
    bool m_bLoadHoldsLock = false;
    Loading m_loading;
    std::unique_ptr<ImagingFramework::BitmapData> m_pRaster;
};

} // namespace Corvane::Rasterloom::Codecs
