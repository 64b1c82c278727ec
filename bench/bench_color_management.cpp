// Conversions through ICC profiles against Little CMS called on the same buffers, row by row as the library does, one
// thread: 12 million pixels. "vs_lcms" is the library's time over Little CMS's. The last benchmark runs two conversions at
// once: "speedup" is the time of one after the other over the time of both together.

#include "Common/BitmapData.h"
#include "TestProfiles.h"
#include "colorconversion/ColorSpaceManager.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <memory>
#include <thread>

namespace {

using namespace ImagingFramework;
using TestProfiles::Bytes;

constexpr std::uint32_t Width = 4000;
constexpr std::uint32_t Height = 3000;
constexpr int Repeats = 4;

struct Case {
    const char* Name;
    PixelFormat From;
    PixelFormat To;
    cmsUInt32Number LcmsFrom;
    cmsUInt32Number LcmsTo;
    cmsUInt32Number LcmsFlags;
};

constexpr Case Cases[] = {
    {"Rgb24ToRgb24", PixelFormat::Format24bppRgb, PixelFormat::Format24bppRgb, TYPE_BGR_8, TYPE_BGR_8, 0},
    {"Rgb24ToCmyk32", PixelFormat::Format24bppRgb, PixelFormat::Format32bppCmyk, TYPE_BGR_8, TYPE_KYMC_8, 0},
    {"Cmyk32ToRgb24", PixelFormat::Format32bppCmyk, PixelFormat::Format24bppRgb, TYPE_KYMC_8, TYPE_BGR_8, 0},
    {"Rgb48ToRgb48", PixelFormat::Format48bppRgb, PixelFormat::Format48bppRgb, TYPE_BGR_16, TYPE_BGR_16, 0},
    {"Argb32ToArgb32", PixelFormat::Format32bppArgb, PixelFormat::Format32bppArgb, TYPE_BGRA_8, TYPE_BGRA_8,
     cmsFLAGS_COPY_ALPHA},
    {"Argb64ToArgb64", PixelFormat::Format64bppArgb, PixelFormat::Format64bppArgb, TYPE_BGRA_16, TYPE_BGRA_16,
     cmsFLAGS_COPY_ALPHA},
    {"Gray8ToRgb24", PixelFormat::Format8bppGrayScale, PixelFormat::Format24bppRgb, TYPE_GRAY_8, TYPE_BGR_8, 0},
};

Bytes ProfileOf(PixelFormat format) {
    switch (PixelFormatColorSpace(format)) {
    case ColorSpace::Cmyk:
        return TestProfiles::Cmyk();
    case ColorSpace::GrayScale:
        return TestProfiles::Gray();
    default:
        return TestProfiles::Rgb();
    }
}

/// Smooth with some grain, as photographs are.
BitmapData Photograph(PixelFormat format) {
    BitmapData raster(Width, Height, format);
    std::uint32_t seed = 1;
    for (std::uint32_t y = 0; y < Height; ++y) {
        std::uint8_t* const row = raster.GetScanlineRef(y);
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            seed = seed * 1664525 + 1013904223;
            row[i] = static_cast<std::uint8_t>(i / 61 + y / 17 + (seed >> 28));
        }
    }
    const Bytes profile = ProfileOf(format);
    raster.SetProfile(profile.data(), profile.size());
    return raster;
}

double Seconds(auto function) {
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Of this thread alone, whatever else the machine does.
double ProcessorSeconds(auto function) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    function();
    return now() - start;
}

/// The library, with everything that a conversion does besides: opening profiles, checking, making the raster.
struct Library {
    Library(const Case& test) : Source(Photograph(test.From)), To(test.To), File(DestinationProfile(test.To)) {
        const std::string name = File.Name();
        switch (PixelFormatColorSpace(To)) {
        case ColorSpace::Cmyk:
            Manager.SetCmykColorProfile(&name);
            break;
        case ColorSpace::GrayScale:
            Manager.SetGrayColorProfile(&name);
            break;
        default:
            Manager.SetRgbColorProfile(&name);
        }
        Run();
    }
    static Bytes DestinationProfile(PixelFormat format) {
        return PixelFormatIsRgb(format) ? TestProfiles::SRgb() : ProfileOf(format);
    }
    void Run() { Manager.TransformBitmapData(Source, To, Result); }

    BitmapData Source;
    PixelFormat To;
    TestProfiles::File File;
    ColorSpaceManager Manager;
    std::unique_ptr<BitmapData> Result;
};

/// Little CMS alone, into a raster made for it, as the library makes one.
void RunDirect(const Case& test, const BitmapData& source, BitmapData& result) {
    result.Create(Width, Height, test.To);
    const Bytes from = ProfileOf(test.From);
    const Bytes to = Library::DestinationProfile(test.To);
    const cmsHPROFILE in = cmsOpenProfileFromMem(from.data(), static_cast<cmsUInt32Number>(from.size()));
    const cmsHPROFILE out = cmsOpenProfileFromMem(to.data(), static_cast<cmsUInt32Number>(to.size()));
    const cmsHTRANSFORM transform = cmsCreateTransform(in, test.LcmsFrom, out, test.LcmsTo, INTENT_PERCEPTUAL,
                                                       test.LcmsFlags | cmsFLAGS_NOCACHE);
    for (std::uint32_t y = 0; y < Height; ++y) {
        cmsDoTransform(transform, source.GetScanlineRef(y), result.GetScanlineRef(y), Width);
    }
    cmsDeleteTransform(transform);
    cmsCloseProfile(in);
    cmsCloseProfile(out);
}

void RunCase(benchmark::State& state, const Case* pCase) {
    Library library(*pCase);
    BitmapData direct;
    RunDirect(*pCase, library.Source, direct);
    double own = 1e9;
    double peer = 1e9;
    for (auto _ : state) {
        // In turns, so that both meet the machine in the same mood; the best of each counts.
        for (int i = 0; i < Repeats; ++i) {
            own = std::min(own, ProcessorSeconds([&] { library.Run(); }));
            peer = std::min(peer, ProcessorSeconds([&] { RunDirect(*pCase, library.Source, direct); }));
        }
    }
    state.counters["library_ms"] = own * 1e3;
    state.counters["lcms_ms"] = peer * 1e3;
    state.counters["vs_lcms"] = own / peer;
}

void RunTwo(benchmark::State& state, const Case* pCase) {
    Library first(*pCase);
    Library second(*pCase);
    double alone = 1e9;
    double together = 1e9;
    for (auto _ : state) {
        for (int i = 0; i < Repeats; ++i) {
            alone = std::min(alone, Seconds([&] {
                first.Run();
                second.Run();
            }));
            together = std::min(together, Seconds([&] {
                const std::jthread other([&] { second.Run(); });
                first.Run();
            }));
        }
    }
    state.counters["alone_ms"] = alone * 1e3;
    state.counters["together_ms"] = together * 1e3;
    state.counters["speedup"] = alone / together;
}

} // namespace

int main(int argc, char** argv) {
    for (const Case& test : Cases) {
        benchmark::RegisterBenchmark(test.Name, RunCase, &test)->Iterations(1);
    }
    for (const Case* const pCase : {&Cases[0], &Cases[1]}) {
        benchmark::RegisterBenchmark((std::string("TwoAtOnce/") + pCase->Name).c_str(), RunTwo, pCase)->Iterations(1);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
