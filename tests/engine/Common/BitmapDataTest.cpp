#include "Common/BitmapData.h"

#include "Throws.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/MemoryWriter.h"

#include <cstring>
#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

TEST(BitmapData, RowsStartOnFourBytes) {
    const BitmapData tiny(1, 1, PixelFormat::Format1bppIndexed);
    EXPECT_EQ(tiny.GetStride(), 4U);
    const BitmapData raster(5, 3, PixelFormat::Format24bppRgb);
    ASSERT_EQ(raster.GetStride(), 16U);
    EXPECT_EQ(raster.GetScanlineRef(2), raster.GetPixelsRef() + 32);
    EXPECT_THROW(raster.GetScanlineRef(3), ArgumentException);
    EXPECT_DOUBLE_EQ(raster.GetHorizontalResolution(), 72.0);
}

TEST(BitmapData, ReusedMemoryIsZeroedToo) {
    {
        BitmapData dirty(2048, 1024, PixelFormat::Format32bppArgb);
        std::memset(dirty.GetPixelsRef(), 0xAB, std::size_t{dirty.GetStride()} * dirty.GetHeight());
    }
    const BitmapData clean(2048, 1024, PixelFormat::Format32bppArgb);
    const std::uint8_t* const pixels = clean.GetPixelsRef();
    EXPECT_EQ(std::count(pixels, pixels + std::size_t{clean.GetStride()} * clean.GetHeight(), 0),
              std::ptrdiff_t{2048} * 1024 * 4);
}

TEST(BitmapData, RefusesWhatCannotBe) {
    BitmapData raster;
    EXPECT_EQ(ThrownText<ArgumentException>([&] { raster.Create(1, 1, PixelFormat::FormatUnknown); }),
              "Argument has an unappropriate value (format). (Pixel format should be known.).");
    EXPECT_THROW(raster.Create(134217728, 1, PixelFormat::Format32bppArgb), OverflowException);
    EXPECT_THROW(raster.Create(65536, 65536, PixelFormat::Format8bppGrayScale), OverflowException);
    raster.Create(0, 7, PixelFormat::Format24bppRgb);
    EXPECT_TRUE(raster.IsEmpty());
    EXPECT_EQ(raster.GetPixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(raster.GetScanlineRef(3), nullptr);
}

TEST(BitmapData, ResolutionsKeepTheirDefaultForUselessValues) {
    BitmapData raster(1, 1, PixelFormat::Format24bppRgb);
    raster.SetHorizontalResolution(118.11, LinearUnit::Cm);
    EXPECT_NEAR(raster.GetHorizontalResolution(LinearUnit::Inch), 299.9994, 1e-4);
    raster.SetHorizontalResolution(0.0);
    EXPECT_DOUBLE_EQ(raster.GetHorizontalResolution(), 72.0);
    raster.SetVerticalResolution(std::nan(""));
    EXPECT_DOUBLE_EQ(raster.GetVerticalResolution(), 72.0);
}

BitmapData Numbered(std::uint32_t width, std::uint32_t height, PixelFormat format) {
    BitmapData raster(width, height, format);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(y * 16 + i);
        }
    }
    return raster;
}

TEST(BitmapData, PartsShareMemoryAndOutliveTheirParent) {
    auto parent = std::make_unique<BitmapData>(Numbered(4, 4, PixelFormat::Format8bppGrayScale));
    parent->SetHorizontalResolution(300);
    BitmapData part;
    part.AttachPartially(*parent, {3, 3, 1, 2}); // corners in the other order
    EXPECT_EQ(part.GetWidth(), 2U);
    EXPECT_EQ(part.GetHeight(), 1U);
    EXPECT_EQ(part.GetStride(), parent->GetStride());
    EXPECT_EQ(part.GetScanlineRef(0)[0], 0x21);
    EXPECT_DOUBLE_EQ(part.GetHorizontalResolution(), 300.0);
    part.GetScanlineRef(0)[0] = 99;
    EXPECT_EQ(parent->GetScanlineRef(2)[1], 99);
    const BitmapData copy(part);
    parent.reset();
    EXPECT_EQ(part.GetScanlineRef(0)[0], 99);
    EXPECT_EQ(copy.GetStride(), 4U);
    EXPECT_FALSE(copy.IsAttached());
    EXPECT_EQ(copy.GetScanlineRef(0)[1], 0x22);
}

