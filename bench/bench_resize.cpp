// Resizing, one family after the other, beside OpenCV and libvips where they are installed and beside a naive loop
// (bench/pillow_resize.py times Pillow on the same sizes). The ratios that count
// are those between lines of one run.

#include "Common/EngineModule.h"
#include "transforms/ResizeTransform.h"

#include <benchmark/benchmark.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#ifdef RASTERLOOM_BENCH_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef RASTERLOOM_BENCH_VIPS
#include <vips/vips.h>
#endif

namespace {

using namespace ImagingFramework;

struct Shape {
    const char* Name;
    std::uint32_t FromWidth, FromHeight, ToWidth, ToHeight;
};

constexpr Shape Shapes[] = {{"4000x3000_800x600", 4000, 3000, 800, 600},
                            {"4000x3000_1920x1440", 4000, 3000, 1920, 1440},
                            {"800x600_1600x1200", 800, 600, 1600, 1200}};

struct Format {
    const char* Name;
    PixelFormat Value;
    int Channels;
};

constexpr Format Formats[] = {{"RGB8", PixelFormat::Format24bppRgb, 3},
                              {"RGBA8", PixelFormat::Format32bppArgb, 4},
                              {"Gray8", PixelFormat::Format8bppGrayScale, 1},
                              {"RGB16", PixelFormat::Format48bppRgb, 3}};

/// Smooth shapes with a little noise, and, where there is alpha, opaque and transparent parts with soft edges.
const BitmapData& Picture(const Shape& shape, const Format& format) {
    static std::map<std::string, BitmapData> pictures;
    BitmapData& raster = pictures[std::string(format.Name) + std::to_string(shape.FromWidth)];
    if (!raster.IsEmpty()) {
        return raster;
    }
    std::mt19937 random(7);
    raster.Create(shape.FromWidth, shape.FromHeight, format.Value);
    const std::uint32_t sampleSize = PixelFormatIsExtended(format.Value) ? 2 : 1;
    for (std::uint32_t y = 0; y < shape.FromHeight; ++y) {
        std::uint8_t* const row = raster.GetScanlineRef(y);
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            const std::uint32_t x = i / (static_cast<std::uint32_t>(format.Channels) * sampleSize);
            row[i] = static_cast<std::uint8_t>(((x * x + y * y) >> 12) + random() % 16);
        }
        if (format.Value == PixelFormat::Format32bppArgb) {
            for (std::uint32_t x = 0; x < shape.FromWidth; ++x) {
                const std::uint32_t ramp = (x + y) % 1000;
                row[4 * x + 3] = static_cast<std::uint8_t>(ramp < 600 ? 255 : ramp < 800 ? 255 - (ramp - 600) * 255 / 200 : 0);
            }
        }
    }
    return raster;
}

void RunResize(benchmark::State& state, const Shape& shape, const Format& format, InterpolationMode mode, bool parallel) {
    const BitmapData& source = Picture(shape, format);
    ResizeTransform transform;
    transform.SetWidth(shape.ToWidth);
    transform.SetHeight(shape.ToHeight);
    transform.SetInterpolationMode(mode);
    SetOmpSupport(parallel ? 1 : 0);
    for (auto _ : state) {
        std::unique_ptr<BitmapData> result;
        transform.ApplyTransform(&source, nullptr, result);
        benchmark::DoNotOptimize(result->GetPixelsRef());
    }
}

/// What a program without this library would write first: bilinear, sample by sample.
void RunNaive(benchmark::State& state, const Shape& shape, const Format& format) {
    const BitmapData& source = Picture(shape, format);
    for (auto _ : state) {
        BitmapData result(shape.ToWidth, shape.ToHeight, format.Value);
        const double ratioX = (shape.FromWidth - 1.0) / (shape.ToWidth - 1.0);
        const double ratioY = (shape.FromHeight - 1.0) / (shape.ToHeight - 1.0);
        const auto channels = static_cast<std::uint32_t>(format.Channels);
        for (std::uint32_t y = 0; y < shape.ToHeight; ++y) {
            const auto top = static_cast<std::uint32_t>(y * ratioY);
            const double fy = y * ratioY - top;
            for (std::uint32_t x = 0; x < shape.ToWidth; ++x) {
                const auto left = static_cast<std::uint32_t>(x * ratioX);
                const double fx = x * ratioX - left;
                const std::uint32_t right = std::min(left + 1, shape.FromWidth - 1);
                const std::uint8_t* const upper = source.GetScanlineRef(top);
                const std::uint8_t* const lower = source.GetScanlineRef(std::min(top + 1, shape.FromHeight - 1));
                for (std::uint32_t c = 0; c < channels; ++c) {
                    const double a = upper[left * channels + c] * (1 - fx) + upper[right * channels + c] * fx;
                    const double b = lower[left * channels + c] * (1 - fx) + lower[right * channels + c] * fx;
                    result.GetScanlineRef(y)[x * channels + c] = static_cast<std::uint8_t>(a * (1 - fy) + b * fy);
                }
            }
        }
        benchmark::DoNotOptimize(result.GetPixelsRef());
    }
}

