#include "transforms/geometry/RotationMap.h"

#include "Common/Numeric.h"

#include <algorithm>
#include <cmath>

namespace ImagingFramework {

namespace {

constexpr double One = 65536.0;

/// The pixels that lie between `low` and `high`, which are both among the values.
std::uint32_t Extent(double first, double second, double third) {
    const double low = std::min({0.0, first, second, third});
    const double high = std::max({0.0, first, second, third});
    return static_cast<std::uint32_t>(Round(high - low + 1.0));
}

/// The quotient rounded down, for a positive divisor.
std::int64_t FloorDivide(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

} // namespace

RotationMap::RotationMap(std::uint32_t width, std::uint32_t height, double radians) {
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    const double right = static_cast<double>(width) - 1.0;
    const double bottom = static_cast<double>(height) - 1.0;
    m_newWidth = Extent(-bottom * sine, right * cosine, right * cosine - bottom * sine);
    m_newHeight = Extent(bottom * cosine, right * sine, right * sine + bottom * cosine);
    m_step = {Round(cosine * One), Round(sine * One)};
    // Half the size less half a pixel on both sides, all in halves of 1 / 65536 until the end.
    const std::int64_t left = 1 - std::int64_t{m_newWidth};
    const std::int64_t top = 1 - std::int64_t{m_newHeight};
    m_start = {((std::int64_t{width} - 1) * 65536 + left * m_step.X - top * m_step.Y) >> 1,
               ((std::int64_t{height} - 1) * 65536 + left * m_step.Y + top * m_step.X) >> 1};
}

PixelRange FindRange(std::int64_t start, std::int64_t step, std::int64_t low, std::int64_t high, std::uint32_t count) {
    if (step == 0) {
        return {0, start >= low && start <= high ? count : 0};
    }
    if (step < 0) {
        return FindRange(-start, -step, -high, -low, count);
    }
    const std::int64_t first = -FloorDivide(start - low, step); // the ceiling of (low - start) / step
    const std::int64_t end = FloorDivide(high - start, step) + 1;
    const auto clamped = [count](std::int64_t pixel) {
        return static_cast<std::uint32_t>(std::clamp<std::int64_t>(pixel, 0, count));
    };
    return {clamped(first), clamped(end)};
}

PixelRange Intersect(const PixelRange& left, const PixelRange& right) {
    return {std::max(left.First, right.First), std::min(left.End, right.End)};
}

} // namespace ImagingFramework
