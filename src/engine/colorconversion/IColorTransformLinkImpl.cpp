#include "colorconversion/IColorTransformLinkImpl.h"

namespace ImagingFramework {

void IColorTransformLinkImpl::CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const {
    if (ppNewInstance == nullptr) {
        throw ArgumentNullPointerException("ppNewInstance");
    }
    ppNewInstance->reset();
}

void IColorTransformLinkImpl::AllocScanline(MemPtr<std::uint8_t>* ppBuffer, std::uint32_t pixelCount,
                                            std::uint32_t bits, std::uint32_t alignment) {
    if (ppBuffer == nullptr) {
        throw ArgumentNullPointerException("ppScanlineBuffer");
    }
    ppBuffer->AllocateCount(std::max<std::uint64_t>(CalculateStride64(pixelCount, bits, alignment), 1));
}

void IColorTransformLinkImpl::AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const {
    AllocScanline(ppScanlineBuffer, m_run.PixelCount, PixelFormatSize(m_dstFormat), 1);
}

bool IColorTransformLinkImpl::ApplyProviderTransform(const std::uint8_t* source, PixelFormat sourceFormat,
                                                     std::uint8_t* destination, PixelFormat destinationFormat) {
    if (m_srcFormat == IndexedFormat || m_dstFormat == IndexedFormat || !IsProviderReady()) {
        return false;
    }
    const bool areOwn = sourceFormat == m_srcFormat && destinationFormat == m_dstFormat;
    if (!areOwn && !(m_pProvider->IsFormatSupported(sourceFormat) && m_pProvider->IsFormatSupported(destinationFormat))) {
        return false;
    }
    m_pProvider->TransformScanline(source, sourceFormat, destination, destinationFormat, m_run.PixelCount);
    return true;
}

bool IColorTransformLinkImpl::BeginRun(const std::uint8_t* source, std::uint8_t* destination) {
    UpdateEvents(1);
    return ApplyProviderTransform(source, destination);
}

} // namespace ImagingFramework
