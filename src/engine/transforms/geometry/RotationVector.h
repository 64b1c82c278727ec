#pragma once

#include "transforms/geometry/RotationKernels.h"

#include <cstdint>

namespace ImagingFramework {

/// How far from the right side of the source `BlendRotatedBytes` must stay: it reads 8 bytes for two neighbours.
constexpr std::uint32_t RotationMargin(int samples) { return static_cast<std::uint32_t>((8 + samples - 1) / samples - 1); }

/// Pixels to make by the plain loop where `BlendRotatedBytes` stops.
constexpr std::uint32_t PlainPixels = 8;

/// The bilinear pixels of a run over a source of 1, 3 or 4 8-bit samples, as the plain loop makes them. With alpha it goes
/// as far as all neighbours are opaque. Returns how many pixels were done; 0 where the processor has no vectors for it.
std::uint32_t BlendRotatedBytes(const RotationSource& source, const RotationRun& run, int samples, bool alpha);

} // namespace ImagingFramework
