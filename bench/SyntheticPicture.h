#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Pictures of 12 million pixels for benchmarks: smooth ones with some grain, noise, and what is as hard to pack as a
/// photograph.
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

/// Structures of all sizes, the smaller the fainter, with little colour in the fine ones. Blue, green, red, and alpha 255
/// where `channels` is 4; the gray of it where there is one.
inline std::vector<std::uint8_t> MakePhotograph(std::size_t channels) {
    const auto lattice = [](std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
        std::uint32_t hash = x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
        hash = (hash ^ hash >> 15) * 0x2C1B3C6DU;
        hash = (hash ^ hash >> 12) * 0x297A2D39U;
        return static_cast<float>(hash ^ hash >> 15) * 4.6566129e-10F - 1.0F;
    };
    const auto addOctave = [&](std::vector<float>& row, std::size_t y, std::size_t cell, float amplitude, std::uint32_t seed) {
        const auto cellY = static_cast<std::uint32_t>(y / cell);
        const float v = static_cast<float>(y % cell) / static_cast<float>(cell);
        const auto column = [&](std::uint32_t cellX) {
            return amplitude * ((1 - v) * lattice(cellX, cellY, seed) + v * lattice(cellX, cellY + 1, seed));
        };
        for (std::size_t x = 0; x < Width; x += cell) {
            const auto cellX = static_cast<std::uint32_t>(x / cell);
            const float left = column(cellX);
            const float step = (column(cellX + 1) - left) / static_cast<float>(cell);
            for (std::size_t i = 0; i < cell && x + i < Width; ++i) {
                row[x + i] += left + step * static_cast<float>(i);
            }
        }
    };
    std::vector<std::uint8_t> pixels(Width * Height * channels, 255);
    std::vector<float> light(Width);
    std::vector<float> tint(Width);
    for (std::size_t y = 0; y < Height; ++y) {
        light.assign(Width, 128.0F);
        tint.assign(Width, 0.0F);
        float amplitude = 45.0F;
        for (std::size_t cell = 512; cell >= 1; cell /= 2, amplitude *= 0.8F) {
            addOctave(light, y, cell, amplitude, static_cast<std::uint32_t>(cell));
            if (cell >= 16) {
                addOctave(tint, y, cell, amplitude * 0.5F, static_cast<std::uint32_t>(cell + 1));
            }
        }
        for (std::size_t x = 0; x < Width; ++x) {
            const float colors[3] = {light[x] - tint[x], light[x], light[x] + tint[x]};
            for (std::size_t c = 0; c < (channels == 1 ? 1 : 3); ++c) {
                const float value = channels == 1 ? light[x] : colors[c];
                pixels[channels * (y * Width + x) + c] =
                    static_cast<std::uint8_t>(value < 0.0F ? 0.0F : (value > 255.0F ? 255.0F : value));
            }
        }
    }
    return pixels;
}

} // namespace SyntheticPicture
