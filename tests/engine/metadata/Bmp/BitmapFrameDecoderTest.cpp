#include "metadata/Bmp/BitmapFrameDecoder.h"

#include "BmpRasters.h"
#include "EventsProbe.h"
#include "FaultyStream.h"
#include "metadata/Streams/MemoryReader.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

TEST(BitmapFrameDecoder, EveryDepthInBothOrders) {
    struct Case {
        std::uint16_t BitCount;
        PixelFormat Format;
        Bytes FirstLine; ///< of the file, with padding
        Bytes SecondLine;
        std::size_t RowSize;
    };
    const Case cases[] = {
        {1, PixelFormat::Format1bppIndexed, {0xA0, 0, 0, 0}, {0x40, 0, 0, 0}, 1},
        {4, PixelFormat::Format4bppIndexed, {0x12, 0x30, 0, 0}, {0x45, 0x60, 0, 0}, 2},
        {8, PixelFormat::Format8bppIndexed, {1, 2, 3, 0}, {4, 5, 6, 0}, 3},
        {16, PixelFormat::Format16bppRgb555, {1, 2, 3, 4, 5, 6, 0, 0}, {7, 8, 9, 10, 11, 12, 0, 0}, 6},
        {24,
         PixelFormat::Format24bppRgb,
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0},
         {11, 12, 13, 14, 15, 16, 17, 18, 19, 0, 0, 0},
         9},
        {32,
         PixelFormat::Format32bppRgb,
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
         {21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32},
         12},
    };
    for (const Case& c : cases) {
        BmpBuilder file{.Width = 3, .Height = 2, .BitCount = c.BitCount};
        if (c.BitCount < 9) {
            file.Palette = MakePalette(1U << c.BitCount);
        }
        file.Pixels = c.FirstLine;
        file.Pixels.insert(file.Pixels.end(), c.SecondLine.begin(), c.SecondLine.end());
        Bytes bottomUp(c.SecondLine.begin(), c.SecondLine.begin() + static_cast<std::ptrdiff_t>(c.RowSize));
        Bytes topDown(c.FirstLine.begin(), c.FirstLine.begin() + static_cast<std::ptrdiff_t>(c.RowSize));
        bottomUp.insert(bottomUp.end(), topDown.begin(), topDown.end());
        topDown.insert(topDown.end(), bottomUp.begin(), bottomUp.begin() + static_cast<std::ptrdiff_t>(c.RowSize));

        const auto up = LoadBmp(file.Build());
        EXPECT_EQ(up->GetPixelFormat(), c.Format);
        EXPECT_EQ(PixelBytes(*up), bottomUp) << c.BitCount;
        EXPECT_EQ(up->GetColorMapRef() != nullptr, c.BitCount < 9);
        file.Height = -2;
        EXPECT_EQ(PixelBytes(*LoadBmp(file.Build())), topDown) << c.BitCount;
    }
}

/// Larger than the blocks in which rows are read, with rows that end on the padding and such that do not.
TEST(BitmapFrameDecoder, ManyBlocks) {
    for (const std::uint32_t width : {400U, 401U}) {
        const std::uint32_t height = 700;
        const std::size_t rowSize = width * 3;
        const std::size_t stride = (rowSize + 3) / 4 * 4;
        BmpBuilder file{.Width = static_cast<std::int32_t>(width), .Height = static_cast<std::int32_t>(height)};
        file.Pixels = NoiseBytes(stride * height);
        const auto row = [&](std::size_t line) {
            const auto begin = file.Pixels.begin() + static_cast<std::ptrdiff_t>(line * stride);
            return Bytes(begin, begin + static_cast<std::ptrdiff_t>(rowSize));
        };
        const auto expectRows = [&](const BitmapData& raster, bool bottomUp) {
            for (std::uint32_t y = 0; y < height; ++y) {
                const Bytes actual(raster.GetScanlineRef(y), raster.GetScanlineRef(y) + rowSize);
                ASSERT_EQ(actual, row(bottomUp ? height - 1 - y : y)) << y;
            }
        };
        expectRows(*LoadBmp(file.Build()), true);
        file.Height = -file.Height;
        expectRows(*LoadBmp(file.Build()), false);
    }
}

