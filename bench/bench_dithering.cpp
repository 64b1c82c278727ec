// 12 million RGB pixels to a given palette of 256 entries, exactly, without and with each dithering, and to a palette of
// their own; on one thread. Pillow and ImageMagick do the same where they are installed; "vs_pillow" and "vs_magick" are
// our processor time over theirs. The environment variable PYTHON names the interpreter that has Pillow. (Pillow searches a
// cache of coarse colours, which is not exact.)

#include "SyntheticPicture.h"
#include "colorconversion/ColorSpaceManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace ImagingFramework;
using SyntheticPicture::Height;
using SyntheticPicture::Width;

/// Names and seconds, 0 where one is missing.
using Peers = std::vector<std::pair<const char*, double>>;

struct PeerTimes {
    double PillowPlain = 0.0;
    double PillowDithered = 0.0;
    double PillowQuantized = 0.0;
    double MagickDithered = 0.0;
};

struct Workload {
    BitmapData Source;
    ColorMap Map;
    PeerTimes Times;
};

ColorMap MakeMap(const std::vector<std::uint8_t>& pixels) {
    ColorMap map(256, PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < 256; ++i) {
        map.SetEntryRgb(i, pixels.data() + 3 * SyntheticPicture::SamplePlace(i));
    }
    return map;
}

/// Blue, green, red pixels as a file of red, green, blue.
void WritePpm(const std::filesystem::path& path, std::size_t width, std::size_t height, const std::uint8_t* pixels) {
    std::string bytes(width * height * 3, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(pixels[i / 3 * 3 + 2 - i % 3]);
    }
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n" << bytes;
}

/// The numbers that a command prints; zeros when it fails.
std::vector<double> NumbersOf(const std::string& command, std::size_t count) {
    std::vector<double> numbers(count, 0.0);
    FILE* const pipe = popen((command + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) {
        return numbers;
    }
    for (double& number : numbers) {
        if (std::fscanf(pipe, "%lf", &number) != 1) {
            number = 0.0;
        }
    }
    pclose(pipe);
    return numbers;
}

PeerTimes MeasurePeers(const std::vector<std::uint8_t>& pixels, const ColorMap& map) {
    const auto folder = std::filesystem::temp_directory_path();
    const auto picture = folder / "rasterloom_bench_dithering.ppm";
    const auto palette = folder / "rasterloom_bench_dithering_palette.ppm";
    WritePpm(picture, Width, Height, pixels.data());
    WritePpm(palette, 256, 1, map.GetEntriesRef());
    PeerTimes times;
    const char* const python = std::getenv("PYTHON");
    const auto pillow = NumbersOf(std::string(python != nullptr ? python : "python3") +
                                      " \"" RASTERLOOM_BENCH_DIR "/pillow_dither.py\" " + picture.string() + " " +
                                      palette.string(),
                                  3);
    times.PillowPlain = pillow[0];
    times.PillowDithered = pillow[1];
    times.PillowQuantized = pillow[2];
    // The processor time of the whole run, less that of a run that only reads.
    const auto magick = [&](const std::string& options) {
        const std::string command = "MAGICK_THREAD_LIMIT=1 convert " + picture.string() + " " + options + " null:";
        return NumbersOf("bash -c 'TIMEFORMAT=%U; { time " + command + " 2>/dev/null; } 2>&1'", 1)[0];
    };
    if (std::system("convert -version >/dev/null 2>&1") == 0) {
        const double reading = magick("");
        times.MagickDithered = magick("-dither FloydSteinberg -remap " + palette.string()) - reading;
    }
    std::filesystem::remove(picture);
    std::filesystem::remove(palette);
    return times;
}

void Convert(benchmark::State& state, const Workload& work, ColorMapType mapType, DitheringType type,
             const Peers& vs) {
    ColorSpaceManager manager;
    manager.SetColorMapType(mapType);
    manager.SetCustomColorMap(work.Map);
    manager.SetDitheringType(type);
    double best = 1e9;
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        std::unique_ptr<BitmapData> result;
        manager.TransformBitmapData(work.Source, PixelFormat::Format8bppIndexed, result);
        benchmark::DoNotOptimize(result->GetPixelsRef());
        best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    state.counters["best_ms"] = best * 1e3;
    for (const auto& [name, peer] : vs) {
        if (peer > 0.0) {
            state.counters[name] = best / peer;
        }
    }
}

Workload MakeWorkload(SyntheticPicture::Kind kind, bool withPeers) {
    const std::vector<std::uint8_t> pixels = SyntheticPicture::Make(kind, 3);
    Workload work{{}, MakeMap(pixels), {}};
    work.Source.Create(Width, Height, PixelFormat::Format24bppRgb);
    for (std::uint32_t y = 0; y < Height; ++y) {
        std::copy_n(pixels.data() + std::size_t{3} * Width * y, 3 * Width, work.Source.GetScanlineRef(y));
    }
    if (withPeers) {
        work.Times = MeasurePeers(pixels, work.Map);
    }
    return work;
}

constexpr const char* TypeNames[] = {
    "None",          "Original",      "FloydSteinberg", "Fan",            "Jarvis",         "Stucki",
    "Sierra",        "Burkes",        "Stephenson",     "OrderedBayer2",  "OrderedBayer3",  "OrderedBayer4",
    "OrderedSpiral2", "OrderedSpiral3", "OrderedSpiral4", "Noise",
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const Workload smooth = MakeWorkload(SyntheticPicture::Kind::Smooth, true);
    const Workload noise = MakeWorkload(SyntheticPicture::Kind::Noise, false);
    const PeerTimes& peers = smooth.Times;
    const auto add = [](const std::string& name, auto... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), Convert, arguments...)->Iterations(3)->Unit(benchmark::kMillisecond);
    };
    const auto addGiven = [&](const char* picture, const Workload& work, std::uint32_t type, const Peers& vs) {
        add(std::string(picture) + "/" + TypeNames[type], std::cref(work), ColorMapType::Custom,
            static_cast<DitheringType>(type), vs);
    };
    for (std::uint32_t type = 0; type < std::size(TypeNames); ++type) {
        switch (static_cast<DitheringType>(type)) {
        case DitheringType::None:
            addGiven("Smooth", smooth, type, {{"vs_pillow", peers.PillowPlain}});
            break;
        case DitheringType::FloydSteinberg:
            addGiven("Smooth", smooth, type,
                     {{"vs_pillow", peers.PillowDithered}, {"vs_magick", peers.MagickDithered}});
            break;
        default:
            addGiven("Smooth", smooth, type, {});
        }
    }
    addGiven("Noise", noise, 0, {});
    addGiven("Noise", noise, 2, {});
    add("Smooth/MedianCutAndFloydSteinberg", std::cref(smooth), ColorMapType::Adaptive, DitheringType::FloydSteinberg,
        Peers{{"vs_pillow", peers.PillowQuantized}});
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
