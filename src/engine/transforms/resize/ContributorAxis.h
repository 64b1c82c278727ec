#pragma once

#include "Common/InterpolationMode.h"
#include "transforms/resize/TapAxis.h"

#include <cstdint>
#include <limits>

namespace ImagingFramework {

/// The 16.16 weights of `count` positions from `cropStart` on. Here destination position i lies on source position
/// i * source size / new size, so unlike all other families corners do not lie on corners. Taps outside the source repeat
/// its edge. A position where every weight rounds to 0 copies the nearest pixel. Fails with `ArgumentException` for a mode
/// that is none of the six filters.
TapAxis<std::int32_t> CreateContributorAxis(InterpolationMode mode, std::uint32_t sourceSize, std::uint32_t newSize,
                                            std::uint32_t cropStart, std::uint32_t count);

/// Sums and samples of the contributor filters: exact integers.
struct ContributorPolicy {
    using Weight = std::int32_t;
    using Sum = std::int64_t;

    template <class Sample> static Sample Quotient(std::int64_t sum, std::int64_t weight) {
        constexpr std::int64_t maximum = std::numeric_limits<Sample>::max();
        const std::int64_t value = weight != 0 ? sum / weight : 0;
        return static_cast<Sample>(value < 0 ? 0 : (value > maximum ? maximum : value));
    }
    template <class Sample> static Sample PlainSample(std::int64_t sum, std::int64_t total) {
        return Quotient<Sample>(sum, total);
    }
    template <class Sample> static Sample WeightedSample(std::int64_t sum, std::int64_t weight) {
        return Quotient<Sample>(sum, weight);
    }
};

} // namespace ImagingFramework
