// Adaptive palettes of 256 entries of 12 million pixels: the palette alone, and with the exact mapping to it, beside Pillow
// and libimagequant where they are installed. The environment variable PYTHON names the interpreter that has Pillow.
// "vs_*" is our time over the peer's for palette and mapping.

#include "colorconversion/AdaptivePaletteCreator.h"
#include "colorconversion/ColorSpaceManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#ifdef RASTERLOOM_BENCH_IMAGEQUANT
#include <libimagequant.h>
#endif

namespace {

using namespace ImagingFramework;

constexpr std::uint32_t Width = 4000;
constexpr std::uint32_t Height = 3000;

enum class Picture { Photo, Noise };

/// `Photo`: gradients and waves with grain. In 24 bits, or 32 with alpha.
BitmapData MakePicture(Picture picture, PixelFormat format) {
    BitmapData raster(Width, Height, format);
    const std::size_t channels = PixelFormatSize(format) / 8;
    std::uint32_t seed = 1;
    for (std::uint32_t y = 0; y < Height; ++y) {
        std::uint8_t* pixel = raster.GetScanlineRef(y);
        for (std::uint32_t x = 0; x < Width; ++x, pixel += channels) {
            seed = seed * 1664525 + 1013904223;
            const double u = static_cast<double>(x) / Width;
            const double v = static_cast<double>(y) / Height;
            const double grain = static_cast<double>(seed >> 28) - 8.0;
            const double samples[4] = {127.5 + 120.0 * std::sin(9.0 * u + 5.0 * v * v), 255.0 * u * v,
                                       255.0 * std::abs(std::sin(4.0 * v)), 300.0 * u};
            for (std::size_t c = 0; c < channels; ++c) {
                pixel[c] = picture == Picture::Photo
                               ? static_cast<std::uint8_t>(std::clamp(samples[c] + grain, 0.0, 255.0))
                               : static_cast<std::uint8_t>(seed >> (6 * c + 4));
            }
        }
    }
    return raster;
}

/// Processor time, here and at the peers, so that other work on the machine does not count.
double Seconds(auto function) {
    const std::clock_t start = std::clock();
    function();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double BestSeconds(auto function) { return std::min({Seconds(function), Seconds(function), Seconds(function)}); }

/// The pixels as the peers want them: red first, rows without gaps.
std::vector<std::uint8_t> RedFirst(const BitmapData& raster) {
    const std::size_t channels = PixelFormatSize(raster.GetPixelFormat()) / 8;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(std::size_t{Width} * Height * channels);
    for (std::uint32_t y = 0; y < Height; ++y) {
        const std::uint8_t* pixel = raster.GetScanlineRef(y);
        for (std::uint32_t x = 0; x < Width; ++x, pixel += channels) {
            bytes.insert(bytes.end(), {pixel[2], pixel[1], pixel[0]});
            if (channels == 4) {
                bytes.push_back(pixel[3]);
            }
        }
    }
    return bytes;
}

/// 0 where Pillow is missing.
double PillowSeconds(const BitmapData& raster, const char* method) {
    const char* const interpreter = std::getenv("PYTHON");
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "rasterloom_bench_quantizers.raw";
    const std::vector<std::uint8_t> bytes = RedFirst(raster);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    const std::string command = std::string(interpreter != nullptr ? interpreter : "python3") + " \"" RASTERLOOM_BENCH_DIR
                                "/pillow_quantize.py\" " + (PixelFormatHasAlpha(raster.GetPixelFormat()) ? "RGBA " : "RGB ") +
                                std::to_string(Width) + " " + std::to_string(Height) + " \"" + file.string() + "\" " +
                                method + " 2>/dev/null";
    double seconds = 0.0;
    if (FILE* const output = popen(command.c_str(), "r")) {
        if (std::fscanf(output, "%lf", &seconds) != 1) {
            seconds = 0.0;
        }
        pclose(output);
    }
    std::filesystem::remove(file);
    return seconds;
}

#ifdef RASTERLOOM_BENCH_IMAGEQUANT
double ImagequantSeconds(const BitmapData& raster) {
    std::vector<std::uint8_t> bytes = RedFirst(raster);
    if (!PixelFormatHasAlpha(raster.GetPixelFormat())) {
        std::vector<std::uint8_t> opaque;
        opaque.reserve(bytes.size() / 3 * 4);
        for (std::size_t i = 0; i < bytes.size(); i += 3) {
            opaque.insert(opaque.end(), {bytes[i], bytes[i + 1], bytes[i + 2], 255});
        }
        bytes = std::move(opaque);
    }
    std::vector<std::uint8_t> indices(std::size_t{Width} * Height);
    return Seconds([&] {
        liq_attr* const attributes = liq_attr_create();
        liq_image* const image = liq_image_create_rgba(attributes, bytes.data(), Width, Height, 0);
        liq_result* result = nullptr;
        if (liq_image_quantize(image, attributes, &result) == LIQ_OK) {
            liq_set_dithering_level(result, 0.0F);
            liq_write_remapped_image(result, image, indices.data(), indices.size());
            liq_result_destroy(result);
        }
        liq_image_destroy(image);
        liq_attr_destroy(attributes);
    });
}
#endif

void Quantize(benchmark::State& state, Picture picture, ColorQuantizationAlgorithm algorithm, bool withAlpha,
              bool useThreshold) {
    const bool useMedian = algorithm == ColorQuantizationAlgorithm::MedianCut;
    const BitmapData source = MakePicture(picture, withAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
    const double paletteSeconds = BestSeconds([&] {
        AdaptivePaletteCreator creator({256, withAlpha, algorithm, useThreshold, 128});
        ColorMap map;
        creator.GetPalette(source, map);
        benchmark::DoNotOptimize(map);
    });
    ColorSpaceManager manager;
    manager.SetDitheringType(DitheringType::None);
    manager.SetCreateColorMapWithAlpha(withAlpha);
    manager.SetUsePaletteAlphaThreshold(useThreshold);
    manager.SetPaletteAlphaThreshold(128);
    manager.SetColorQuantizationAlgorithm(algorithm);
    double wholeSeconds = 0.0;
    for (auto _ : state) {
        wholeSeconds = Seconds([&] {
            std::unique_ptr<BitmapData> result;
            manager.TransformBitmapData(source, PixelFormat::Format8bppIndexed, result);
            benchmark::DoNotOptimize(result->GetPixelsRef());
        });
    }
    state.counters["palette_s"] = paletteSeconds;
    state.counters["whole_s"] = wholeSeconds;
    if (const double pillow = PillowSeconds(source, "fastoctree"); pillow > 0.0) {
        state.counters["pillow_octree_s"] = pillow;
        state.counters["palette_vs_pillow_octree"] = paletteSeconds / pillow;
        state.counters["vs_pillow_octree"] = wholeSeconds / pillow;
    }
    if (const double pillow = useMedian ? PillowSeconds(source, "mediancut") : 0.0; pillow > 0.0) {
        state.counters["pillow_median_s"] = pillow;
        state.counters["vs_pillow_median"] = wholeSeconds / pillow;
    }
#ifdef RASTERLOOM_BENCH_IMAGEQUANT
    if (useMedian) {
        state.counters["vs_imagequant"] = wholeSeconds / ImagequantSeconds(source);
    }
#endif
}

#define QUANTIZE(Name, ...)                                                                                            \
    BENCHMARK_CAPTURE(Quantize, Name, __VA_ARGS__)->Unit(benchmark::kMillisecond)->Iterations(1)

QUANTIZE(photo_octree, Picture::Photo, ColorQuantizationAlgorithm::Octree, false, false);
QUANTIZE(photo_sixteen_way, Picture::Photo, ColorQuantizationAlgorithm::Octree, true, false);
QUANTIZE(photo_sixteen_way_threshold, Picture::Photo, ColorQuantizationAlgorithm::Octree, true, true);
QUANTIZE(photo_median_cut, Picture::Photo, ColorQuantizationAlgorithm::MedianCut, false, false);
QUANTIZE(noise_octree, Picture::Noise, ColorQuantizationAlgorithm::Octree, false, false);
QUANTIZE(noise_sixteen_way, Picture::Noise, ColorQuantizationAlgorithm::Octree, true, false);

} // namespace

BENCHMARK_MAIN();
