// A block as a camera writes it, parsed and written, beside exiv2's library where it is installed.

#include "ExifBuilder.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Streams/MemoryReader.h"

#include <benchmark/benchmark.h>

#ifdef RASTERLOOM_BENCH_EXIV2
#include <exiv2/exiv2.hpp>
#endif

using namespace ImagingFramework;

namespace {

const ExifBuilder::Bytes& Block() {
    static const CameraBlock camera(true, true, 2048, 8000);
    return camera.Block;
}

ExifDataStorage Parse() {
    MemoryReader reader(Block().data(), Block().size());
    ExifDataStorage exif;
    exif.Initialize(&reader, true);
    return exif;
}

void BM_ExifParse(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Parse());
    }
}
BENCHMARK(BM_ExifParse);

void BM_ExifSerialize(benchmark::State& state) {
    const ExifDataStorage exif = Parse();
    for (auto _ : state) {
        benchmark::DoNotOptimize(exif.SerializeForJpeg());
    }
}
BENCHMARK(BM_ExifSerialize);

void BM_ExifAllTexts(benchmark::State& state) {
    const ExifDataStorage exif = Parse();
    std::string text;
    for (auto _ : state) {
        std::uint32_t key = 0;
        for (std::uint32_t i = 0; exif.GetKey(i, key); ++i) {
            exif.GetItemString(key, text);
            benchmark::DoNotOptimize(text);
        }
    }
}
BENCHMARK(BM_ExifAllTexts);

#ifdef RASTERLOOM_BENCH_EXIV2

void BM_ExifParseExiv2(benchmark::State& state) {
    for (auto _ : state) {
        Exiv2::ExifData exif;
        Exiv2::ExifParser::decode(exif, Block().data(), static_cast<std::uint32_t>(Block().size()));
        benchmark::DoNotOptimize(exif);
    }
}
BENCHMARK(BM_ExifParseExiv2);

void BM_ExifSerializeExiv2(benchmark::State& state) {
    Exiv2::ExifData exif;
    Exiv2::ExifParser::decode(exif, Block().data(), static_cast<std::uint32_t>(Block().size()));
    for (auto _ : state) {
        Exiv2::Blob blob;
        Exiv2::ExifParser::encode(blob, Exiv2::littleEndian, exif);
        benchmark::DoNotOptimize(blob);
    }
}
BENCHMARK(BM_ExifSerializeExiv2);

void BM_ExifAllTextsExiv2(benchmark::State& state) {
    Exiv2::ExifData exif;
    Exiv2::ExifParser::decode(exif, Block().data(), static_cast<std::uint32_t>(Block().size()));
    for (auto _ : state) {
        for (const Exiv2::Exifdatum& datum : exif) {
            benchmark::DoNotOptimize(datum.print(&exif));
        }
    }
}
BENCHMARK(BM_ExifAllTextsExiv2);

#endif

} // namespace

BENCHMARK_MAIN();
