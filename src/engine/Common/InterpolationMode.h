#pragma once

#include <cstdint>

namespace ImagingFramework {

/// How an operation resamples. The three quality levels are resolved by the pixel format.
enum class InterpolationMode : std::uint32_t {
    LowQuality = 0,
    HighSpeed = LowQuality,
    MediumQuality = 1,
    MediumSpeed = MediumQuality,
    HighQuality = 2,
    LowSpeed = HighQuality,
    NearestNeighbour = 3,
    Bilinear = 4,
    Trilinear = 5,
    Anisotropic4 = 6,
    Anisotropic9 = 7,
    HermiteFilter = 8,
    BoxFilter = 9,
    TriangleFilter = 10,
    BellFilter = 11,
    SplineFilter = 12,
    Lanczos3Filter = 13,
    MitchellFilter = 14,
    ScaleToGray = 15,
    ScaleToColor = ScaleToGray,
};

} // namespace ImagingFramework
