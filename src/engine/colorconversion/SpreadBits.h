#pragma once

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// For each byte a word in which its bits stand `Step` bits apart, the lowest one at bit 0. The words of several channels,
/// shifted against each other, make one word with the child numbers of a path down a tree of colours, the root's at the top.
template <unsigned Step>
constexpr std::array<std::uint32_t, 256> MakeSpreadBits() {
    static_assert(7 * Step < 32);
    std::array<std::uint32_t, 256> words{};
    for (std::uint32_t value = 0; value < 256; ++value) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            words[value] |= (value >> bit & 1U) << (bit * Step);
        }
    }
    return words;
}

// Hidden by name: compilers show variables made from templates, whatever they are told about visibility.
template <unsigned Step>
[[gnu::visibility("hidden")]] inline constexpr std::array<std::uint32_t, 256> SpreadBits = MakeSpreadBits<Step>();

} // namespace ImagingFramework
