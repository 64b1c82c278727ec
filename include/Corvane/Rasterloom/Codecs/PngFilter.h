#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// How the lines of a PNG frame are prepared for packing.
enum class PngFilter : std::uint32_t {
    Default = 0, ///< None for indexed frames, else Adaptive
    None = 1,
    Sub = 2,
    Up = 3,
    Average = 4,
    Paeth = 5,
    Adaptive = 6, ///< the best of them, line by line
};

} // namespace Corvane::Rasterloom::Codecs
