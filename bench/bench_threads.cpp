// Different bitmaps on different threads, through the public objects as a host uses them: each thread has its own bitmap and
// does the same work. "speedup" is the throughput of two threads over that of one, measured in turn; that of a loop over
// registers alone is what the machine gives at best (two threads of one core share it).

#include "TestProfiles.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <thread>
#include <vector>

using namespace Corvane::Rasterloom;

namespace {

constexpr std::int32_t Width = 2000;
constexpr std::int32_t Height = 1500;

/// Smooth parts and some grain, as photographs have.
std::unique_ptr<Bitmap> Picture() {
    auto bitmap = std::make_unique<Bitmap>(Width, Height, PixelFormat::Format24bppRgb);
    const auto view = bitmap->LockBits();
    std::uint32_t state = 1;
    for (std::int32_t y = 0; y < Height; ++y) {
        auto* const row = view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y;
        for (std::int32_t x = 0; x < Width; ++x) {
            state = state * 1664525 + 1013904223;
            const auto grain = static_cast<std::int32_t>(state >> 28);
            row[3 * x] = static_cast<std::uint8_t>(x * 240 / Width + grain);
            row[3 * x + 1] = static_cast<std::uint8_t>(y * 240 / Height + grain);
            row[3 * x + 2] = static_cast<std::uint8_t>((x + y) * 240 / (Width + Height) + grain);
        }
    }
    bitmap->UnlockBits(view);
    return bitmap;
}

const std::vector<std::uint8_t>& File() {
    static const std::vector<std::uint8_t> file = [] {
        const auto stream = std::make_shared<Host::MemoryStream>();
        const Codecs::JpegEncoderOptions options;
        Picture()->Save(stream, &options);
        return stream->GetBuffer();
    }();
    return file;
}

/// What one thread does with an own bitmap; made on the main thread.
using Work = std::function<void()>;

Work Arithmetic() {
    return [] {
        std::uint32_t state = 1;
        for (int i = 0; i < 50'000'000; ++i) {
            state = state * 1664525 + 1013904223;
            benchmark::DoNotOptimize(state);
        }
    };
}

Work RoadOfAFile() {
    return [] {
        Bitmap bitmap(std::make_shared<Host::MemoryStream>(File()));
        bitmap.get_ColorManagement()->Convert(PixelFormat::Format32bppArgb);
        bitmap.get_Transforms()->Resize(800, 0, Transforms::InterpolationMode::Lanczos3Filter);
        const Codecs::PngEncoderOptions options;
        bitmap.Save(std::make_shared<Host::MemoryStream>(), &options);
    };
}

/// Many small files: what is done once for each of them shows.
Work SmallFiles() {
    const auto stream = std::make_shared<Host::MemoryStream>();
    const auto picture = Picture();
    picture->get_Transforms()->Resize(64, 48);
    const Codecs::JpegEncoderOptions options;
    picture->Save(stream, &options);
    return [file = stream->GetBuffer()] {
        for (int i = 0; i < 100; ++i) {
            Bitmap bitmap(std::make_shared<Host::MemoryStream>(file));
            bitmap.get_ColorManagement()->Convert(PixelFormat::Format8bppGrayScale);
            bitmap.get_Transforms()->Resize(32, 0);
            const Codecs::PngEncoderOptions png;
            bitmap.Save(std::make_shared<Host::MemoryStream>(), &png);
        }
    };
}

Work Conversion() {
    const std::shared_ptr<Bitmap> bitmap = Picture();
    return [bitmap] {
        bitmap->get_ColorManagement()->Convert(PixelFormat::Format32bppCmyk);
        bitmap->get_ColorManagement()->Convert(PixelFormat::Format24bppRgb);
    };
}

Work ProfiledConversion() {
    const std::shared_ptr<Bitmap> bitmap = Picture();
    const TestProfiles::Bytes bytes = TestProfiles::Rgb();
    const auto wide = std::make_shared<ColorProfile>(std::span(bytes));
    bitmap->set_ColorProfile(ColorProfile::FromSrgb());
    const auto management = bitmap->get_ColorManagement();
    management->set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    management->set_RgbColorProfile(wide);
    return [bitmap, management] {
        management->Convert(PixelFormat::Format32bppRgb);
        management->Convert(PixelFormat::Format24bppRgb);
    };
}

double SecondsOf(std::span<const Work> works) {
    const auto begin = std::chrono::steady_clock::now();
    std::vector<std::thread> threads;
    for (const Work& work : works) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void CompareThreads(benchmark::State& state, Work (*make)()) {
    const Work works[] = {make(), make()};
    SecondsOf(works); // what is made at first use
    double one = 0;
    double two = 0;
    for (auto _ : state) {
        one += SecondsOf({works, 1});
        two += SecondsOf(works);
    }
    state.counters["speedup"] = 2 * one / two;
    state.counters["one_ms"] = 1000 * one / static_cast<double>(state.iterations());
}

BENCHMARK_CAPTURE(CompareThreads, arithmetic, Arithmetic)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CompareThreads, road_of_a_file, RoadOfAFile)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CompareThreads, small_files, SmallFiles)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CompareThreads, conversion, Conversion)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CompareThreads, profiled_conversion, ProfiledConversion)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
