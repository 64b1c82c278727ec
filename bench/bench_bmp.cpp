// Loading and saving of a 36 MB BMP that lies in the page cache, against plain reads and writes of the same bytes.

#include "metadata/Bmp/BitmapMetaData.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace ImagingFramework;

namespace {

constexpr std::uint32_t Width = 4000;
constexpr std::uint32_t Height = 3000;
constexpr std::size_t PieceSize = std::size_t{256} << 10;

std::filesystem::path FilePath(const char* name) {
    return std::filesystem::temp_directory_path() / ("bench_bmp-" + std::to_string(getpid()) + name);
}

void Save(const std::filesystem::path& path, const BitmapData& raster) {
    BitmapMetaData metaData;
    metaData.AttachToWrite(path);
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = const_cast<BitmapData*>(&raster);
    metaData.SetItem(tag);
    metaData.Close();
}

/// The source file, gone at the end of the program.
const std::filesystem::path& SourceFile() {
    static const std::filesystem::path path = [] {
        std::filesystem::path name = FilePath("-source.bmp");
        Save(name, BitmapData(Width, Height, PixelFormat::Format24bppRgb));
        std::atexit([] { std::filesystem::remove(FilePath("-source.bmp")); });
        return name;
    }();
    return path;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Width) * Height * 3);
}

void BM_PlainRead(benchmark::State& state) {
    const std::string name = SourceFile().string();
    const std::unique_ptr<char[]> buffer(new char[std::size_t{Width} * Height * 3 + 54]);
    for (auto _ : state) {
        const int file = open(name.c_str(), O_RDONLY);
        std::size_t used = 0;
        for (ssize_t count = 0; (count = read(file, buffer.get() + used, PieceSize)) > 0;) {
            used += static_cast<std::size_t>(count);
        }
        close(file);
        benchmark::DoNotOptimize(buffer.get());
    }
    CountBytes(state);
}
BENCHMARK(BM_PlainRead)->Unit(benchmark::kMillisecond);

void BM_Load(benchmark::State& state) {
    for (auto _ : state) {
        BitmapMetaData metaData;
        metaData.AttachToRead(SourceFile());
        ItemTag tag(MetaDataId::FrameBitmap);
        metaData.GetItem(tag);
        benchmark::DoNotOptimize(static_cast<BitmapData*>(tag));
        tag.FreePointerValue();
    }
    CountBytes(state);
}
BENCHMARK(BM_Load)->Unit(benchmark::kMillisecond);

void BM_LoadThumbnail(benchmark::State& state) {
    for (auto _ : state) {
        BitmapMetaData metaData;
        metaData.AttachToRead(SourceFile());
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailInterpolation(static_cast<InterpolationMode>(state.range(0)));
        metaData.GetItem(tag);
        tag.FreePointerValue();
    }
    CountBytes(state);
}
BENCHMARK(BM_LoadThumbnail)->Arg(3)->Arg(6)->Arg(13)->Unit(benchmark::kMillisecond);

void BM_PlainWrite(benchmark::State& state) {
    const std::string name = FilePath("-plain.bmp").string();
    const std::string other = name + ".tmp";
    const BitmapData raster(Width, Height, PixelFormat::Format24bppRgb);
    for (auto _ : state) {
        // As a save does it: a new file takes the place of the old one.
        const int file = open(other.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        for (std::size_t used = 0; used < std::size_t{Width} * Height * 3;) {
            const std::size_t size = std::min(PieceSize, std::size_t{Width} * Height * 3 - used);
            used += static_cast<std::size_t>(std::max<ssize_t>(write(file, raster.GetPixelsRef() + used, size), 1));
        }
        close(file);
        std::filesystem::rename(other, name);
    }
    CountBytes(state);
    std::filesystem::remove(name);
}
BENCHMARK(BM_PlainWrite)->Unit(benchmark::kMillisecond);

void BM_Save(benchmark::State& state) {
    const std::filesystem::path name = FilePath("-saved.bmp");
    const BitmapData raster(Width, Height, PixelFormat::Format24bppRgb);
    for (auto _ : state) {
        Save(name, raster);
    }
    CountBytes(state);
    std::filesystem::remove(name);
}
BENCHMARK(BM_Save)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
