#pragma once

#include "Common/PixelFormat.h"

#include <cstdint>

namespace ImagingFramework {

/// How the samples of a whole-channel pixel stand: their type, how many, and whether the last one is alpha.
template <class SampleType, int SampleCount, bool HasAlpha> struct PixelLayout {
    using Sample = SampleType;
    static constexpr int Samples = SampleCount;
    static constexpr bool Alpha = HasAlpha;
    static constexpr int Colors = HasAlpha ? SampleCount - 1 : SampleCount;
    static constexpr std::uint32_t Maximum = static_cast<SampleType>(~SampleType{0});
};

/// Premultiplied colours are weighted by alpha already, so those formats filter like ones without alpha, and so does the
/// unused byte of the 32-bit RGB format.
constexpr bool WeightsByAlpha(PixelFormat format) {
    return PixelFormatHasAlpha(format) && !HasFlag(format, PixelFormatFlag::Premultiplied);
}

namespace Detail {

template <class Sample, class Body> void DispatchSamples(PixelFormat format, const Body& body) {
    const auto samples = PixelFormatSize(format) / (8 * sizeof(Sample));
    if (WeightsByAlpha(format)) {
        switch (samples) {
        case 2:
            return body(PixelLayout<Sample, 2, true>());
        case 4:
            return body(PixelLayout<Sample, 4, true>());
        case 5:
            return body(PixelLayout<Sample, 5, true>());
        default:
            throw UnsupportedPixelFormatException();
        }
    }
    switch (samples) {
    case 1:
        return body(PixelLayout<Sample, 1, false>());
    case 3:
        return body(PixelLayout<Sample, 3, false>());
    case 4:
        return body(PixelLayout<Sample, 4, false>());
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace Detail

/// Calls `body` with the layout of a whole-channel format.
template <class Body> void DispatchLayout(PixelFormat format, const Body& body) {
    if (PixelFormatIsExtended(format)) {
        Detail::DispatchSamples<std::uint16_t>(format, body);
    } else {
        Detail::DispatchSamples<std::uint8_t>(format, body);
    }
}

} // namespace ImagingFramework
