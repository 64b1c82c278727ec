#pragma once

#include "colorconversion/Dithering.h"

#include <cstdint>

namespace ImagingFramework {

/// How the error of a pixel goes to the pixels that follow. The current pixel stands in the first row, in the middle
/// column; a weight is in units of 2^-Shift, and the weights sum to 2^Shift.
struct DiffusionKernel {
    static constexpr std::uint32_t MaximumWidth = 7;
    static constexpr std::uint32_t MaximumHeight = 4;

    DitheringType Type;
    std::uint32_t Width;
    std::uint32_t Height;
    std::uint32_t Shift;
    std::uint8_t Weights[MaximumHeight][MaximumWidth];
};

/// Null for a type that is not an error diffusion.
const DiffusionKernel* FindDiffusionKernel(DitheringType type);

} // namespace ImagingFramework
