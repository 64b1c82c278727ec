// Crop, flips, right angles, rotation and thumbnails, beside memcpy, naive loops and, where it is installed, OpenCV. The
// ratios that count are those between lines of one run.

#include "metadata/Bmp/BitmapMetaData.h"
#include "transforms/CropTransform.h"
#include "transforms/FlipAndRotateTransform.h"
#include "transforms/RotateTransform.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef RASTERLOOM_BENCH_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

using namespace ImagingFramework;

constexpr std::uint32_t Width = 4000;
constexpr std::uint32_t Height = 3000;
constexpr double Angle = 17.0;

struct Format {
    const char* Name;
    PixelFormat Value;
    int OpenCvChannels; ///< 0 where OpenCV has no such pixel
};

constexpr Format Formats[] = {{"RGB8", PixelFormat::Format24bppRgb, 3},         {"RGBA8", PixelFormat::Format32bppArgb, 4},
                              {"Gray8", PixelFormat::Format8bppGrayScale, 1},   {"RGB16", PixelFormat::Format48bppRgb, 3},
                              {"Index4", PixelFormat::Format4bppIndexed, 0},    {"Index1", PixelFormat::Format1bppIndexed, 0}};

/// Shapes with some noise; opaque where there is alpha.
const BitmapData& Picture(const Format& format) {
    static std::map<std::string, BitmapData> pictures;
    BitmapData& raster = pictures[format.Name];
    if (!raster.IsEmpty()) {
        return raster;
    }
    raster.Create(Width, Height, format.Value);
    std::uint32_t seed = 1;
    for (std::uint32_t y = 0; y < Height; ++y) {
        std::uint8_t* const row = raster.GetScanlineRef(y);
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            seed = seed * 1664525U + 1013904223U;
            const bool alpha = format.Value == PixelFormat::Format32bppArgb && i % 4 == 3;
            row[i] = static_cast<std::uint8_t>(alpha ? 255U : ((i * i + y * y) >> 14) + (seed >> 28));
        }
    }
    return raster;
}

void CountBytes(benchmark::State& state, const BitmapData& raster) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(raster.GetStride()) * raster.GetHeight());
}

// --- Memory speed

void RunMemcpy(benchmark::State& state, const Format& format) {
    const BitmapData& source = Picture(format);
    BitmapData target(Width, Height, format.Value);
    for (auto _ : state) {
        std::memcpy(target.GetPixelsRef(), source.GetPixelsRef(), std::size_t{source.GetStride()} * Height);
        benchmark::DoNotOptimize(target.GetPixelsRef());
        benchmark::ClobberMemory();
    }
    CountBytes(state, source);
}

void RunFlip(benchmark::State& state, const Format& format, RotateFlipType mode) {
    const BitmapData& source = Picture(format);
    FlipAndRotateTransform transform;
    transform.SetMode(mode);
    for (auto _ : state) {
        std::unique_ptr<BitmapData> result;
        transform.ApplyTransform(&source, nullptr, result);
        benchmark::DoNotOptimize(result->GetPixelsRef());
    }
    CountBytes(state, source);
}

/// 10 pixels less on each side, at odd corners, or as many more.
void RunCrop(benchmark::State& state, const Format& format, std::int32_t inset) {
    const BitmapData& source = Picture(format);
    CropTransform transform;
    transform.SetCropX(inset);
    transform.SetCropY(inset);
    transform.SetCropWidth(static_cast<std::uint32_t>(static_cast<std::int32_t>(Width) - 2 * inset));
    transform.SetCropHeight(static_cast<std::uint32_t>(static_cast<std::int32_t>(Height) - 2 * inset));
    for (auto _ : state) {
        std::unique_ptr<BitmapData> result;
        transform.ApplyTransform(&source, nullptr, result);
        benchmark::DoNotOptimize(result->GetPixelsRef());
    }
    CountBytes(state, source);
}

// --- Rotation

void RunRotate(benchmark::State& state, const Format& format, InterpolationMode mode) {
    const BitmapData& source = Picture(format);
    RotateTransform transform;
    transform.SetAngle(Angle);
    transform.SetInterpolationMode(mode);
    for (auto _ : state) {
        std::unique_ptr<BitmapData> result;
        transform.ApplyTransform(&source, nullptr, result);
        benchmark::DoNotOptimize(result->GetPixelsRef());
    }
}

#ifdef RASTERLOOM_BENCH_OPENCV
cv::Mat Wrap(const Format& format) {
    const BitmapData& source = Picture(format);
    const int type = CV_MAKETYPE(PixelFormatIsExtended(format.Value) ? CV_16U : CV_8U, format.OpenCvChannels);
    return {static_cast<int>(Height), static_cast<int>(Width), type, source.GetPixelsRef(), source.GetStride()};
}

void RunOpenCvRotate(benchmark::State& state, const Format& format, int code) {
    cv::setNumThreads(1);
    const cv::Mat from = Wrap(format);
    cv::Mat to;
    for (auto _ : state) {
        cv::rotate(from, to, code);
        benchmark::DoNotOptimize(to.data);
    }
}

