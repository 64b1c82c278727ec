// 12 million RGB pixels to a given palette of 256 entries, exactly, without and with each dithering, on one thread. Pillow
// and ImageMagick map the same file to the same palette where they are installed; "vs_pillow" and "vs_magick" are our
// processor time over theirs. (Pillow searches a cache of coarse colours, which is not exact.)

#include "SyntheticPicture.h"
#include "colorconversion/ColorSpaceManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace ImagingFramework;
using SyntheticPicture::Height;
using SyntheticPicture::Width;

struct PeerTimes {
    double PillowPlain = 0.0;
    double PillowDithered = 0.0;
    double MagickDithered = 0.0;
};

struct Workload {
    BitmapData Source;
    ColorMap Map;
    PeerTimes Peers;
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

constexpr const char* PillowScript = R"(
import sys, time
from PIL import Image
picture, palette = (Image.open(name) for name in sys.argv[1:])
picture.load()
entries = Image.new("P", (1, 1))
entries.putpalette(palette.tobytes())
def seconds(dither):
    best = 1e9
    for _ in range(2):
        start = time.process_time()
        picture.quantize(palette=entries, dither=dither)
        best = min(best, time.process_time() - start)
    return best
print(seconds(0), seconds(3))
)";

PeerTimes MeasurePeers(const std::vector<std::uint8_t>& pixels, const ColorMap& map) {
    const auto folder = std::filesystem::temp_directory_path();
    const auto picture = folder / "rasterloom-bench-picture.ppm";
    const auto palette = folder / "rasterloom-bench-palette.ppm";
    const auto script = folder / "rasterloom-bench-pillow.py";
    WritePpm(picture, Width, Height, pixels.data());
    WritePpm(palette, 256, 1, map.GetEntriesRef());
    std::ofstream(script) << PillowScript;
    const std::string files = picture.string() + " " + palette.string();
    PeerTimes times;
    for (const char* const python : {"python3 ", "/usr/bin/python3 "}) {
        const auto pillow = NumbersOf(python + script.string() + " " + files, 2);
        times.PillowPlain = pillow[0];
        times.PillowDithered = pillow[1];
        if (times.PillowPlain > 0.0) {
            break;
        }
    }
    // The processor time of the whole run, less that of a run that only reads.
    const auto magick = [&](const std::string& options) {
        const std::string command = "MAGICK_THREAD_LIMIT=1 convert " + picture.string() + " " + options + " null:";
        const std::string timed = "bash -c 'TIMEFORMAT=%U; { time " + command + " 2>/dev/null; } 2>&1'";
        return NumbersOf(timed, 1)[0];
    };
    if (std::system("convert -version >/dev/null 2>&1") == 0) {
        const double reading = magick("");
        times.MagickDithered = magick("-dither FloydSteinberg -remap " + palette.string()) - reading;
    }
    for (const auto& file : {picture, palette, script}) {
        std::filesystem::remove(file);
    }
    return times;
}

void Convert(benchmark::State& state, const Workload& work, DitheringType type) {
    ColorSpaceManager manager;
    manager.SetColorMapType(ColorMapType::Custom);
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
    const bool isPlain = type == DitheringType::None;
    const auto compare = [&](const char* name, double peer) {
        if (peer > 0.0 && (isPlain || type == DitheringType::FloydSteinberg)) {
            state.counters[name] = best / peer;
        }
    };
    compare("vs_pillow", isPlain ? work.Peers.PillowPlain : work.Peers.PillowDithered);
    compare("vs_magick", isPlain ? 0.0 : work.Peers.MagickDithered);
}

Workload MakeWorkload(SyntheticPicture::Kind kind, bool withPeers) {
    const std::vector<std::uint8_t> pixels = SyntheticPicture::Make(kind, 3);
    Workload work{{}, MakeMap(pixels), {}};
    work.Source.Create(Width, Height, PixelFormat::Format24bppRgb);
    for (std::uint32_t y = 0; y < Height; ++y) {
        std::copy_n(pixels.data() + std::size_t{3} * Width * y, 3 * Width, work.Source.GetScanlineRef(y));
    }
    if (withPeers) {
        work.Peers = MeasurePeers(pixels, work.Map);
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
    const auto add = [](const std::string& name, const Workload& work, DitheringType type) {
        benchmark::RegisterBenchmark((name + "/" + TypeNames[static_cast<std::size_t>(type)]).c_str(),
                                     [&work, type](benchmark::State& state) { Convert(state, work, type); })
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond);
    };
    for (std::uint32_t type = 0; type < std::size(TypeNames); ++type) {
        add("Smooth", smooth, static_cast<DitheringType>(type));
    }
    add("Noise", noise, DitheringType::None);
    add("Noise", noise, DitheringType::FloydSteinberg);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
