#pragma once

#include "Common/BitmapData.h"
#include "ObjectLink.h"
#include "StreamWrapper.h"
#include "metadata/MetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/NonSeekableStreamProxy.h>

#include <atomic>
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
    Impl(FormatReader* pReader, std::int64_t mediaFormat, std::unique_ptr<ImagingFramework::MetaData> metaData)
        : m_pLink(std::make_shared<ObjectLink<FormatReader>>(pReader)), m_intMediaFormat(mediaFormat),
          m_pMetaData(std::move(metaData)) {}

    /// How frames and cursors find this reader.
    std::shared_ptr<ObjectLink<FormatReader>> m_pLink;
    std::atomic<std::int64_t> m_intMediaFormat;
    std::unique_ptr<ImagingFramework::MetaData> m_pMetaData;
    std::shared_ptr<NonSeekableStreamProxy> m_pProxy;
    std::shared_ptr<StreamWrapper> m_pStreamWrapper;
    /// Set from the first step of an opening on; `m_bOpened` when it is complete.
    bool m_bAttached = false;
    std::atomic<bool> m_bOpened{false};
    /// Tells the openings apart, so that a frame of an earlier one is found out.
    std::uint64_t m_uintOpening = 0;
    std::int32_t m_intFrameCount = 0;

    // The load under way.
    bool m_bLoadHoldsLock = false;
    Loading m_loading;
    std::unique_ptr<ImagingFramework::BitmapData> m_pRaster;
};

} // namespace Corvane::Rasterloom::Codecs