/// Onto the canvas that `RotateTransform` takes, too.
void RunOpenCvWarp(benchmark::State& state, const Format& format, int interpolation) {
    cv::setNumThreads(1);
    const cv::Mat from = Wrap(format);
    RotateTransform own;
    own.SetAngle(Angle);
    own.SetInterpolationMode(InterpolationMode::NearestNeighbour);
    std::unique_ptr<BitmapData> canvas;
    own.ApplyTransform(&Picture(format), nullptr, canvas);
    const cv::Size size(static_cast<int>(canvas->GetWidth()), static_cast<int>(canvas->GetHeight()));
    cv::Mat matrix = cv::getRotationMatrix2D(cv::Point2f((Width - 1) / 2.0F, (Height - 1) / 2.0F), -Angle, 1.0);
    matrix.at<double>(0, 2) += (size.width - 1) / 2.0 - (Width - 1) / 2.0;
    matrix.at<double>(1, 2) += (size.height - 1) / 2.0 - (Height - 1) / 2.0;
    cv::Mat to;
    for (auto _ : state) {
        cv::warpAffine(from, to, matrix, size, interpolation, cv::BORDER_CONSTANT);
        benchmark::DoNotOptimize(to.data);
    }
}
#endif

// --- Thumbnails

std::filesystem::path FilePath() {
    return std::filesystem::temp_directory_path() / ("bench_geometry-" + std::to_string(getpid()) + ".bmp");
}

/// A file of 36 MB, gone at the end of the program.
const std::filesystem::path& LargeFile() {
    static const std::filesystem::path path = [] {
        BitmapMetaData metaData;
        metaData.AttachToWrite(FilePath());
        ItemTag tag(MetaDataId::FrameBitmap);
        tag = const_cast<BitmapData*>(&Picture(Formats[0]));
        metaData.SetItem(tag);
        metaData.Close();
        std::atexit([] { std::filesystem::remove(FilePath()); });
        return FilePath();
    }();
    return path;
}

void LoadThumbnail(InterpolationMode mode) {
    BitmapMetaData metaData;
    metaData.AttachToRead(LargeFile());
    ItemTag tag(MetaDataId::FrameThumbnail);
    tag.SetThumbnailWidth(160);
    tag.SetThumbnailHeight(120);
    tag.SetThumbnailInterpolation(mode);
    metaData.GetItem(tag);
    tag.FreePointerValue();
}

void LoadFrame() {
    BitmapMetaData metaData;
    metaData.AttachToRead(LargeFile());
    ItemTag tag(MetaDataId::FrameBitmap);
    metaData.GetItem(tag);
    tag.FreePointerValue();
}

/// What `body` adds to the resident memory of a process at its peak, in KiB, seen in a child of its own.
template <class Body> long PeakMemory(Body body) {
    TrimMemoryCache();
    const auto peak = [](auto inside) {
        const pid_t child = fork();
        if (child == 0) {
            inside();
            _exit(0);
        }
        rusage usage{};
        int status = 0;
        wait4(child, &status, 0, &usage);
        return usage.ru_maxrss;
    };
    return peak(body) - peak([] {});
}

template <class Body> void RunLoading(benchmark::State& state, Body body) {
    LargeFile();
    for (auto _ : state) {
        body();
    }
    state.counters["PeakKiB"] = static_cast<double>(PeakMemory(body));
}

// --- All of it

template <class Run, class... Arguments> void Register(const std::string& name, Run run, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { run(state, arguments...); })
        ->Unit(benchmark::kMillisecond);
}

void RegisterFormat(const Format& format) {
    const std::string prefix = std::string(format.Name) + "/";
    Register(prefix + "Memcpy", RunMemcpy, format);
    Register(prefix + "CropInside", RunCrop, format, std::int32_t{11});
    Register(prefix + "CropBeyond", RunCrop, format, std::int32_t{-11});
    Register(prefix + "FlipX", RunFlip, format, RotateFlipType::RotateNoneFlipX);
    Register(prefix + "FlipY", RunFlip, format, RotateFlipType::Rotate180FlipX);
    Register(prefix + "Rotate180", RunFlip, format, RotateFlipType::Rotate180FlipNone);
    Register(prefix + "Rotate90", RunFlip, format, RotateFlipType::Rotate90FlipNone);
    Register(prefix + "Rotate270", RunFlip, format, RotateFlipType::Rotate270FlipNone);
    if (!PixelFormatIsIndexed(format.Value)) {
        Register(prefix + "Rotate17", RunRotate, format, InterpolationMode::Bilinear);
        Register(prefix + "Rotate17Nearest", RunRotate, format, InterpolationMode::NearestNeighbour);
    }
#ifdef RASTERLOOM_BENCH_OPENCV
    if (format.OpenCvChannels != 0) {
        Register(prefix + "OpenCV_Rotate90", RunOpenCvRotate, format, int{cv::ROTATE_90_CLOCKWISE});
        Register(prefix + "OpenCV_Warp17", RunOpenCvWarp, format, int{cv::INTER_LINEAR});
        Register(prefix + "OpenCV_Warp17Nearest", RunOpenCvWarp, format, int{cv::INTER_NEAREST});
    }
#endif
}

void RegisterAll() {
    for (const Format& format : Formats) {
        RegisterFormat(format);
    }
    const auto loading = [](const char* name, auto body) {
        Register(std::string("LargeFile/") + name, [body](benchmark::State& state) { RunLoading(state, body); });
    };
    loading("Load", [] { LoadFrame(); });
    loading("ThumbnailNearest", [] { LoadThumbnail(InterpolationMode::NearestNeighbour); });
    loading("ThumbnailAnisotropic9", [] { LoadThumbnail(InterpolationMode::Anisotropic9); });
    loading("ThumbnailLanczos", [] { LoadThumbnail(InterpolationMode::Lanczos3Filter); });
}

} // namespace

int main(int argc, char** argv) {
    RegisterAll();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
