#pragma once

#include <cstdint>

namespace ImagingFramework {

/// How the lines of a PNG frame are prepared for packing.
enum class PngFilter : std::uint32_t {
    Default = 0,
    None = 1,
    Sub = 2,
    Up = 3,
    Average = 4,
    Paeth = 5,
    Adaptive = 6,
};

} // namespace ImagingFramework
