// Each conversion link against a copy of as many bytes as it moves, over a raster that does not fit the caches and over one
// row that does. "vs_copy" is the time of the link over the time of the copy.

#include "colorconversion/ColorTransformLinks.h"
#include "colorconversion/IndexedLinks.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace ImagingFramework;

constexpr std::uint32_t Width = 4000;

std::size_t RowBytes(PixelFormat format) {
    return std::size_t{Width} * (format == IndexedFormat ? 8 : PixelFormatSize(format)) / 8;
}

double Seconds(auto function) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        function();
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

void RunLink(benchmark::State& state, const LinkPrototype* pPrototype, std::uint32_t rows, std::uint32_t repeats) {
    std::unique_ptr<IColorTransformLink> link;
    pPrototype->Link->CreateNewInstance(&link);
    const std::size_t sourceRow = RowBytes(link->GetSrcPixelFormat());
    const std::size_t destinationRow = RowBytes(link->GetDstPixelFormat());
    std::vector<std::uint8_t> source(sourceRow * rows);
    std::vector<std::uint8_t> destination(destinationRow * rows);
    std::uint32_t seed = 1;
    std::ranges::generate(source, [&] { return static_cast<std::uint8_t>((seed = seed * 1664525 + 1013904223) >> 24); });
    ColorMap map(256, PixelFormat::Format32bppArgb);
    for (std::uint32_t i = 0; i < 256; ++i) {
        const std::uint8_t entry[4] = {static_cast<std::uint8_t>(i * 7), static_cast<std::uint8_t>(i * 31),
                                       static_cast<std::uint8_t>(i * 101), 255};
        map.SetEntryArgb(i, entry);
    }
    link->SetPixelCount(Width);
    link->SetSrcColorMap(&map);
    link->SetDstColorMap(&map);
    const auto convert = [&] {
        for (std::uint32_t repeat = 0; repeat < repeats; ++repeat) {
            for (std::uint32_t y = 0; y < rows; ++y) {
                link->ApplyScanlineTransform(source.data() + y * sourceRow, destination.data() + y * destinationRow);
            }
            benchmark::ClobberMemory();
        }
    };
    // A copy reads and writes each byte, so it moves as much with the mean of both sizes.
    const std::size_t copyRow = (sourceRow + destinationRow) / 2;
    std::vector<std::uint8_t> copySource(copyRow * rows, 1);
    std::vector<std::uint8_t> copyDestination(copyRow * rows, 2);
    const auto copy = [&] {
        for (std::uint32_t repeat = 0; repeat < repeats; ++repeat) {
            for (std::uint32_t y = 0; y < rows; ++y) {
                std::memcpy(copyDestination.data() + y * copyRow, copySource.data() + y * copyRow, copyRow);
            }
            benchmark::ClobberMemory();
        }
    };
    convert();
    copy();
    const double copyTime = Seconds(copy);
    const double linkTime = Seconds(convert);
    for (auto _ : state) {
        convert();
    }
    const double bytes = static_cast<double>(sourceRow) * rows * repeats;
    state.counters["source_MB_s"] = bytes / linkTime / 1e6;
    state.counters["moved_MB_s"] = (bytes + static_cast<double>(destinationRow) * rows * repeats) / linkTime / 1e6;
    state.counters["vs_copy"] = linkTime / copyTime;
}

} // namespace

int main(int argc, char** argv) {
    for (const LinkPrototype& prototype : GetLinkPrototypes()) {
        const std::string name(prototype.Name);
        benchmark::RegisterBenchmark((name + "/raster").c_str(), RunLink, &prototype, 3000, 1)->Iterations(1);
        benchmark::RegisterBenchmark((name + "/row").c_str(), RunLink, &prototype, 1, 2000)->Iterations(1);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
