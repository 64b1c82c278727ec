#pragma once

#include "colorconversion/ErrorDiffusion.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace ImagingFramework::DiffusionVector {

/// A row of an error diffusion.
struct Run {
    const std::uint8_t* Source;
    std::uint8_t* Indices;
    std::size_t PixelCount;
    std::span<ArgbError* const> Rows;
    std::span<const DiffusionTap> Taps;
    std::uint32_t Shift;
    std::int32_t Intensity; ///< percent, up to 100
};

/// Dithers a row with the four channels side by side, as the plain loop does, bit for bit. The grid must have byte
/// indices. False, with nothing done, where the processor has no vectors.
bool DiffuseRow(const Run& run, GridColorMapper& grid);

} // namespace ImagingFramework::DiffusionVector