#ifdef RASTERLOOM_BENCH_OPENCV
void RunOpenCv(benchmark::State& state, const Shape& shape, const Format& format, int interpolation) {
    cv::setNumThreads(1);
    const BitmapData& source = Picture(shape, format);
    const int type = CV_MAKETYPE(PixelFormatIsExtended(format.Value) ? CV_16U : CV_8U, format.Channels);
    const cv::Mat from(static_cast<int>(shape.FromHeight), static_cast<int>(shape.FromWidth), type, source.GetPixelsRef(),
                       source.GetStride());
    for (auto _ : state) {
        cv::Mat to;
        cv::resize(from, to, cv::Size(static_cast<int>(shape.ToWidth), static_cast<int>(shape.ToHeight)), 0, 0,
                   interpolation);
        benchmark::DoNotOptimize(to.data);
    }
}
#endif

#ifdef RASTERLOOM_BENCH_VIPS
/// As a program would ask for it: colours and alpha as they stand, one thread.
void RunVips(benchmark::State& state, const Shape& shape, const Format& format, VipsKernel kernel) {
    const BitmapData& source = Picture(shape, format);
    const VipsBandFormat type = PixelFormatIsExtended(format.Value) ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR;
    std::vector<std::uint8_t> packed;
    for (std::uint32_t y = 0; y < shape.FromHeight; ++y) {
        packed.insert(packed.end(), source.GetScanlineRef(y), source.GetScanlineRef(y) + source.GetRowSize());
    }
    const double scaleX = static_cast<double>(shape.ToWidth) / shape.FromWidth;
    for (auto _ : state) {
        VipsImage* const from =
            vips_image_new_from_memory(packed.data(), packed.size(), static_cast<int>(shape.FromWidth),
                                       static_cast<int>(shape.FromHeight), format.Channels, type);
        VipsImage* resized = nullptr;
        if (vips_resize(from, &resized, scaleX, "kernel", kernel, nullptr) != 0) {
            state.SkipWithError("vips_resize failed");
            break;
        }
        std::size_t size = 0;
        void* const pixels = vips_image_write_to_memory(resized, &size);
        benchmark::DoNotOptimize(pixels);
        g_free(pixels);
        g_object_unref(resized);
        g_object_unref(from);
    }
}
#endif

struct Family {
    const char* Name;
    InterpolationMode Mode;
    bool Parallel;
};

constexpr Family Families[] = {
    {"Nearest", InterpolationMode::NearestNeighbour, false}, {"Bilinear", InterpolationMode::Bilinear, true},
    {"Trilinear", InterpolationMode::Trilinear, false},      {"Anisotropic4", InterpolationMode::Anisotropic4, true},
    {"Anisotropic9", InterpolationMode::Anisotropic9, true}, {"Lanczos", InterpolationMode::Lanczos3Filter, true},
    {"Hermite", InterpolationMode::HermiteFilter, false},    {"Box", InterpolationMode::BoxFilter, false},
    {"Triangle", InterpolationMode::TriangleFilter, false},  {"Bell", InterpolationMode::BellFilter, false},
    {"Spline", InterpolationMode::SplineFilter, false},      {"Mitchell", InterpolationMode::MitchellFilter, false},
};

template <class Run, class... Arguments>
benchmark::internal::Benchmark* Register(const std::string& name, Run run, Arguments... arguments) {
    return benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { run(state, arguments...); })
        ->Unit(benchmark::kMillisecond);
}

void RegisterAll() {
    for (const Shape& shape : Shapes) {
        for (const Format& format : Formats) {
            const std::string prefix = std::string(shape.Name) + "/" + format.Name + "/";
            for (const Family& family : Families) {
                Register(prefix + family.Name, RunResize, shape, format, family.Mode, false);
                if (family.Parallel) {
                    Register(prefix + family.Name + "_threads", RunResize, shape, format, family.Mode, true)->UseRealTime();
                }
            }
#ifdef RASTERLOOM_BENCH_OPENCV
            Register(prefix + "OpenCV_NEAREST", RunOpenCv, shape, format, int{cv::INTER_NEAREST});
            Register(prefix + "OpenCV_LINEAR", RunOpenCv, shape, format, int{cv::INTER_LINEAR});
            Register(prefix + "OpenCV_LANCZOS4", RunOpenCv, shape, format, int{cv::INTER_LANCZOS4});
#endif
#ifdef RASTERLOOM_BENCH_VIPS
            // Another thread does the work there.
            Register(prefix + "Vips_NEAREST", RunVips, shape, format, VIPS_KERNEL_NEAREST)->UseRealTime();
            Register(prefix + "Vips_LINEAR", RunVips, shape, format, VIPS_KERNEL_LINEAR)->UseRealTime();
            Register(prefix + "Vips_LANCZOS3", RunVips, shape, format, VIPS_KERNEL_LANCZOS3)->UseRealTime();
#endif
            if (!PixelFormatIsExtended(format.Value)) {
                Register(prefix + "NaiveBilinear", RunNaive, shape, format);
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    Initialize();
#ifdef RASTERLOOM_BENCH_VIPS
    if (VIPS_INIT(argv[0]) != 0) {
        return 1;
    }
    vips_concurrency_set(1);
#endif
    RegisterAll();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
