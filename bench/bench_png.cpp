// Decoding and encoding of 12 million pixels against the bare library with the same settings, into and out of the same
// memory.

#include "SyntheticPicture.h"
#include "metadata/Png/PngMetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

constexpr auto Width = static_cast<std::uint32_t>(SyntheticPicture::Width);
constexpr auto Height = static_cast<std::uint32_t>(SyntheticPicture::Height);

struct Kind {
    const char* Name;
    PixelFormat Format;
    int ColorType;
    bool Interlaced;
};

constexpr Kind Kinds[] = {
    {"rgb", PixelFormat::Format24bppRgb, PNG_COLOR_TYPE_RGB, false},
    {"rgba", PixelFormat::Format32bppArgb, PNG_COLOR_TYPE_RGB_ALPHA, false},
    {"gray", PixelFormat::Format8bppGrayScale, PNG_COLOR_TYPE_GRAY, false},
    {"rgb_interlaced", PixelFormat::Format24bppRgb, PNG_COLOR_TYPE_RGB, true},
};

BitmapData& Picture(PixelFormat format) {
    static std::map<PixelFormat, std::unique_ptr<BitmapData>> s_pictures;
    std::unique_ptr<BitmapData>& raster = s_pictures[format];
    if (raster == nullptr) {
        const std::size_t rowSize = std::size_t{Width} * PixelFormatSize(format) / 8;
        const std::vector<std::uint8_t> pixels = SyntheticPicture::MakePhotograph(PixelFormatSize(format) / 8);
        raster = std::make_unique<BitmapData>(Width, Height, format);
        for (std::uint32_t y = 0; y < Height; ++y) {
            std::memcpy(raster->GetScanlineRef(y), pixels.data() + y * rowSize, rowSize);
        }
    }
    return *raster;
}

std::vector<std::uint8_t> Encode(const Kind& kind, BitmapData& picture) {
    const auto stream = std::make_shared<MemoryStream>();
    PngMetaData metaData;
    metaData.AttachToWrite(stream);
    ItemTag option(MetaDataId::Interlaced);
    option = std::int32_t{kind.Interlaced};
    metaData.SetItem(option);
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = &picture;
    metaData.SetItem(tag);
    metaData.Close();
    return stream->GetBytes();
}

void Decode(const std::shared_ptr<MemoryStream>& stream, BitmapData& raster) {
    PngMetaData metaData;
    metaData.AttachToRead(stream);
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = &raster;
    metaData.GetItem(tag);
}

struct BareSource {
    const std::uint8_t* pData;
};

void DecodeBare(const std::vector<std::uint8_t>& file, BitmapData& raster) {
    png_structp pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = png_create_info_struct(pPng);
    BareSource source{file.data()};
    png_set_read_fn(pPng, &source, [](png_structp pThis, png_bytep pTarget, std::size_t count) {
        auto* const pSource = static_cast<BareSource*>(png_get_io_ptr(pThis));
        std::memcpy(pTarget, pSource->pData, count);
        pSource->pData += count;
    });
    png_read_info(pPng, pInfo);
    png_set_bgr(pPng);
    const int passes = png_set_interlace_handling(pPng);
    png_read_update_info(pPng, pInfo);
    for (int pass = 0; pass < passes; ++pass) {
        for (std::uint32_t y = 0; y < Height; ++y) {
            png_read_row(pPng, raster.GetScanlineRef(y), nullptr);
        }
    }
    png_destroy_read_struct(&pPng, &pInfo, nullptr);
}

std::vector<std::uint8_t> EncodeBare(const Kind& kind, const BitmapData& picture) {
    std::vector<std::uint8_t> file;
    png_structp pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = png_create_info_struct(pPng);
    png_set_write_fn(
        pPng, &file,
        [](png_structp pThis, png_bytep pData, std::size_t count) {
            auto* const pFile = static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(pThis));
            pFile->insert(pFile->end(), pData, pData + count);
        },
        nullptr);
    png_set_IHDR(pPng, pInfo, Width, Height, 8, kind.ColorType, kind.Interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(pPng, pInfo);
    png_set_bgr(pPng);
    const int passes = png_set_interlace_handling(pPng);
    for (int pass = 0; pass < passes; ++pass) {
        for (std::uint32_t y = 0; y < Height; ++y) {
            png_write_row(pPng, picture.GetScanlineRef(y));
        }
    }
    png_write_end(pPng, pInfo);
    png_destroy_write_struct(&pPng, &pInfo);
    return file;
}

void CountPixels(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * std::int64_t{Width} * Height); }

void BM_Decode(benchmark::State& state, const Kind& kind, bool bare) {
    static std::map<const char*, std::vector<std::uint8_t>> s_files;
    std::vector<std::uint8_t>& file = s_files[kind.Name];
    if (file.empty()) {
        file = EncodeBare(kind, Picture(kind.Format));
    }
    const auto stream = std::make_shared<MemoryStream>(file);
    auto raster = std::make_unique<BitmapData>(Width, Height, kind.Format);
    for (auto _ : state) {
        if (bare) {
            DecodeBare(file, *raster);
        } else {
            Decode(stream, *raster);
        }
    }
    CountPixels(state);
}

void BM_Encode(benchmark::State& state, const Kind& kind, bool bare) {
    BitmapData& picture = Picture(kind.Format);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bare ? EncodeBare(kind, picture) : Encode(kind, picture));
    }
    CountPixels(state);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const auto add = [](const std::string& name, auto run, const Kind& kind) {
        for (const bool bare : {false, true}) {
            benchmark::RegisterBenchmark((name + (bare ? "Bare/" : "/") + kind.Name).c_str(), run, kind, bare)
                ->Unit(benchmark::kMillisecond);
        }
    };
    for (const Kind& kind : Kinds) {
        add("Decode", BM_Decode, kind);
        if (!kind.Interlaced) {
            add("Encode", BM_Encode, kind);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
