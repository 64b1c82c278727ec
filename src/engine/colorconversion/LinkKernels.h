#pragma once

#include "colorconversion/IColorTransformLinkImpl.h"
#include "colorconversion/VectorKernels.h"

#include <cstdint>

/// The arithmetic of the conversion links: each converts a run of `PixelCount` pixels. Source and destination do not
/// overlap and need no alignment.
namespace ImagingFramework::LinkKernels {

using Kernel = void (*)(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);

template <std::uint32_t PixelSize>
void Copy(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    std::copy_n(source, std::size_t{run.PixelCount} * PixelSize, destination);
}

/// Copies the leading bytes of each pixel; what the destination has more is alpha, of one byte or of two.
template <std::uint32_t SourceSize, std::uint32_t DestinationSize>
void Repack(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    const auto alpha = static_cast<std::uint16_t>(DestinationSize == SourceSize + 1 ? run.Alpha >> 8 : run.Alpha);
    VectorKernels::RepackPixels(source, SourceSize, destination, DestinationSize, alpha, run.PixelCount);
}

template <std::uint32_t Channels>
void Widen(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    VectorKernels::WidenBytes(source, destination, std::size_t{run.PixelCount} * Channels);
}

/// Colours by the narrowing rule; the alpha, which stands last, by its high byte.
template <std::uint32_t Channels>
void Narrow(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
extern template void Narrow<2>(const LinkRun&, const std::uint8_t*, std::uint8_t*);
extern template void Narrow<4>(const LinkRun&, const std::uint8_t*, std::uint8_t*);
extern template void Narrow<5>(const LinkRun&, const std::uint8_t*, std::uint8_t*);

void Rgb16555ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Rgb16565ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb16ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Rgb32ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb32ToRgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Pargb32ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb32ToPargb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Agray16ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb32ToAgray16(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Acmyk40ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb32ToAcmyk40(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Acmyk40ToAgray16(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Agray16ToAcmyk40(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Acmyk80ToArgb64(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb64ToAcmyk80(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Agray32ToAcmyk80(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Acmyk80ToAgray32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Agray32ToArgb64(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);
void Argb64ToAgray32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination);

} // namespace ImagingFramework::LinkKernels
