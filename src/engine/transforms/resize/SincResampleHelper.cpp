#include "transforms/resize/SincResampleHelper.h"

#include "transforms/resize/AxisMap.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace ImagingFramework {

double SincResampleHelper::Kernel(double x) {
    if (x == 0.0) {
        return 1.0;
    }
    if (x <= -3.0 || x >= 3.0) {
        return 0.0;
    }
    const double wave = 2.0 * std::numbers::pi * x;
    const double window = wave / 3.0;
    return std::sin(wave) / wave * std::sin(window) / window;
}

namespace {

/// Taps on each side of the middle one, plus one.
std::uint32_t HalfTaps(std::uint32_t sourceSize, double ratio) {
    const std::uint32_t limit = sourceSize >> 1;
    if (ratio < 1.0) {
        return std::min(4U, limit);
    }
    return static_cast<std::uint32_t>(std::min(1.0 + std::trunc(3.0 * ratio), static_cast<double>(limit)));
}

/// A source of one pixel leaves no taps, and the nearest pixel stands for the sum.
std::uint32_t TapsOfHalf(std::uint32_t half) { return half == 0 ? 1 : 2 * half - 1; }

} // namespace

std::uint32_t SincResampleHelper::TapCount(std::uint32_t sourceSize, std::uint32_t newSize) {
    return TapsOfHalf(HalfTaps(sourceSize, AxisRatio(sourceSize, newSize)));
}

TapAxis<double> SincResampleHelper::CreateAxis(std::uint32_t sourceSize, std::uint32_t newSize,
                                               std::uint32_t cropStart, std::uint32_t count) {
    const double ratio = AxisRatio(sourceSize, newSize);
    const std::uint32_t half = HalfTaps(sourceSize, ratio);
    const std::uint32_t taps = TapsOfHalf(half);
    const std::int64_t centre = taps / 2;
    const double step = 0.5 / std::max(ratio, 1.0);
    TapAxis<double> axis(count, taps);
    std::vector<double> weights(taps);
    for (std::uint32_t i = 0; i < count; ++i) {
        const double position = static_cast<double>(std::uint64_t{cropStart} + i) * ratio;
        const std::int64_t first = static_cast<std::int64_t>(position + 0.5) - centre;
        axis.Copies[i] = half == 0 ? 1 : 0;
        const double start = (static_cast<double>(first) - position) * step;
        double sum = 0.0;
        for (std::uint32_t t = 0; t < taps; ++t) {
            weights[t] = Kernel(start + t * step);
            sum += weights[t];
        }
        const std::int64_t from = std::clamp<std::int64_t>(first, 0, std::int64_t{sourceSize} - 1);
        const std::int64_t end = std::clamp<std::int64_t>(first + taps, from + 1, sourceSize);
        double inside = 0.0;
        for (std::int64_t j = from; j < end; ++j) {
            inside += weights[static_cast<std::size_t>(j - first)] /= sum;
        }
        const bool edge = end - from < taps;
        for (std::int64_t j = from; j < end; ++j) {
            const double weight = weights[static_cast<std::size_t>(j - first)];
            axis.WeightsOf(i)[j - from] = edge ? weight / inside : weight;
        }
        axis.Windows.First[i] = static_cast<std::uint32_t>(from);
        axis.Windows.Count[i] = static_cast<std::uint32_t>(end - from);
        axis.Totals[i] = 1.0;
    }
    return axis;
}

} // namespace ImagingFramework
