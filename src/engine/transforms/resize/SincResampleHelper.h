#pragma once

#include "transforms/resize/TapAxis.h"

#include <cstdint>
#include <limits>

namespace ImagingFramework {

/// Weights of the sinc filter with three lobes.
class SincResampleHelper {
public:
    /// sin(2 pi x) / (2 pi x) * sin(2 pi x / 3) / (2 pi x / 3) within 3 of 0. The taps that an axis takes stop at its own
    /// count, not at the end of the third lobe.
    static double Kernel(double x);

    /// The most taps that a position can have, at least 1.
    static std::uint32_t TapCount(std::uint32_t sourceSize, std::uint32_t newSize);

    /// The weights of `count` positions from `cropStart` on. Taps outside the source do not count, and those inside are
    /// divided by their own sum, so that edges are neither darkened nor repeated.
    static TapAxis<double> CreateAxis(std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t cropStart,
                                      std::uint32_t count);
};

/// Sums and samples of the sinc filter.
struct SincPolicy {
    using Weight = double;
    using Sum = double;

    template <class Sample> static Sample RoundSample(double value) {
        constexpr double maximum = std::numeric_limits<Sample>::max();
        const double shifted = value + 0.5;
        if (!(shifted >= 1.0)) {
            return 0;
        }
        return static_cast<Sample>(shifted >= maximum ? maximum : shifted);
    }
    template <class Sample> static Sample PlainSample(double sum, double) { return RoundSample<Sample>(sum); }
    template <class Sample> static Sample WeightedSample(double sum, double weight) {
        return weight > 1e-11 ? RoundSample<Sample>(sum / weight) : Sample{0};
    }
};

} // namespace ImagingFramework