TEST(BitmapData, PartsBeginAndEndOnWholeBytes) {
    const BitmapData nibbles = Numbered(6, 2, PixelFormat::Format4bppIndexed);
    BitmapData part;
    EXPECT_NO_THROW(part.AttachPartially(nibbles, {2, 0, 4, 1}));
    EXPECT_EQ(ThrownText<ArgumentException>([&] { part.AttachPartially(nibbles, {1, 0, 3, 1}); }),
              "Argument has an unappropriate value (rectangle). (memory region should be aligned to byte boundary).");
    const BitmapData bits = Numbered(5, 2, PixelFormat::Format1bppIndexed);
    EXPECT_NO_THROW(part.AttachPartially(bits, {0, 0, 5, 2}));
    EXPECT_THROW(part.AttachPartially(bits, {-1, 0, 5, 2}), ArgumentException);
    EXPECT_THROW(part.AttachPartially(BitmapData(), {0, 0, 1, 1}), ArgumentException);
}

TEST(BitmapData, SerializesAndComesBack) {
    BitmapData raster = Numbered(3, 2, PixelFormat::Format8bppIndexed);
    ColorMap map(2, PixelFormat::Format24bppRgb);
    const std::uint8_t blueish[] = {200, 10, 20};
    map.SetEntryRgb(1, blueish);
    raster.SetColorMap(map);
    raster.SetVerticalResolution(150);
    const std::uint8_t profile[] = {1, 2, 3};
    raster.SetProfile(profile, sizeof profile);
    std::vector<std::uint8_t> bytes(raster.GetSize());
    MemoryWriter writer(bytes.data(), bytes.size());
    raster.Serialize(&writer);
    // 4 words, 2 doubles, count, 2 rows of 4 bytes, flag, palette of 3 words and 6 bytes, count and 3 profile bytes.
    EXPECT_EQ(writer.GetBytePosition(), 16U + 16 + 4 + 8 + 4 + 12 + 6 + 4 + 3);

    MemoryReader reader(bytes.data(), bytes.size());
    BitmapData back;
    back.Deserialize(&reader);
    EXPECT_EQ(back.GetWidth(), 3U);
    EXPECT_EQ(std::memcmp(back.GetScanlineRef(1), raster.GetScanlineRef(1), 3), 0);
    EXPECT_EQ(*back.GetColorMapRef(), map);
    EXPECT_DOUBLE_EQ(back.GetVerticalResolution(), 150.0);
    EXPECT_EQ(back.GetProfileData(), std::vector<std::uint8_t>(profile, profile + 3));
}

TEST(BitmapData, AnEmptyRecordLeavesTwelveBytesUnread) {
    std::vector<std::uint8_t> bytes(300);
    MemoryWriter writer(bytes.data(), bytes.size());
    BitmapData().Serialize(&writer);
    MemoryReader reader(bytes.data(), writer.GetBytePosition());
    BitmapData back = Numbered(2, 2, PixelFormat::Format24bppRgb);
    back.Deserialize(&reader);
    EXPECT_TRUE(back.IsEmpty());
    EXPECT_EQ(reader.GetRemaining(), 12U);
}

TEST(BitmapData, DamagedRecordsAreRefusedAndChangeNothing) {
    const BitmapData raster = Numbered(3, 2, PixelFormat::Format24bppRgb);
    std::vector<std::uint8_t> good(raster.GetSize());
    MemoryWriter writer(good.data(), good.size());
    raster.Serialize(&writer);
    good.resize(writer.GetBytePosition());

    const auto fails = [&](std::size_t offset, std::uint32_t word) {
        std::vector<std::uint8_t> bytes = good;
        std::memcpy(bytes.data() + offset, &word, 4);
        MemoryReader reader(bytes.data(), bytes.size());
        BitmapData kept = Numbered(2, 2, PixelFormat::Format8bppGrayScale);
        EXPECT_THROW(kept.Deserialize(&reader), MediaCorruptedException) << offset << " " << word;
        EXPECT_EQ(kept.GetWidth(), 2U);
    };
    fails(0, 0x01421807);      // no such format
    fails(4, 0xFFFFFFFFU);     // width beyond the stride
    fails(8, 1000000);         // height that does not fit the count
    fails(12, 8);              // stride below the row
    fails(32, 0x7FFFFFFFU);    // count beyond the record
    fails(20, 0x7FF00000U);    // infinite resolution
    fails(36 + 24, 2);         // palette flag
    fails(36 + 28, 77);        // profile beyond the record
    for (std::size_t size = 0; size < good.size(); ++size) {
        MemoryReader reader(good.data(), size);
        BitmapData target;
        EXPECT_THROW(target.Deserialize(&reader), Exception) << size;
    }
}

TEST(BitmapData, PalettesAreSharedByReference) {
    BitmapData raster(1, 1, PixelFormat::Format8bppIndexed);
    auto map = std::make_shared<ColorMap>(4, PixelFormat::Format32bppArgb);
    raster.SetColorMapRef(map);
    raster.SetColorMapRef(raster.GetColorMap());
    EXPECT_EQ(map.use_count(), 2);
    EXPECT_EQ(raster.DetachColorMap(), map);
    EXPECT_EQ(raster.GetColorMapRef(), nullptr);
}

} // namespace
} // namespace ImagingFramework
