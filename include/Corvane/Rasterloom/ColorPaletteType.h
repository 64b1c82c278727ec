#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// Where the entries of a palette come from.
enum class ColorPaletteType : std::int32_t {
    Adaptive = 0,
    Custom = 1,
    WebSafe = 2,
    Windows = 3,
    Mac = 4,
    GrayScale = 5,
    Bicolor = 6,
};

} // namespace Corvane::Rasterloom
