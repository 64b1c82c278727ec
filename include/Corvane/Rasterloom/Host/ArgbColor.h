#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Host {

/// The platform's colour: four 8-bit channels.
struct ArgbColor {
    std::uint8_t A = 0; ///< alpha, 255 is opaque
    std::uint8_t R = 0; ///< red
    std::uint8_t G = 0; ///< green
    std::uint8_t B = 0; ///< blue
    constexpr bool operator==(const ArgbColor&) const = default;
};

} // namespace Corvane::Rasterloom::Host
