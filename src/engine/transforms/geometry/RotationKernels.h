#pragma once

#include "Common/PixelFormat.h"

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// The raster that is rotated.
struct RotationSource {
    const std::uint8_t* Pixels;
    std::size_t Stride;
    std::uint32_t Width;
    std::uint32_t Height;
    const std::uint8_t* Background; ///< one pixel
};

/// Neighbouring pixels of a destination row: the 16.16 source position of the first one, and what it grows by.
struct RotationRun {
    std::int64_t X;
    std::int64_t Y;
    std::int64_t StepX;
    std::int64_t StepY;
    std::uint8_t* Destination;
    std::uint32_t Count;
};

/// The same run without its first `pixels` pixels of `size` bytes.
inline RotationRun SkipPixels(const RotationRun& run, std::uint32_t pixels, std::size_t size) {
    return {run.X + run.StepX * pixels,       run.Y + run.StepY * pixels,  run.StepX, run.StepY,
            run.Destination + pixels * size, run.Count - pixels};
}

using RotationFill = void (*)(const RotationSource& source, const RotationRun& run);

/// How pixels are made from their source positions.
struct RotationKernel {
    /// For positions from 0 up to and without (`Width` - `MarginX`, `Height` - `MarginY`).
    RotationFill Inside;
    /// For all positions of which some neighbour lies inside; null where `Inside` takes all of them.
    RotationFill Edge;
    std::uint32_t MarginX;
    std::uint32_t MarginY;
    /// Added to every position first.
    std::int64_t Offset;
};

/// The nearest pixel, copied.
RotationKernel NearestRotation(PixelFormat format);
/// Four neighbours, blended along the row first; the vectors of the processor take the place of the plain loop where they
/// give the same samples faster.
RotationKernel BilinearRotation(PixelFormat format);

} // namespace ImagingFramework
