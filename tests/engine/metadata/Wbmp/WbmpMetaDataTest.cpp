#include "metadata/Wbmp/WbmpMetaData.h"

#include "FrameFiles.h"
#include "metadata/Streams/MemoryReader.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

std::unique_ptr<BitmapData> Load(const Bytes& file) {
    WbmpMetaData metaData;
    return LoadFrame(file, metaData);
}

Bytes Save(BitmapData& raster) {
    WbmpMetaData metaData;
    return SaveFrame(raster, metaData, [] {});
}

BitmapData BlackAndWhite(std::uint32_t width, std::uint32_t height, bool whiteFirst = false) {
    BitmapData raster(width, height, PixelFormat::Format1bppIndexed);
    auto map = std::make_shared<ColorMap>(2, PixelFormat::Format24bppRgb);
    const std::uint8_t white[3] = {255, 255, 255};
    map->SetEntryRgb(whiteFirst ? 0 : 1, white);
    raster.SetColorMapRef(map);
    return raster;
}

TEST(WbmpMetaData, WritesIntegersInGroupsOfSevenBits) {
    const std::pair<std::uint32_t, Bytes> cases[] = {
        {1, {0x01}},
        {127, {0x7F}},
        {128, {0x81, 0x00}},
        {300, {0x82, 0x2C}},
        {16384, {0x81, 0x80, 0x00}},
        {2097152, {0x81, 0x80, 0x80, 0x00}},
    };
    for (const auto& [width, integer] : cases) {
        BitmapData raster = BlackAndWhite(width, 1);
        Bytes expected = {0, 0};
        expected.insert(expected.end(), integer.begin(), integer.end());
        expected.push_back(1);
        const Bytes file = Save(raster);
        ASSERT_EQ(file.size(), expected.size() + (width + 7) / 8);
        EXPECT_EQ(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
        EXPECT_EQ(Load(file)->GetWidth(), width);
    }
}

TEST(WbmpMetaData, ReadsBlackAndWhite) {
    // 10 by 2, with a needless zero in front of an integer, and something behind the pixels.
    const auto raster = Load({0, 0, 0x80, 10, 2, 0xA5, 0x40, 0x12, 0x80, 77});
    EXPECT_EQ(raster->GetPixelFormat(), PixelFormat::Format1bppIndexed);
    EXPECT_EQ(Row(*raster, 0), (Bytes{0xA5, 0x40}));
    EXPECT_EQ(Row(*raster, 1), (Bytes{0x12, 0x80}));
    ASSERT_EQ(raster->GetColorMapRef()->GetEntryCount(), 2U);
    EXPECT_EQ(raster->GetColorMapRef()->GetPixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(Entry(*raster, 0), (Bytes{0, 0, 0, 255}));
    EXPECT_EQ(Entry(*raster, 1), (Bytes{255, 255, 255, 255}));
    EXPECT_EQ(raster->GetHorizontalResolution(), 72);
}

TEST(WbmpMetaData, ZeroIsDarkInTheFile) {
    for (const bool whiteFirst : {false, true}) {
        BitmapData raster = BlackAndWhite(8, 2, whiteFirst);
        raster.GetScanlineRef(0)[0] = 0x0F;
        raster.GetScanlineRef(1)[0] = 0x35;
        const std::uint8_t mask = whiteFirst ? 0xFF : 0;
        const Bytes file = Save(raster);
        EXPECT_EQ(file,
                  (Bytes{0, 0, 8, 2, static_cast<std::uint8_t>(0x0F ^ mask), static_cast<std::uint8_t>(0x35 ^ mask)}));
        const auto loaded = Load(file);
        EXPECT_EQ(Entry(*loaded, 0), (Bytes{0, 0, 0, 255}));
        EXPECT_EQ(loaded->GetScanlineRef(0)[0], 0x0F ^ mask);
    }
    BitmapData red = BlackAndWhite(8, 1);
    const std::uint8_t entry[3] = {0, 0, 255};
    red.GetColorMapRef()->SetEntryRgb(0, entry);
    EXPECT_EQ(Save(red).back(), 0) << "the blue sample alone decides";
}

TEST(WbmpMetaData, WhatIsRefused) {
    BitmapData gray(2, 2, PixelFormat::Format8bppGrayScale);
    EXPECT_THROW(Save(gray), UnsupportedPixelFormatException);
    BitmapData raster = BlackAndWhite(2, 2);
    raster.SetColorMapRef(nullptr);
    EXPECT_THROW(Save(raster), PaletteException);

    WbmpMetaData metaData;
    EXPECT_EQ(metaData.GetClosestPixelFormat(PixelFormat::Format64bppArgb), PixelFormat::Format1bppIndexed);
    metaData.AttachToWrite(std::make_shared<MemoryStream>());
    ItemTag tag(MetaDataId::FrameCompression);
    tag = FrameCompressionType::Rle;
    EXPECT_FALSE(metaData.SetItem(tag));
    tag = FrameCompressionType::None;
    EXPECT_TRUE(metaData.SetItem(tag));
    raster = BlackAndWhite(2, 2);
    tag.SetMetaDataId(MetaDataId::FrameBitmap);
    tag = &raster;
    EXPECT_TRUE(metaData.SetItem(tag));
    EXPECT_THROW(metaData.SetItem(tag), MultiFrameException);
}

TEST(WbmpMetaData, BadFiles) {
    Bytes elevenBytes = {0, 0};
    elevenBytes.insert(elevenBytes.end(), 10, 0x80);
    elevenBytes.insert(elevenBytes.end(), {1, 1, 0});
    const Bytes files[] = {
        {1, 0, 8, 1, 0},                                                       // another type
        {0, 0, 0, 1, 0},                                                       // no width
        {0, 0, 8, 0x80, 0x00, 0},                                              // no height
        {0, 0, 0x90, 0x80, 0x80, 0x80, 0x00, 1, 0},                            // 2^32
        {0, 0, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0}, // 2^32 - 1, twice
        {0, 0, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 1, 0},                            // one long line
        {0, 0, 9, 1, 0},                                                       // a byte is missing
        {0, 0, 0x81},
        {0},
        elevenBytes,
    };
    WbmpFrameDecoder decoder;
    for (const Bytes& file : files) {
        EXPECT_THROW(decoder.Attach(ObjPtr<AbstractReader>(new MemoryReader(file.data(), file.size()))),
                     MediaCorruptedException)
            << testing::PrintToString(file);
    }
    EXPECT_THROW(Load(files[3]), MediaUnsupportedException) << "the probe sees it first";
    EXPECT_THROW(Load(files[6]), MediaCorruptedException);
}

} // namespace
} // namespace ImagingFramework
