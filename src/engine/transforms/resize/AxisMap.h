#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Source pixels per step between destination pixels. Corners lie on corners: the first and the last pixel of the source
/// fall on those of the destination.
inline double AxisRatio(std::uint32_t sourceSize, std::uint32_t destinationSize) {
    return (static_cast<double>(sourceSize) - 1.0) /
           (static_cast<double>(destinationSize) - 1.0 + (destinationSize == 1 ? 0.5 : 0.0));
}

/// A ratio as 16.16 fixed point, rounded.
inline std::uint64_t ToFixedRatio(double ratio) { return static_cast<std::uint64_t>(std::floor(ratio * 65536.0 + 0.5)); }

/// `samplesPerPixel` source positions for each of `pixels` destination pixels from `cropStart` on, ascending.
inline std::vector<std::uint32_t> SampleIndices(std::uint32_t sourceSize, std::uint32_t newSize,
                                                std::uint32_t samplesPerPixel, std::uint64_t cropStart,
                                                std::size_t pixels) {
    const std::uint64_t step = ToFixedRatio(AxisRatio(sourceSize, newSize) / samplesPerPixel);
    std::vector<std::uint32_t> indices(pixels * samplesPerPixel);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const std::uint64_t position = ((cropStart * samplesPerPixel + i) * step) >> 16;
        indices[i] = static_cast<std::uint32_t>(std::min<std::uint64_t>(position, sourceSize - 1));
    }
    return indices;
}

/// Destination positions of one axis in 16.16 source coordinates.
struct FixedAxis {
    FixedAxis(std::uint32_t sourceSize, std::uint32_t destinationSize)
        : Ratio(ToFixedRatio(AxisRatio(sourceSize, destinationSize))), Last(sourceSize - 1) {}

    std::uint32_t Index(std::uint64_t position) const {
        return static_cast<std::uint32_t>(std::min<std::uint64_t>((position * Ratio) >> 16, Last));
    }
    std::uint32_t Next(std::uint32_t index) const { return std::min(index + 1, Last); }
    std::uint32_t Fraction(std::uint64_t position) const {
        return static_cast<std::uint32_t>((position * Ratio) & 0xFFFF);
    }

    std::uint64_t Ratio;
    std::uint32_t Last;
};

} // namespace ImagingFramework
