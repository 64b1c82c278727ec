#pragma once

#include "metadata/Thumbnails/IThumbnailCreator.h"

namespace ImagingFramework {

/// What every creator knows: the image that comes and the thumbnail that it fills.
class IThumbnailCreatorImpl : public IThumbnailCreator {
protected:
    /// Fails as `CreateThumbnailer` tells.
    IThumbnailCreatorImpl(std::uint32_t imageWidth, std::uint32_t imageHeight, PixelFormat imageFormat,
                          const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    bool HasImageSize() const noexcept {
        return m_uintImageWidth == m_uintThumbWidth && m_uintImageHeight == m_uintThumbHeight;
    }

    std::uint32_t m_uintImageWidth;
    std::uint32_t m_uintImageHeight;
    PixelFormat m_imageFormat;
    std::uint32_t m_uintThumbWidth;
    std::uint32_t m_uintThumbHeight;
    BitmapData* m_pThumbBitmapData;
};

} // namespace ImagingFramework
