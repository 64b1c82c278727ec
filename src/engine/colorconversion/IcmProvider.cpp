#include "colorconversion/IcmProvider.h"

#include "Common/LcmsProfile.h"
#include "ErrorHandling/Exceptions.h"

namespace ImagingFramework {

bool IcmProvider::Open(const std::string* pProfileName) {
    if (pProfileName == nullptr) {
        return false;
    }
    const LcmsProfile profile(*pProfileName); // fails for what is no profile
    return true;
}

bool IcmProvider::IsFormatSupported(PixelFormat format) const {
    switch (format) {
    case PixelFormat::Format32bppArgb:
    case PixelFormat::Format64bppArgb:
    case PixelFormat::Format16bppAGrayScale:
    case PixelFormat::Format32bppAGrayScale:
    case PixelFormat::Format40bppAcmyk:
    case PixelFormat::Format80bppAcmyk:
        return true;
    default:
        return false;
    }
}

void IcmProvider::TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat,
                                    std::uint8_t* pDestBuffer, PixelFormat destinationFormat,
                                    std::uint32_t pixelCount) {
    CheckScanline(pSrcBuffer, pDestBuffer, pixelCount);
    if (!IsFormatSupported(sourceFormat) || !IsFormatSupported(destinationFormat)) {
        throw UnsupportedPixelFormatException();
    }
    if (!IsReady()) {
        throw NotInitializedException("color management provider");
    }
    throw CmAdobeModuleLoadException();
}

} // namespace ImagingFramework
