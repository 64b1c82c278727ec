#include "metadata/Bmp/BitmapFrameEncoder.h"

#include "BmpRasters.h"
#include "EventsProbe.h"
#include "FaultyStream.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

TEST(BitmapFrameEncoder, GoldenFile24) {
    // 2 by 2 at 72 by 300 dots per inch: 72 / 0.0254 = 2834.65 -> 2835 = 0xB13; 300 / 0.0254 = 11811.02 -> 11812 =
    // 0x2E24.
    BitmapData raster = MakeRaster(2, 2, PixelFormat::Format24bppRgb, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    raster.SetVerticalResolution(300);
    const Bytes expected = {
        'B', 'M', 70, 0,  0,    0,    0, 0, 0,    0,    54, 0, 0, 0,                    // 54 + 2 * 8 bytes
        40,  0,   0,  0,  2,    0,    0, 0, 2,    0,    0,  0, 1, 0, 24, 0, 0, 0, 0, 0, // none
        16,  0,   0,  0,  0x13, 0x0B, 0, 0, 0x24, 0x2E, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, // image size, resolutions
        7,   8,   9,  10, 11,   12,   0, 0, 1,    2,    3,  4, 5, 6, 0,  0,             // bottom line first
    };
    EXPECT_EQ(SaveBmp(raster), expected);
}

TEST(BitmapFrameEncoder, GoldenPalettes) {
    BitmapData raster = MakeRaster(3, 1, PixelFormat::Format4bppIndexed, {0x12, 0x30});
    ColorMap map(2, PixelFormat::Format24bppRgb);
    const std::uint8_t entry[3] = {10, 20, 30};
    map.SetEntryRgb(1, entry);
    raster.SetColorMap(map);
    Bytes file = SaveBmp(raster);
    ASSERT_EQ(file.size(), 54U + 64 + 4);
    EXPECT_EQ(file[10], 118); // pixel offset
    EXPECT_EQ(file[34], 68);  // the palette counts as image
    EXPECT_EQ(Bytes(file.begin() + 54, file.begin() + 66), (Bytes{0, 0, 0, 255, 10, 20, 30, 255, 0, 0, 0, 0}));
    EXPECT_EQ(Bytes(file.end() - 4, file.end()), (Bytes{0x12, 0x30, 0, 0}));

    map.Create(2, PixelFormat::Format32bppArgb);
    const std::uint8_t translucent[4] = {1, 2, 3, 4};
    map.SetEntryArgb(0, translucent);
    BitmapData mono = MakeRaster(9, 1, PixelFormat::Format1bppIndexed, {0xAA, 0x80});
    mono.SetColorMap(map);
    file = SaveBmp(mono);
    EXPECT_EQ(Bytes(file.begin() + 54, file.end()), (Bytes{1, 2, 3, 4, 0, 0, 0, 0, 0xAA, 0x80, 0, 0}));

    file = SaveBmp(MakeRaster(1, 1, PixelFormat::Format8bppGrayScale, {77}));
    ASSERT_EQ(file.size(), 54U + 1024 + 4);
    EXPECT_EQ(Bytes(file.begin() + 54 + 4 * 200, file.begin() + 54 + 4 * 200 + 4), (Bytes{200, 200, 200, 255}));
}

/// The codes of one line, without headers, palette and the two closing codes.
Bytes CodesOf(PixelFormat format, std::uint32_t width, const Bytes& line) {
    const Bytes file = SaveBmp(MakeRaster(width, 1, format, line), FrameCompressionType::Rle);
    const std::size_t begin = 54 + (4U << PixelFormatSize(format));
    EXPECT_EQ(Bytes(file.end() - 4, file.end()), (Bytes{0, 0, 0, 1}));
    EXPECT_EQ(file[30], format == PixelFormat::Format8bppIndexed ? 1 : 2);
    return Bytes(file.begin() + static_cast<std::ptrdiff_t>(begin), file.end() - 4);
}

TEST(BitmapFrameEncoder, RunLengthCodes) {
    struct Case {
        std::uint32_t Width;
        Bytes Line;
        Bytes Codes;
    };
    const Case cases8[] = {
        {1, {9}, {1, 9}},
        {2, {9, 9}, {2, 9}},
        {2, {8, 9}, {1, 8, 1, 9}},
        {3, {1, 2, 3}, {0, 3, 1, 2, 3, 0}},
        {4, {1, 2, 3, 4}, {0, 4, 1, 2, 3, 4}},
        {6, {1, 2, 3, 3, 3, 4}, {1, 1, 1, 2, 3, 3, 1, 4}},
        {7, {1, 2, 3, 4, 4, 5, 5}, {0, 3, 1, 2, 3, 0, 2, 4, 2, 5}},
        {5, {5, 5, 6, 7, 8}, {2, 5, 0, 3, 6, 7, 8, 0}},
    };
    for (const Case& c : cases8) {
        EXPECT_EQ(CodesOf(PixelFormat::Format8bppIndexed, c.Width, c.Line), c.Codes) << testing::PrintToString(c.Line);
    }
    const Case cases4[] = {
        {1, {0x90}, {1, 0x90}},
        {2, {0x98}, {1, 0x90, 1, 0x80}},
        {3, {0x98, 0x70}, {0, 3, 0x98, 0x70}},
        {4, {0x98, 0x98}, {4, 0x98}},
        {5, {0x98, 0x98, 0x90}, {4, 0x98, 1, 0x90}},
        {5, {0x99, 0x99, 0x99}, {5, 0x99}},
        {6, {0x12, 0x34, 0x56}, {0, 6, 0x12, 0x34, 0x56, 0xFF}},
        {8, {0x12, 0x34, 0x34, 0x56}, {1, 0x10, 1, 0x20, 4, 0x34, 1, 0x50, 1, 0x60}},
    };
    for (const Case& c : cases4) {
        EXPECT_EQ(CodesOf(PixelFormat::Format4bppIndexed, c.Width, c.Line), c.Codes) << testing::PrintToString(c.Line);
    }
}

TEST(BitmapFrameEncoder, LongRunsAndChainsAreCut) {
    EXPECT_EQ(CodesOf(PixelFormat::Format8bppIndexed, 255, Bytes(255, 7)), (Bytes{255, 7}));
    EXPECT_EQ(CodesOf(PixelFormat::Format8bppIndexed, 256, Bytes(256, 7)), (Bytes{255, 7, 1, 7}));
    EXPECT_EQ(CodesOf(PixelFormat::Format8bppIndexed, 600, Bytes(600, 7)), (Bytes{255, 7, 255, 7, 90, 7}));
    EXPECT_EQ(CodesOf(PixelFormat::Format4bppIndexed, 301, Bytes(151, 0x77)), (Bytes{254, 0x77, 47, 0x77}));
    Bytes counting(256);
    for (std::size_t i = 0; i < counting.size(); ++i) {
        counting[i] = static_cast<std::uint8_t>(i);
    }
    Bytes expected = {0, 255};
    expected.insert(expected.end(), counting.begin(), counting.end() - 1);
    expected.insert(expected.end(), {0, 1, 255});
    EXPECT_EQ(CodesOf(PixelFormat::Format8bppIndexed, 256, counting), expected);
    expected = {0, 254};
    expected.insert(expected.end(), counting.begin(), counting.begin() + 127);
    expected.insert(expected.end(), {0xFF, 0, 4, 127, 128});
    EXPECT_EQ(CodesOf(PixelFormat::Format4bppIndexed, 258, Bytes(counting.begin(), counting.begin() + 129)), expected);
}

TEST(BitmapFrameEncoder, WhatIsSavedComesBack) {
    struct Case {
        PixelFormat Saved;
        PixelFormat Loaded;
        FrameCompressionType Compression;
    };
    constexpr auto none = FrameCompressionType::None;
    constexpr auto rle = FrameCompressionType::Rle;
    const Case cases[] = {
        {PixelFormat::Format1bppIndexed, PixelFormat::Format1bppIndexed, none},
        {PixelFormat::Format4bppIndexed, PixelFormat::Format4bppIndexed, none},
        {PixelFormat::Format8bppIndexed, PixelFormat::Format8bppIndexed, none},
        {PixelFormat::Format8bppGrayScale, PixelFormat::Format8bppIndexed, none},
        {PixelFormat::Format24bppRgb, PixelFormat::Format24bppRgb, none},
        {PixelFormat::Format32bppRgb, PixelFormat::Format32bppRgb, none},
        {PixelFormat::Format32bppArgb, PixelFormat::Format32bppRgb, none},
        {PixelFormat::Format4bppIndexed, PixelFormat::Format4bppIndexed, rle},
        {PixelFormat::Format8bppIndexed, PixelFormat::Format8bppIndexed, rle},
    };
    for (const Case& c : cases) {
        for (const std::uint32_t width : {1U, 2U, 3U, 8U, 255U, 256U, 257U, 1031U}) {
            BitmapData raster(width, 7, c.Saved);
            Bytes noise = NoiseBytes(std::size_t{raster.GetRowSize()} * 7, width);
            if (c.Compression == rle) {
                // Runs of all lengths: neighbours are often equal.
                for (std::size_t i = 1; i < noise.size(); ++i) {
                    noise[i] = noise[i] < 200 ? noise[i - 1] : noise[i];
                }
            }
            raster = MakeRaster(width, 7, c.Saved, noise);
            if (PixelFormatSize(c.Saved) < 8) {
                // Bits behind the last pixel mean nothing.
                const std::uint32_t used = width * PixelFormatSize(c.Saved) % 8;
                for (std::uint32_t y = 0; used != 0 && y < 7; ++y) {
                    raster.GetScanlineRef(y)[raster.GetRowSize() - 1] &= static_cast<std::uint8_t>(0xFF00U >> used);
                }
            }
            const auto loaded = LoadBmp(SaveBmp(raster, c.Compression));
            EXPECT_EQ(loaded->GetPixelFormat(), c.Loaded);
            EXPECT_EQ(PixelBytes(*loaded), PixelBytes(raster)) << ToWord(c.Saved) << " " << width;
            if (PixelFormatIsIndexed(c.Saved)) {
                EXPECT_EQ(*loaded->GetColorMapRef(), *raster.GetColorMapRef());
            }
        }
    }
}

TEST(BitmapFrameEncoder, APartOfARasterAndManyBlocks) {
    const BitmapData parent = MakeRaster(601, 500, PixelFormat::Format24bppRgb, NoiseBytes(601 * 3 * 500));
    EXPECT_EQ(PixelBytes(*LoadBmp(SaveBmp(parent))), PixelBytes(parent));
    BitmapData part;
    part.AttachPartially(parent, {10, 20, 110, 60});
    EXPECT_EQ(PixelBytes(*LoadBmp(SaveBmp(part))), PixelBytes(part));
}

TEST(BitmapFrameEncoder, PixelFormatChoice) {
    const BitmapMetaData metaData;
    std::vector<PixelFormat> list;
    metaData.GetSupportedPixelFormats(list);
    EXPECT_EQ(list,
              (std::vector{PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed,
                           PixelFormat::Format8bppIndexed, PixelFormat::Format8bppGrayScale,
                           PixelFormat::Format24bppRgb, PixelFormat::Format32bppRgb, PixelFormat::Format32bppArgb}));
    EXPECT_EQ(metaData.GetClosestPixelFormat(PixelFormat::Format8bppGrayScale), PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(metaData.GetClosestPixelFormat(PixelFormat::Format48bppRgb), PixelFormat::Format24bppRgb);
    EXPECT_EQ(metaData.GetClosestPixelFormat(PixelFormat::Format16bppAGrayScale), PixelFormat::Format32bppArgb);
    EXPECT_EQ(metaData.GetClosestPixelFormat(PixelFormat::FormatUnknown), PixelFormat::Format32bppArgb);
}

class BitmapFrameEncoderFiles : public testing::Test, protected TempFolder {
protected:
    const std::filesystem::path m_target = File("target.bmp");
    BitmapData m_raster = MakeRaster(3, 6, PixelFormat::Format24bppRgb, NoiseBytes(54));
};

TEST_F(BitmapFrameEncoderFiles, ASaveThatFailsLeavesTheOldFile) {
    Write(m_target, "old");
    BitmapMetaData metaData;
    metaData.AttachToWrite(m_target);
    EXPECT_THROW(SaveFrame(metaData, m_raster, FrameCompressionType::Rle), CompressionTypeException);
    metaData.Close();
    EXPECT_EQ(Read(m_target), "old");
    EXPECT_EQ(Names().size(), 1U);
    {
        BitmapMetaData unused;
        unused.AttachToWrite(m_target);
    }
    EXPECT_EQ(Read(m_target), "old");
    // A failed frame may be followed by a good one.
    metaData.AttachToWrite(m_target);
    EXPECT_THROW(SaveFrame(metaData, m_raster, FrameCompressionType::Rle), CompressionTypeException);
    SaveFrame(metaData, m_raster);
    EXPECT_EQ(Read(m_target), "old");
    EXPECT_THROW(SaveFrame(metaData, m_raster), MultiFrameException);
    metaData.Close();
    const Bytes expected = SaveBmp(m_raster);
    EXPECT_EQ(Read(m_target), std::string(expected.begin(), expected.end()));
    EXPECT_EQ(Names().size(), 1U);
    metaData.AttachToRead(m_target);
    EXPECT_TRUE(metaData.IsInReadState());
}

/// 500 pixels a line: an event for every 1000 pixels is one for two lines.
TEST(BitmapFrameEncoder, ReportsEveryThousandPixelsAndTheRest) {
    Testing::EventsProbe events;
    BitmapMetaData metaData;
    metaData.SetEvents(&events);
    metaData.AttachToWrite(std::make_shared<MemoryStream>());
    SaveFrame(metaData, BitmapData(500, 7, PixelFormat::Format24bppRgb));
    EXPECT_EQ(events.Reports(), 4);
    EXPECT_EQ(events.Steps(), 7);
}

TEST(BitmapFrameEncoder, FailuresHaveTheirClass) {
    BitmapMetaData metaData;
    const auto save = [&](const BitmapData& raster, FrameCompressionType compression = FrameCompressionType::None) {
        metaData.AttachToWrite(std::make_shared<MemoryStream>());
        SaveFrame(metaData, raster, compression);
    };
    EXPECT_THROW(save(BitmapData(1, 1, PixelFormat::Format8bppIndexed)), PaletteException);
    EXPECT_THROW(save(BitmapData(1, 1, PixelFormat::Format16bppRgb555)), UnsupportedPixelFormatException);
    EXPECT_THROW(save(BitmapData(1, 1, PixelFormat::Format24bppRgb), FrameCompressionType::Zip),
                 CompressionTypeException);
    EXPECT_THROW(save(BitmapData(1, 1, PixelFormat::Format8bppGrayScale), FrameCompressionType::Rle),
                 CompressionTypeException);
    EXPECT_THROW(save(BitmapData()), ArgumentException);
    BitmapFrameEncoder encoder;
    try {
        encoder.EncodeFrame(BitmapData(1, 1, PixelFormat::Format24bppRgb), 0, 0);
        FAIL();
    } catch (const NotInitializedException& failure) {
        EXPECT_EQ(failure.GetExceptionStringRef(), "FrameEncoder isn't attached");
    }
}

TEST(BitmapFrameEncoder, ASinkThatCannotSeekGetsEverythingAtTheEnd) {
    const BitmapData raster = MakeRaster(40, 30, PixelFormat::Format32bppRgb, NoiseBytes(4800));
    auto pSink = std::make_shared<FaultyStream>();
    pSink->Seekable = false;
    BitmapMetaData metaData;
    metaData.AttachToWrite(pSink);
    SaveFrame(metaData, raster);
    EXPECT_EQ(pSink->Writes, 0);
    metaData.Close();
    EXPECT_EQ(pSink->GetBytes(), SaveBmp(raster));
    auto pUnused = std::make_shared<FaultyStream>();
    pUnused->Seekable = false;
    metaData.AttachToWrite(pUnused);
    EXPECT_THROW(SaveFrame(metaData, raster, FrameCompressionType::Rle), CompressionTypeException);
    metaData.Close();
    EXPECT_EQ(pUnused->Writes, 0);
    // Its failure is told once.
    auto pFull = std::make_shared<FaultyStream>();
    pFull->Seekable = false;
    pFull->FailWriteAt = 100;
    metaData.AttachToWrite(pFull);
    SaveFrame(metaData, raster);
    EXPECT_THROW(metaData.Close(), StreamWriteException);
    EXPECT_NO_THROW(metaData.Close());
}

} // namespace
} // namespace ImagingFramework
