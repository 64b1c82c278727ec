// The exact nearest palette entry of each of 12 million pixels, with the tree alone and with the grid beside it.

#include "Common/ColorMap.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace {

using namespace ImagingFramework;

constexpr std::size_t Width = 4000;
constexpr std::size_t Height = 3000;

enum class Picture { Smooth, Noise };

std::vector<std::uint8_t> MakePixels(Picture picture) {
    std::vector<std::uint8_t> pixels(Width * Height * 4);
    std::uint32_t seed = 1;
    for (std::size_t y = 0; y < Height; ++y) {
        for (std::size_t x = 0; x < Width; ++x) {
            seed = seed * 1664525 + 1013904223;
            std::uint8_t* const p = pixels.data() + 4 * (y * Width + x);
            const double u = static_cast<double>(x) / Width;
            const double v = static_cast<double>(y) / Height;
            const double wave = 127.5 + 120.0 * std::sin(9.0 * u + 5.0 * v * v);
            const double grain = picture == Picture::Smooth ? static_cast<double>(seed >> 29) - 4.0 : 0.0;
            const double colors[3] = {wave + grain, 255.0 * u * v + grain, 255.0 * std::abs(std::sin(4.0 * v)) + grain};
            for (std::size_t c = 0; c < 3; ++c) {
                const double value = colors[c] < 0.0 ? 0.0 : (colors[c] > 255.0 ? 255.0 : colors[c]);
                p[c] = picture == Picture::Smooth ? static_cast<std::uint8_t>(value)
                                                  : static_cast<std::uint8_t>(seed >> (8 + 8 * c));
            }
            p[3] = 255;
        }
    }
    return pixels;
}

ColorMap MakeMap(const std::vector<std::uint8_t>& pixels) {
    // Entries from all over the picture, as a palette made from it would have.
    ColorMap map(256, PixelFormat::Format24bppRgb);
    std::size_t position = 0;
    for (std::uint32_t i = 0; i < 256; ++i) {
        position = (position + 46811 * 997) % (Width * Height);
        map.SetEntryRgb(i, pixels.data() + 4 * position);
    }
    return map;
}

void Nearest(benchmark::State& state, Picture picture, bool useGrid) {
    const std::vector<std::uint8_t> pixels = MakePixels(picture);
    const ColorMap source = MakeMap(pixels);
    std::vector<std::uint8_t> indices(Width * Height);
    for (auto _ : state) {
        ColorMap map = source; // neither tree nor grid is there yet
        for (std::size_t y = 0; y < Height; ++y) {
            const std::uint8_t* const row = pixels.data() + 4 * Width * y;
            std::uint8_t* const out = indices.data() + Width * y;
            if (useGrid) {
                map.FindNearestEntries(row, Width, out);
                continue;
            }
            KDTreeColorMapper& tree = map.GetMapper();
            for (std::size_t x = 0; x < Width; ++x) {
                out[x] = static_cast<std::uint8_t>(
                    tree.GetNearestColorIndex(row[4 * x + 3], row[4 * x + 2], row[4 * x + 1], row[4 * x]));
            }
        }
        benchmark::DoNotOptimize(indices.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(Width * Height));
}

BENCHMARK_CAPTURE(Nearest, smooth_tree, Picture::Smooth, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Nearest, smooth_grid, Picture::Smooth, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Nearest, noise_tree, Picture::Noise, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Nearest, noise_grid, Picture::Noise, true)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
