#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// A unit of length. Pixels are turned into the others by the resolution of the raster.
enum class Unit : std::int32_t {
    Pixel = 0,
    Inch = 1,
    Mm = 2,
    Cm = 3,
    M = 4,
    Point = 5,    ///< 1/72 inch
    Pica = 6,     ///< 1/6 inch
    Column = 7,   ///< 2.63 to the inch
    Twip = 8,     ///< 1/1440 inch
    Document = 9, ///< 1/300 inch
};

} // namespace Corvane::Rasterloom
