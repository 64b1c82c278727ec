#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Pictures of 12 million pixels for benchmarks: smooth ones with some grain, and noise.
namespace SyntheticPicture {

inline constexpr std::size_t Width = 4000;
inline constexpr std::size_t Height = 3000;

enum class Kind { Smooth, Noise };

/// Pixels of blue, green and red, and of alpha 255 where `channels` is 4.
inline std::vector<std::uint8_t> Make(Kind kind, std::size_t channels) {
    std::vector<std::uint8_t> pixels(Width * Height * channels);
    std::uint32_t seed = 1;
    for (std::size_t y = 0; y < Height; ++y) {
        for (std::size_t x = 0; x < Width; ++x) {
            seed = seed * 1664525 + 1013904223;
            std::uint8_t* const p = pixels.data() + channels * (y * Width + x);
            const double u = static_cast<double>(x) / Width;
            const double v = static_cast<double>(y) / Height;
            const double wave = 127.5 + 120.0 * std::sin(9.0 * u + 5.0 * v * v);
            const double grain = kind == Kind::Smooth ? static_cast<double>(seed >> 29) - 4.0 : 0.0;
            const double colors[3] = {wave + grain, 255.0 * u * v + grain, 255.0 * std::abs(std::sin(4.0 * v)) + grain};
            for (std::size_t c = 0; c < 3; ++c) {
                const double value = colors[c] < 0.0 ? 0.0 : (colors[c] > 255.0 ? 255.0 : colors[c]);
                p[c] = kind == Kind::Smooth ? static_cast<std::uint8_t>(value)
                                            : static_cast<std::uint8_t>(seed >> (8 + 8 * c));
            }
            if (channels == 4) {
                p[3] = 255;
            }
        }
    }
    return pixels;
}

/// The place of one of many pixels that lie all over a picture, as the entries of a palette made from it would.
constexpr std::size_t SamplePlace(std::size_t number) { return (number + 1) * 46811 * 997 % (Width * Height); }

} // namespace SyntheticPicture
