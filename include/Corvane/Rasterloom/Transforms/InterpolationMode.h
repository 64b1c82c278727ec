#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Transforms {

/// How samples between pixels are computed.
enum class InterpolationMode : std::int32_t {
    LowQuality = 0,    ///< stands for `NearestNeighbour`
    MediumQuality = 1, ///< stands for `Bilinear`, or `ScaleToGray` on an indexed raster
    HighQuality = 2,   ///< stands for `Lanczos3Filter`, or `ScaleToGray` on an indexed raster
    NearestNeighbour = 3,
    Bilinear = 4,
    Trilinear = 5,
    Anisotropic4 = 6, ///< 2 by 2 samples
    Anisotropic9 = 7, ///< 3 by 3 samples
    HermiteFilter = 8,
    BoxFilter = 9,
    TriangleFilter = 10,
    BellFilter = 11,
    SplineFilter = 12,
    Lanczos3Filter = 13,
    MitchellFilter = 14,
    ScaleToGray = 15, ///< indexed rasters only

    HighSpeed = LowQuality,
    MediumSpeed = MediumQuality,
    LowSpeed = HighQuality,
    ScaleToColor = ScaleToGray,
};

} // namespace Corvane::Rasterloom::Transforms
