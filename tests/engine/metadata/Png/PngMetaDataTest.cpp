#include "metadata/Png/PngMetaData.h"

#include "EventsProbe.h"
#include "metadata/Streams/MemoryStream.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>
#include <zlib.h>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

void PutBig(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

/// PNG files put together by hand.
struct PngBuilder {
    std::uint32_t Width = 1;
    std::uint32_t Height = 1;
    std::uint8_t BitDepth = 8;
    std::uint8_t ColorType = 0;
    std::uint8_t Interlace = 0;
    Bytes Chunks{}; ///< between header and pixels
    Bytes Lines{};  ///< with their filter bytes

    static void AddChunk(Bytes& file, const char* pName, const Bytes& data) {
        PutBig(file, static_cast<std::uint32_t>(data.size()));
        const std::size_t begin = file.size();
        file.insert(file.end(), pName, pName + 4);
        file.insert(file.end(), data.begin(), data.end());
        PutBig(file, static_cast<std::uint32_t>(crc32(0, file.data() + begin, static_cast<uInt>(file.size() - begin))));
    }
    PngBuilder& With(const char* pName, const Bytes& data) {
        AddChunk(Chunks, pName, data);
        return *this;
    }
    PngBuilder& WithResolution(std::uint32_t x, std::uint32_t y, std::uint8_t unit) {
        Bytes data;
        PutBig(data, x);
        PutBig(data, y);
        data.push_back(unit);
        return With("pHYs", data);
    }
    Bytes Build() const {
        Bytes file = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
        Bytes header;
        PutBig(header, Width);
        PutBig(header, Height);
        header.insert(header.end(), {BitDepth, ColorType, 0, 0, Interlace});
        AddChunk(file, "IHDR", header);
        file.insert(file.end(), Chunks.begin(), Chunks.end());
        Bytes packed(compressBound(static_cast<uLong>(Lines.size())));
        uLongf size = packed.size();
        compress(packed.data(), &size, Lines.data(), static_cast<uLong>(Lines.size()));
        packed.resize(size);
        AddChunk(file, "IDAT", packed);
        AddChunk(file, "IEND", {});
        return file;
    }
};

std::unique_ptr<BitmapData> Load(const Bytes& file, PngMetaData& metaData) {
    metaData.AttachToRead(std::make_shared<MemoryStream>(file));
    ItemTag tag(MetaDataId::FrameBitmap);
    metaData.GetItem(tag);
    return std::unique_ptr<BitmapData>(static_cast<BitmapData*>(tag));
}

std::unique_ptr<BitmapData> Load(const Bytes& file) {
    PngMetaData metaData;
    return Load(file, metaData);
}

Bytes Save(BitmapData& raster, bool interlaced = false, IInternalEvents* pEvents = nullptr) {
    const auto stream = std::make_shared<MemoryStream>();
    PngMetaData metaData;
    metaData.AttachToWrite(stream);
    metaData.SetEvents(pEvents);
    ItemTag option(MetaDataId::Interlaced);
    option = std::int32_t{interlaced};
    metaData.SetItem(option);
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = &raster;
    metaData.SetItem(tag);
    metaData.Close();
    return stream->GetBytes();
}

Bytes Row(const BitmapData& raster, std::uint32_t row) {
    return {raster.GetScanlineRef(row), raster.GetScanlineRef(row) + raster.GetRowSize()};
}

Bytes Entry(const BitmapData& raster, std::uint32_t index) {
    Bytes entry(4);
    raster.GetColorMapRef()->GetEntryArgb(index, entry.data());
    return entry;
}

TEST(PngMetaData, TwoBitSamplesBecomeFour) {
    // 0 1 2 3 2 in one line.
    PngBuilder gray{.Width = 5, .BitDepth = 2, .Lines = {0, 0x1B, 0x80}};
    const auto raster = Load(gray.Build());
    EXPECT_EQ(raster->GetPixelFormat(), PixelFormat::Format4bppIndexed);
    EXPECT_EQ(Row(*raster, 0), (Bytes{0x01, 0x23, 0x20}));
    ASSERT_EQ(raster->GetColorMapRef()->GetEntryCount(), 4U);
    EXPECT_EQ(Entry(*raster, 1), (Bytes{85, 85, 85, 255}));
    EXPECT_EQ(Entry(*raster, 3), (Bytes{255, 255, 255, 255}));

    // Three entries only: the index 3 is none of them.
    gray.ColorType = 3;
    gray.With("PLTE", {1, 2, 3, 4, 5, 6, 7, 8, 9}).With("tRNS", {10, 20});
    const auto indexed = Load(gray.Build());
    EXPECT_EQ(Row(*indexed, 0), (Bytes{0x01, 0x20, 0x20}));
    EXPECT_EQ(indexed->GetColorMapRef()->GetPixelFormat(), PixelFormat::Format32bppArgb);
    EXPECT_EQ(Entry(*indexed, 1), (Bytes{6, 5, 4, 20}));
    EXPECT_EQ(Entry(*indexed, 2), (Bytes{9, 8, 7, 255}));
}

TEST(PngMetaData, SamplesInTheOrderOfMemory) {
    EXPECT_EQ(Row(*Load(PngBuilder{.ColorType = 2, .Lines = {0, 1, 2, 3}}.Build()), 0), (Bytes{3, 2, 1}));
    EXPECT_EQ(Row(*Load(PngBuilder{.ColorType = 6, .Lines = {0, 1, 2, 3, 4}}.Build()), 0), (Bytes{3, 2, 1, 4}));
    EXPECT_EQ(Row(*Load(PngBuilder{.ColorType = 4, .Lines = {0, 1, 2}}.Build()), 0), (Bytes{1, 2}));
    EXPECT_EQ(Row(*Load(PngBuilder{.BitDepth = 16, .ColorType = 6, .Lines = {0, 1, 2, 3, 4, 5, 6, 7, 8}}.Build()), 0),
              (Bytes{6, 5, 4, 3, 2, 1, 8, 7}));
}

TEST(PngMetaData, Resolution) {
    const auto resolution = [](PngBuilder file) {
        file.Lines = {0, 0};
        const auto raster = Load(file.Build());
        return std::pair(raster->GetHorizontalResolution(), raster->GetVerticalResolution());
    };
    const double unset = BitmapData::DefaultResolution;
    EXPECT_EQ(resolution({}), std::pair(unset, unset));
    EXPECT_EQ(resolution(PngBuilder().WithResolution(300, 200, 0)), std::pair(200.0, unset));
    const auto metres = resolution(PngBuilder().WithResolution(11811, 10000, 1));
    EXPECT_DOUBLE_EQ(metres.first, 11811 * 0.0254);
    EXPECT_DOUBLE_EQ(metres.second, 254.0);

    BitmapData raster(1, 1, PixelFormat::Format8bppGrayScale);
    raster.SetHorizontalResolution(300); // 11811.02 pixels per metre
    raster.SetVerticalResolution(96);    // 3779.5
    const auto saved = Load(Save(raster));
    EXPECT_DOUBLE_EQ(saved->GetHorizontalResolution(), 11811 * 0.0254);
    EXPECT_DOUBLE_EQ(saved->GetVerticalResolution(), 3779 * 0.0254);
}

TEST(PngMetaData, EveryFormatComesBack) {
    for (const PixelFormat format :
         {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed,
          PixelFormat::Format8bppGrayScale, PixelFormat::Format16bppGrayScale, PixelFormat::Format16bppAGrayScale,
          PixelFormat::Format32bppAGrayScale, PixelFormat::Format24bppRgb, PixelFormat::Format48bppRgb,
          PixelFormat::Format32bppArgb, PixelFormat::Format64bppArgb}) {
        BitmapData raster(16, 11, format);
        std::uint32_t state = 1;
        for (std::uint32_t y = 0; y < 11; ++y) {
            for (std::size_t i = 0; i < raster.GetRowSize(); ++i) {
                state = state * 1664525 + 1013904223;
                raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(state >> 24);
            }
        }
        if (PixelFormatIsIndexed(format)) {
            auto map = std::make_shared<ColorMap>(1U << PixelFormatSize(format), PixelFormat::Format32bppArgb);
            map->SetAlpha(1, 77);
            raster.SetColorMapRef(map);
        }
        for (const bool interlaced : {false, true}) {
            const auto loaded = Load(Save(raster, interlaced));
            ASSERT_EQ(loaded->GetPixelFormat(), format);
            for (std::uint32_t y = 0; y < 11; ++y) {
                EXPECT_EQ(Row(*loaded, y), Row(raster, y)) << y;
            }
            if (PixelFormatIsIndexed(format)) {
                EXPECT_EQ(*loaded->GetColorMapRef(), *raster.GetColorMapRef());
            }
        }
    }
}

TEST(PngMetaData, WhatAFileCannotHold) {
    BitmapData padded(1, 1, PixelFormat::Format32bppRgb);
    const std::uint8_t pixel[4] = {1, 2, 3, 200};
    std::copy(pixel, pixel + 4, padded.GetScanlineRef(0));
    const auto loaded = Load(Save(padded));
    EXPECT_EQ(loaded->GetPixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(Row(*loaded, 0), (Bytes{1, 2, 3}));

    BitmapData indexed(2, 1, PixelFormat::Format8bppIndexed);
    indexed.SetColorMapRef(nullptr);
    EXPECT_THROW(Save(indexed), PaletteException);
    indexed.SetColorMapRef(std::make_shared<ColorMap>(3, PixelFormat::Format24bppRgb));
    indexed.GetScanlineRef(0)[0] = 2;
    indexed.GetScanlineRef(0)[1] = 3;
    EXPECT_EQ(Row(*Load(Save(indexed)), 0), (Bytes{2, 0})) << "an index beyond the palette";
}

TEST(PngMetaData, ProgressCountsPasses) {
    for (const bool interlaced : {false, true}) {
        const int passes = interlaced ? 7 : 1;
        BitmapData raster(3000, 10, PixelFormat::Format24bppRgb);
        Testing::EventsProbe saving;
        // The probe begins with a range of its own.
        const std::int32_t before = saving.Announced();
        const Bytes file = Save(raster, interlaced, &saving);
        EXPECT_EQ(saving.Announced() - before, 10 * passes);
        EXPECT_EQ(saving.Steps(), 10 * passes);

        Testing::EventsProbe loading;
        PngMetaData metaData;
        metaData.SetEvents(&loading);
        Load(file, metaData);
        EXPECT_EQ(loading.Announced() - before, 10 * (passes + 1));
        EXPECT_EQ(loading.Steps(), 10 * (passes + 1));
    }
}

TEST(PngMetaData, CheckSumsMayBeSkipped) {
    Bytes file = PngBuilder{.ColorType = 2, .Lines = {0, 1, 2, 3}}.Build();
    file[file.size() - 13] ^= 1; // of the chunk of pixels
    EXPECT_THROW(Load(file), MediaCorruptedException);
    PngMetaData metaData;
    ItemTag skip(MetaDataId::SkipCrcCheck);
    skip = std::int32_t{1};
    metaData.SetItem(skip);
    EXPECT_EQ(Row(*Load(file, metaData), 0), (Bytes{3, 2, 1}));
}

TEST(PngMetaData, HugeFramesNeedData) {
    for (const auto& [width, height] : {std::pair(30000U, 30000U), std::pair(1U, 0x7FFFFFFFU), std::pair(0x7FFFFFFFU, 1U)}) {
        PngBuilder file{.Width = width, .Height = height, .ColorType = 2, .Lines = {0}};
        EXPECT_THROW(Load(file.Build()), MediaCorruptedException) << width;
    }
}

} // namespace
} // namespace ImagingFramework
