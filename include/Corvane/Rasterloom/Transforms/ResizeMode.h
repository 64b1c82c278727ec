#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Transforms {

/// How the wanted size of a resize is read.
enum class ResizeMode : std::int32_t {
    Resize = 0, ///< the exact size
    Shrink = 1, ///< fit inside the box, never enlarge
    Fit = 2,    ///< fit inside the box
};

} // namespace Corvane::Rasterloom::Transforms
