#pragma once

#include "BitmapLink.h"
#include "Common/BitmapData.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/BitmapStatisticsProvider.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <atomic>
#include <memory>

namespace Corvane::Rasterloom {

/// The fields of a `Bitmap`.
struct Bitmap::Impl {
    explicit Impl(Bitmap* pBitmap, std::unique_ptr<ImagingFramework::BitmapData> bitmap)
        : m_pLink(std::make_shared<BitmapLink>(pBitmap)), m_pInternalBitmapData(std::move(bitmap)) {}

    /// How views and providers find this bitmap.
    std::shared_ptr<BitmapLink> m_pLink;
    /// Never null.
    std::unique_ptr<ImagingFramework::BitmapData> m_pInternalBitmapData;
    /// The view that is out; the flag tells, as the pointer is gone already when the host drops the view.
    std::weak_ptr<BitmapData> m_pLockedBitmapData;
    std::atomic<bool> m_bBitsLocked{false};
    /// Bound to the raster's palette; null without one.
    std::shared_ptr<ColorPalette> m_pColorPalette;
    /// Made on demand from the raster's profile.
    std::shared_ptr<ColorProfile> m_pColorProfile;
    std::shared_ptr<TransformsProvider> m_pTransformsProvider;
    std::shared_ptr<BitmapStatisticsProvider> m_pBitmapStatisticsProvider;
    std::shared_ptr<ColorManagementProvider> m_pColorManagementProvider;
    std::shared_ptr<ChannelsProvider> m_pChannelsProvider;

    std::atomic<bool> m_bAborted{false};
    std::int32_t m_intCurProgress = 0;
    std::int32_t m_intMaxProgress = 0;
    std::uint32_t m_uintBeginTimeTick = 0;

    std::atomic<bool> m_bModified{false};
};

} // namespace Corvane::Rasterloom
