#include "metadata/Thumbnails/IThumbnailCreator.h"

#include "metadata/Thumbnails/AnisotropicThumbnailer.h"
#include "metadata/Thumbnails/LanczosThumbnailer.h"
#include "metadata/Thumbnails/NearestNeighbourThumbnailer.h"

namespace ImagingFramework {

IThumbnailCreatorImpl::IThumbnailCreatorImpl(std::uint32_t imageWidth, std::uint32_t imageHeight,
                                             PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                             BitmapData* pThumbBitmapData)
    : m_uintImageWidth(imageWidth), m_uintImageHeight(imageHeight), m_imageFormat(imageFormat), m_uintThumbWidth(0),
      m_uintThumbHeight(0), m_pThumbBitmapData(pThumbBitmapData) {
    if (pThumbBitmapData == nullptr) {
        throw ArgumentNullPointerException("pThumbBitmapData");
    }
    if (imageWidth == 0) {
        throw ArgumentException("uintImageWidth");
    }
    if (imageHeight == 0) {
        throw ArgumentException("uintImageHeight");
    }
    if (PixelFormatIsIndexed(imageFormat) && pImageColorMap == nullptr) {
        throw ArgumentNullPointerException("pImageColorMap");
    }
    if (pThumbBitmapData->GetPixelFormat() != PixelFormat::Format32bppArgb) {
        throw UnsupportedPixelFormatException();
    }
    if (pThumbBitmapData->IsEmpty()) {
        throw ArgumentException("pThumbBitmapData");
    }
    m_uintThumbWidth = pThumbBitmapData->GetWidth();
    m_uintThumbHeight = pThumbBitmapData->GetHeight();
    if (m_uintThumbHeight > m_uintImageHeight) {
        throw ArgumentException("thumbnail height");
    }
    if (m_uintThumbWidth > m_uintImageWidth) {
        throw ArgumentException("thumbnail width");
    }
}

void IThumbnailCreator::CreateThumbnailer(InterpolationMode interpolationMode, std::uint32_t imageWidth,
                                          std::uint32_t imageHeight, PixelFormat imageFormat,
                                          const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData,
                                          std::unique_ptr<IThumbnailCreator>* ppOutThumbnailer) {
    if (ppOutThumbnailer == nullptr) {
        throw ArgumentNullPointerException("ppOutThumbnailer");
    }
    const auto make = [&]<class T, class... Extra>(Extra... extra) {
        *ppOutThumbnailer =
            std::make_unique<T>(extra..., imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData);
    };
    switch (interpolationMode) {
    case InterpolationMode::NearestNeighbour:
        make.template operator()<NearestNeighbourThumbnailer>();
        return;
    case InterpolationMode::Anisotropic4:
        make.template operator()<AnisotropicThumbnailer>(2U);
        return;
    case InterpolationMode::Anisotropic9:
        make.template operator()<AnisotropicThumbnailer>(3U);
        return;
    case InterpolationMode::Lanczos3Filter:
        if (PixelFormatIsExtended(imageFormat)) {
            make.template operator()<LanczosThumbnailer<std::uint16_t>>();
        } else {
            make.template operator()<LanczosThumbnailer<std::uint8_t>>();
        }
        return;
    default:
        throw ArgumentException("thumbnail interpolation mode");
    }
}

} // namespace ImagingFramework
