// Decoding and encoding of 12 million pixels against the bare library with the same settings, into and out of the same
// memory; thumbnails against a full and a scaled decode by the library.

#include "SyntheticPicture.h"
#include "metadata/Jpeg/JpegMetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

using namespace ImagingFramework;

namespace {

constexpr auto Width = static_cast<std::uint32_t>(SyntheticPicture::Width);
constexpr auto Height = static_cast<std::uint32_t>(SyntheticPicture::Height);

const BitmapData& Picture() {
    static const std::unique_ptr<BitmapData> picture = [] {
        const std::vector<std::uint8_t> pixels = SyntheticPicture::MakePhotograph(3);
        auto raster = std::make_unique<BitmapData>(Width, Height, PixelFormat::Format24bppRgb);
        for (std::uint32_t y = 0; y < Height; ++y) {
            std::memcpy(raster->GetScanlineRef(y), pixels.data() + std::size_t{y} * Width * 3, std::size_t{Width} * 3);
        }
        return raster;
    }();
    return *picture;
}

std::vector<std::uint8_t> Encode(bool progressive) {
    const auto stream = std::make_shared<MemoryStream>();
    JpegMetaData metaData;
    metaData.AttachToWrite(stream);
    ItemTag option(MetaDataId::Progressive);
    option = std::int32_t{progressive};
    metaData.SetItem(option);
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = const_cast<BitmapData*>(&Picture());
    metaData.SetItem(tag);
    metaData.Close();
    return stream->GetBytes();
}

const std::vector<std::uint8_t>& File(bool progressive) {
    static const std::vector<std::uint8_t> files[2] = {Encode(false), Encode(true)};
    return files[progressive];
}

void CountPixels(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * std::int64_t{Width} * Height); }

void BM_Decode(benchmark::State& state) {
    const auto stream = std::make_shared<MemoryStream>(File(state.range(0) != 0));
    auto raster = std::make_unique<BitmapData>(Width, Height, PixelFormat::Format24bppRgb);
    for (auto _ : state) {
        JpegMetaData metaData;
        metaData.AttachToRead(stream);
        ItemTag tag(MetaDataId::FrameBitmap);
        tag = raster.get();
        metaData.GetItem(tag);
    }
    CountPixels(state);
    state.counters["bits/pixel"] = 8.0 * static_cast<double>(stream->GetBytes().size()) / Width / Height;
}
BENCHMARK(BM_Decode)->ArgName("progressive")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void DecodeBare(const std::vector<std::uint8_t>& file, BitmapData& raster, unsigned denominator) {
    jpeg_decompress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, file.data(), file.size());
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGR;
    info.scale_num = 1;
    info.scale_denom = denominator;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        JSAMPROW lines[16];
        const unsigned count = std::min(16U, info.output_height - info.output_scanline);
        for (unsigned i = 0; i < count; ++i) {
            lines[i] = raster.GetScanlineRef(info.output_scanline + i);
        }
        jpeg_read_scanlines(&info, lines, count);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
}

void BM_DecodeBare(benchmark::State& state) {
    const auto& file = File(state.range(0) != 0);
    auto raster = std::make_unique<BitmapData>(Width, Height, PixelFormat::Format24bppRgb);
    for (auto _ : state) {
        DecodeBare(file, *raster, static_cast<unsigned>(state.range(1)));
    }
    CountPixels(state);
}
BENCHMARK(BM_DecodeBare)->ArgNames({"progressive", "scale"})->Args({0, 1})->Args({1, 1})->Args({0, 2})->Args({0, 8})->Unit(benchmark::kMillisecond);

void BM_Encode(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Encode(state.range(0) != 0));
    }
    CountPixels(state);
}
BENCHMARK(BM_Encode)->ArgName("progressive")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_EncodeBare(benchmark::State& state) {
    for (auto _ : state) {
        jpeg_compress_struct info;
        jpeg_error_mgr errors;
        info.err = jpeg_std_error(&errors);
        jpeg_create_compress(&info);
        unsigned char* pBuffer = nullptr;
        unsigned long size = 0;
        jpeg_mem_dest(&info, &pBuffer, &size);
        info.image_width = Width;
        info.image_height = Height;
        info.input_components = 3;
        info.in_color_space = JCS_EXT_BGR;
        jpeg_set_defaults(&info);
        info.dct_method = JDCT_FLOAT;
        jpeg_set_quality(&info, 75, TRUE);
        if (state.range(0) != 0) {
            jpeg_simple_progression(&info);
        }
        jpeg_start_compress(&info, TRUE);
        while (info.next_scanline < Height) {
            JSAMPROW pLine = const_cast<JSAMPROW>(Picture().GetScanlineRef(info.next_scanline));
            jpeg_write_scanlines(&info, &pLine, 1);
        }
        jpeg_finish_compress(&info);
        jpeg_destroy_compress(&info);
        benchmark::DoNotOptimize(size);
        std::free(pBuffer);
    }
    CountPixels(state);
}
BENCHMARK(BM_EncodeBare)->ArgName("progressive")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Width and height of the box, and whether the library may reduce.
void BM_Thumbnail(benchmark::State& state) {
    const auto stream = std::make_shared<MemoryStream>(File(false));
    for (auto _ : state) {
        JpegMetaData metaData;
        metaData.SetFastThumbnails(state.range(2) != 0);
        metaData.AttachToRead(stream);
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailWidth(static_cast<std::uint32_t>(state.range(0)));
        tag.SetThumbnailHeight(static_cast<std::uint32_t>(state.range(1)));
        metaData.GetItem(tag);
        tag.FreePointerValue();
    }
    CountPixels(state);
}
BENCHMARK(BM_Thumbnail)->ArgNames({"width", "height", "fast"})->Args({160, 120, 0})->Args({800, 600, 0})->Args({160, 120, 1})->Args({800, 600, 1})->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
