#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// How the error of mapping colours to a palette is spread: not at all, by error diffusion (1 to 8), by an ordered matrix
/// (9 to 14), or by noise.
enum class DitheringType : std::int32_t {
    None = 0,
    Original = 1,
    FloydSteinberg = 2,
    Fan = 3,
    Jarvis = 4,
    Stucki = 5,
    Sierra = 6,
    Burkes = 7,
    Stephenson = 8,
    OrderedBayer2 = 9,
    OrderedBayer3 = 10,
    OrderedBayer4 = 11,
    OrderedSpiral2 = 12,
    OrderedSpiral3 = 13,
    OrderedSpiral4 = 14,
    Noise = 15,
};

} // namespace Corvane::Rasterloom
