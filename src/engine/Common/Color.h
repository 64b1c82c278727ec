#pragma once

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// A colour of 16 bits per channel, channels in memory order: blue, green, red, alpha; black, yellow, magenta, cyan,
/// alpha; gray, alpha. It does not know its colour space. The factories take channels in the order of their names;
/// 8-bit channels are shifted left by 8, so 255 becomes 65280.
struct Color {
    std::array<std::uint16_t, 5> Channels{};

    constexpr bool operator==(const Color&) const = default;

    static constexpr std::uint16_t Widen(std::uint8_t channel) { return static_cast<std::uint16_t>(channel << 8); }

    static constexpr Color FromArgb16(std::uint16_t alpha, std::uint16_t red, std::uint16_t green, std::uint16_t blue) {
        return {{blue, green, red, alpha, 0}};
    }
    static constexpr Color FromArgb(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return FromArgb16(Widen(alpha), Widen(red), Widen(green), Widen(blue));
    }
    static constexpr Color FromAcmyk16(std::uint16_t alpha, std::uint16_t cyan, std::uint16_t magenta,
                                       std::uint16_t yellow, std::uint16_t black) {
        return {{black, yellow, magenta, cyan, alpha}};
    }
    static constexpr Color FromAcmyk(std::uint8_t alpha, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                                     std::uint8_t black) {
        return FromAcmyk16(Widen(alpha), Widen(cyan), Widen(magenta), Widen(yellow), Widen(black));
    }
    static constexpr Color FromAGray16(std::uint16_t alpha, std::uint16_t gray) { return {{gray, alpha, 0, 0, 0}}; }
    static constexpr Color FromAGray(std::uint8_t alpha, std::uint8_t gray) {
        return FromAGray16(Widen(alpha), Widen(gray));
    }
};

/// A pixel of `Format32bppArgb` in memory.
struct Argb32 {
    std::uint8_t Blue = 0;
    std::uint8_t Green = 0;
    std::uint8_t Red = 0;
    std::uint8_t Alpha = 0;

    constexpr bool operator==(const Argb32&) const = default;

    static constexpr Argb32 FromArgb(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return {blue, green, red, alpha};
    }
};
static_assert(sizeof(Argb32) == 4);

/// A pixel of `Format48bppRgb` in memory.
struct Rgb48 {
    std::uint16_t Blue = 0;
    std::uint16_t Green = 0;
    std::uint16_t Red = 0;

    constexpr bool operator==(const Rgb48&) const = default;
};
static_assert(sizeof(Rgb48) == 6);

} // namespace ImagingFramework