TEST(BitmapFrameDecoder, PaletteEntriesByHeader) {
    // Two entries, as 4 or as 3 bytes: blue, green, red of the second one tell the reading.
    const Bytes four = {1, 2, 3, 0, 4, 5, 6, 0};
    const Bytes three = {1, 2, 3, 4, 5, 6};
    struct Case {
        std::uint32_t HeaderSize;
        Bytes Palette;
        PixelFormat MapFormat;
    };
    const Case cases[] = {
        {12, three, PixelFormat::Format24bppRgb},  {40, four, PixelFormat::Format32bppArgb},
        {64, four, PixelFormat::Format32bppArgb},  {64, three, PixelFormat::Format24bppRgb},
        {124, four, PixelFormat::Format32bppArgb}, {124, three, PixelFormat::Format24bppRgb},
    };
    for (const Case& c : cases) {
        BmpBuilder file{.HeaderSize = c.HeaderSize, .BitCount = 1, .Palette = c.Palette, .Pixels = {0x80, 0, 0, 0}};
        const auto raster = LoadBmp(file.Build());
        const ColorMap& map = *raster->GetColorMapRef();
        EXPECT_EQ(map.GetPixelFormat(), c.MapFormat) << c.HeaderSize;
        std::uint8_t entry[4];
        map.GetEntryArgb(1, entry);
        EXPECT_EQ(Bytes(entry, entry + 4), (Bytes{4, 5, 6, 255})) << c.HeaderSize;
    }
}

TEST(BitmapFrameDecoder, SixteenBitVariants) {
    Bytes masks565;
    for (const std::uint32_t mask : {0xF800U, 0x7E0U, 0x1FU}) {
        BmpBuilder::Put(masks565, mask, 4);
    }
    Bytes masks555;
    for (const std::uint32_t mask : {0x7C00U, 0x3E0U, 0x1FU}) {
        BmpBuilder::Put(masks555, mask, 4);
    }
    const auto format = [](BmpBuilder file) {
        file.BitCount = 16;
        file.Pixels = {0, 0, 0, 0};
        return LoadBmp(file.Build())->GetPixelFormat();
    };
    EXPECT_EQ(format({}), PixelFormat::Format16bppRgb555);
    EXPECT_EQ(format({.Compression = 3, .Palette = masks565}), PixelFormat::Format16bppRgb565);
    EXPECT_EQ(format({.Compression = 3, .Palette = masks555}), PixelFormat::Format16bppRgb555);
    EXPECT_EQ(format({.HeaderSize = 124, .Compression = 3, .HeaderRest = masks565}), PixelFormat::Format16bppRgb565);
    EXPECT_EQ(format({.HeaderSize = 108, .Compression = 3, .HeaderRest = masks555}), PixelFormat::Format16bppRgb555);
    EXPECT_EQ(format({.HeaderSize = 56, .Compression = 3, .HeaderRest = masks565}), PixelFormat::Format16bppArgb1555);
    EXPECT_EQ(format({.HeaderSize = 56}), PixelFormat::Format16bppRgb555);
}

