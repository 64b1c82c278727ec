// The exact nearest palette entry of each of 12 million pixels, with the tree alone and with the grid beside it.

#include "Common/ColorMap.h"
#include "SyntheticPicture.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace {

using namespace ImagingFramework;

using SyntheticPicture::Height;
using SyntheticPicture::Width;
using Picture = SyntheticPicture::Kind;

ColorMap MakeMap(const std::vector<std::uint8_t>& pixels) {
    // Entries from all over the picture, as a palette made from it would have.
    ColorMap map(256, PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < 256; ++i) {
        map.SetEntryRgb(i, pixels.data() + 4 * SyntheticPicture::SamplePlace(i));
    }
    return map;
}

void Nearest(benchmark::State& state, Picture picture, bool useGrid) {
    const std::vector<std::uint8_t> pixels = SyntheticPicture::Make(picture, 4);
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