TEST(BitmapFrameDecoder, ArraysAndOtherMagics) {
    const BmpBuilder image{.Pixels = {7, 8, 9, 0}};
    for (const char* magic : {"BM", "IC", "CP", "CI"}) {
        BmpBuilder file = image;
        file.Magic = magic;
        for (const int arrayEntries : {0, 1, 2}) {
            Bytes bytes;
            for (int i = 0; i < arrayEntries; ++i) {
                bytes.insert(bytes.end(), {'B', 'A', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
            }
            file.PixelOffset = static_cast<std::int64_t>(bytes.size()) + 54;
            const Bytes rest = file.Build();
            bytes.insert(bytes.end(), rest.begin(), rest.end());
            BitmapFrameDecoder decoder;
            decoder.Attach(ObjPtr<AbstractReader>(new MemoryReader(bytes.data(), bytes.size())));
            BitmapData raster;
            BitmapData* pRaster = &raster;
            decoder.DecodeFrame(pRaster, 0);
            EXPECT_EQ(pRaster, &raster);
            EXPECT_EQ(PixelBytes(raster), (Bytes{7, 8, 9})) << magic << arrayEntries;
        }
    }
    BmpBuilder wrong = image;
    wrong.Magic = "PT";
    const Bytes bytes = wrong.Build();
    BitmapFrameDecoder decoder;
    EXPECT_THROW(decoder.Attach(ObjPtr<AbstractReader>(new MemoryReader(bytes.data(), bytes.size()))),
                 MediaCorruptedException);
    EXPECT_THROW(decoder.GetResolutionX(), NotInitializedException);
}

TEST(BitmapFrameDecoder, TheHorizontalFieldDecidesOverBothResolutions) {
    struct Case {
        std::uint32_t PpmX, PpmY;
        double X, Y;
    };
    for (const Case& c :
         {Case{0, 0, 72, 72}, Case{0, 3780, 72, 72}, Case{10000, 0, 254, 0}, Case{10000, 5000, 254, 127}}) {
        BitmapMetaData metaData;
        const BmpBuilder file{.PpmX = c.PpmX, .PpmY = c.PpmY, .Pixels = {0, 0, 0, 0}};
        const auto raster = LoadFrame(metaData, std::make_shared<MemoryStream>(file.Build()));
        ItemTag x(MetaDataId::HorizontalResolution);
        ItemTag y(MetaDataId::VerticalResolution);
        EXPECT_TRUE(metaData.GetItem(x));
        EXPECT_TRUE(metaData.GetItem(y));
        EXPECT_DOUBLE_EQ(static_cast<double>(x), c.X);
        EXPECT_DOUBLE_EQ(static_cast<double>(y), c.Y);
        EXPECT_DOUBLE_EQ(raster->GetVerticalResolution(), c.Y == 0 ? 72 : c.Y) << "a raster takes no resolution of 0";
        x.SetResolutionUnit(LinearUnit::Cm);
        metaData.GetItem(x);
        EXPECT_DOUBLE_EQ(static_cast<double>(x), c.X / 2.54);
    }
}

struct RleCase {
    const char* Name;
    std::uint16_t BitCount;
    Bytes Codes;
    Bytes Expected; ///< rows from the top of the top-down file
};

/// Frames of 6 by 3.
const RleCase RleCases[] = {
    {"runs and absolute blocks of odd and even length",
     8,
     {2, 5, 0, 4, 1, 2, 3, 4, 0, 0, 0, 3, 7, 8, 9, 0, 3, 6, 0, 0, 6, 1, 0, 0, 0, 1},
     {5, 5, 1, 2, 3, 4, 7, 8, 9, 6, 6, 6, 1, 1, 1, 1, 1, 1}},
    {"what does not fit is cut, and the data goes on behind it",
     8,
     {4, 1, 0, 5, 2, 3, 4, 5, 6, 0, 9, 9, 0, 0, 200, 2, 0, 0, 1, 3, 0, 0},
     {1, 1, 1, 1, 2, 3, 2, 2, 2, 2, 2, 2, 3, 0, 0, 0, 0, 0}},
    {"the end code leaves the rest empty", 8, {2, 4, 0, 1}, {4, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"a delta to the right is cut at the end of the line; back is allowed on the line",
     8,
     {0, 2, 2, 0, 1, 9, 0, 2, 0xFE, 0, 1, 8, 0, 0, 0, 2, 100, 0, 1, 7, 0, 0, 1, 5, 0, 1},
     {0, 8, 9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 0}},
    {"a delta downwards skips one line more than it says and sets the column",
     8,
     {3, 1, 0, 2, 2, 1, 2, 6, 0, 1},
     {1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 6, 6, 0, 0}},
    {"a delta upwards only ends the line",
     8,
     {3, 1, 0, 2, 1, 0xFF, 2, 6, 0, 0, 1, 2, 0, 0},
     {1, 1, 1, 0, 0, 0, 0, 6, 6, 0, 0, 0, 2, 0, 0, 0, 0, 0}},
    {"a delta beyond the last line", 8, {3, 1, 0, 2, 0, 100}, {1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"nibbles alternate from any column",
     4,
     {3, 0x12, 3, 0x34, 0, 0, 1, 0x50, 0, 5, 0x12, 0x34, 0x50, 0, 0, 0, 0, 3, 0x98, 0x70, 1, 0x60, 0, 1},
     {0x12, 0x13, 0x43, 0x51, 0x23, 0x45, 0x98, 0x76, 0x00}},
    {"nibbles are cut at the end of the line",
     4,
     {5, 0x77, 9, 0x12, 0, 0, 5, 0x77, 0, 4, 0x34, 0x56, 0, 0, 0, 2, 5, 0, 3, 0x9A, 0, 0},
     {0x77, 0x77, 0x71, 0x77, 0x77, 0x73, 0x00, 0x00, 0x09}},
};

TEST(BitmapFrameDecoder, RunLengthCodes) {
    for (const RleCase& c : RleCases) {
        BmpBuilder file{.Width = 6, .Height = -3, .BitCount = c.BitCount};
        file.Compression = c.BitCount == 8 ? 1 : 2;
        file.Palette = MakePalette(1U << c.BitCount);
        file.Pixels = c.Codes;
        EXPECT_EQ(PixelBytes(*LoadBmp(file.Build())), c.Expected) << c.Name;
        // The same bottom-up: the rows in reverse.
        file.Height = 3;
        const std::size_t size = c.Expected.size() / 3;
        Bytes reversed;
        for (std::size_t row = 3; row-- > 0;) {
            reversed.insert(reversed.end(), c.Expected.begin() + static_cast<std::ptrdiff_t>(row * size),
                            c.Expected.begin() + static_cast<std::ptrdiff_t>((row + 1) * size));
        }
        EXPECT_EQ(PixelBytes(*LoadBmp(file.Build())), reversed) << c.Name;
    }
}

TEST(BitmapFrameDecoder, IndicesBeyondThePaletteBecomeZero) {
    struct Case {
        std::uint16_t BitCount;
        std::uint32_t Compression;
        std::uint32_t ColoursUsed;
        Bytes Pixels;
        Bytes Expected;
    };
    const Case cases[] = {
        {1, 0, 1, {0xFF, 0, 0, 0}, {0x00}},
        {4, 0, 3, {0x23, 0x42, 0, 0}, {0x20, 0x02}},
        {8, 0, 200, {199, 200, 255, 3}, {199, 0, 0, 3}},
        {8, 1, 5, {2, 4, 2, 5, 0, 1}, {4, 4, 0, 0}},
        {4, 2, 8, {4, 0x78, 0, 1}, {0x70, 0x70}},
        {4, 0, 70000, {0xEF, 0x12, 0, 0}, {0xEF, 0x12}}, // cut to 16 entries
    };
    for (const Case& c : cases) {
        BmpBuilder file{.Width = c.BitCount == 1 ? 8 : 4, .BitCount = c.BitCount};
        file.Compression = c.Compression;
        file.ColoursUsed = c.ColoursUsed;
        file.Palette = MakePalette(std::min(c.ColoursUsed, 1U << c.BitCount));
        file.Pixels = c.Pixels;
        const auto raster = LoadBmp(file.Build());
        EXPECT_EQ(PixelBytes(*raster), c.Expected) << c.BitCount;
        EXPECT_EQ(raster->GetColorMapRef()->GetEntryCount(), std::min(c.ColoursUsed, 1U << c.BitCount));
    }
}

TEST(BitmapFrameDecoder, DamageHasItsClass) {
    const BmpBuilder good{.Width = 2, .Height = 2, .Pixels = Bytes(16)};
    const auto with = [&](auto change) {
        BmpBuilder file = good;
        change(file);
        return file.Build();
    };
    const auto rle8 = [](std::int32_t width, std::int32_t height, const Bytes& codes) {
        BmpBuilder file{.Width = width, .Height = height, .BitCount = 8, .Compression = 1};
        file.Palette = MakePalette(256);
        file.Pixels = codes;
        return file.Build();
    };
    EXPECT_THROW(LoadBmp(with([](BmpBuilder& f) { f.BitCount = 2; })), UnsupportedPixelFormatException);
    EXPECT_THROW(LoadBmp(with([](BmpBuilder& f) { f.BitCount = 0; })), UnsupportedPixelFormatException);
    const Bytes corrupted[] = {
        with([](BmpBuilder& f) { f.Width = 0; }),
        with([](BmpBuilder& f) { f.Width = -2; }),
        with([](BmpBuilder& f) { f.Height = 0; }),
        with([](BmpBuilder& f) { f.Height = INT32_MIN; }),
        with([](BmpBuilder& f) { f.Width = f.Height = INT32_MAX; }),
        with([](BmpBuilder& f) { f.HeaderSize = 11; }),
        with([](BmpBuilder& f) { f.HeaderSize = 0; }),
        rle8(6, 1, {0, 2, 0xFF, 0, 0, 1}),       // before the line
        rle8(6, 3, {0, 2, 0xFF, 1, 0, 0, 0, 1}), // before the line that a delta leads to
        rle8(30000, 30000, {0, 1}),              // 900 million pixels from an end code
        rle8(6000, 6000, {0, 1}),                // 36 million
        rle8(5, 200000, {0, 1}),                 // a million, in rows that count for 256 each
    };
    for (const Bytes& file : corrupted) {
        EXPECT_THROW(LoadBmp(file), MediaCorruptedException) << &file - corrupted;
    }
    Bytes headerPastEnd = good.Build();
    headerPastEnd[14] = 100;
    EXPECT_THROW(LoadBmp(headerPastEnd), MediaCorruptedException);
    EXPECT_THROW(LoadBmp(with([](BmpBuilder& f) { f.PixelOffset = 1000; })), OutOfRangeException);
    EXPECT_THROW(LoadBmp({'G', 'I', 'F', '8'}), MediaUnsupportedException);
}

std::vector<Bytes> SmallFiles() {
    return {
        BmpBuilder{.Width = 3, .Height = 2, .Pixels = Bytes(24, 1)}.Build(),
        BmpBuilder{.HeaderSize = 12, .Width = 3, .Height = 2, .BitCount = 1, .Palette = Bytes(6), .Pixels = Bytes(8)}
            .Build(),
        BmpBuilder{.HeaderSize = 108, .Width = 3, .Height = -2, .BitCount = 16, .Compression = 3, .Pixels = Bytes(16)}
            .Build(),
        BmpBuilder{.Width = 3,
                   .Height = 2,
                   .BitCount = 4,
                   .Compression = 2,
                   .ColoursUsed = 3,
                   .Palette = MakePalette(3),
                   .Pixels = {3, 0x11, 0, 0, 0, 3, 0x12, 0x10, 0, 0}}
            .Build(),
    };
}

TEST(BitmapFrameDecoder, ATruncatedFileFailsAtEveryLengthWithADocumentedClass) {
    for (const Bytes& file : SmallFiles()) {
        EXPECT_NO_THROW(LoadBmp(file));
        for (std::size_t length = 0; length < file.size(); ++length) {
            try {
                LoadBmp(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
                FAIL() << length;
            } catch (const MediaUnsupportedException&) {
                EXPECT_LT(length, 2U);
            } catch (const MediaCorruptedException&) {
            } catch (const OutOfRangeException&) {
            }
        }
    }
}

TEST(BitmapFrameDecoder, ASourceThatTellsALargerSizeThanItHas) {
    auto pLying = std::make_shared<FaultyStream>(BmpBuilder{.Width = 3, .Height = 2, .Pixels = Bytes(10)}.Build());
    pLying->Stats = FaultyStream::StatMode::Lying;
    pLying->LyingSize = 1000000;
    BitmapMetaData metaData;
    EXPECT_THROW(LoadFrame(metaData, pLying), UnexpectedException);
}

TEST(BitmapFrameDecoder, ReportsEachRowAndStaysUsableAfterAFailure) {
    for (const Bytes& file : SmallFiles()) {
        Testing::EventsProbe abort(1);
        Testing::EventsProbe all;
        BitmapMetaData metaData;
        metaData.SetEvents(&abort);
        EXPECT_THROW(LoadFrame(metaData, std::make_shared<MemoryStream>(file)), AbortedException);
        metaData.SetEvents(&all);
        EXPECT_EQ(PixelBytes(*LoadFrame(metaData, std::make_shared<MemoryStream>(file))), PixelBytes(*LoadBmp(file)));
        EXPECT_EQ(all.Steps(), 2);
    }
}

} // namespace
} // namespace ImagingFramework
