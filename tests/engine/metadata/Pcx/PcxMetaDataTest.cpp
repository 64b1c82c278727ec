#include "metadata/Pcx/PcxMetaData.h"

#include "EventsProbe.h"
#include "FrameFiles.h"
#include "PcxBuilder.h"
#include "metadata/Streams/MemoryReader.h"

#include <gtest/gtest.h>
#include <numeric>

namespace ImagingFramework {
namespace {

std::unique_ptr<BitmapData> Load(const PcxBuilder& file) {
    PcxMetaData metaData;
    return LoadFrame(file.Build(), metaData);
}

/// 1 to 48.
Bytes HeaderPalette() {
    Bytes palette(48);
    std::iota(palette.begin(), palette.end(), std::uint8_t{1});
    return palette;
}

struct PlanesCase {
    std::uint8_t Planes;
    std::uint8_t Bits;
    std::uint16_t Width;
    Bytes Line; ///< of all planes
    PixelFormat Format;
    std::uint32_t EntryCount;
    Bytes Expected;
};

TEST(PcxMetaData, PlanesAndBits) {
    const PlanesCase cases[] = {
        {1, 1, 10, {0xA5, 0x40}, PixelFormat::Format1bppIndexed, 2, {0xA5, 0x40}},
        // 0 1 2 3 2
        {1, 2, 5, {0x1B, 0x80}, PixelFormat::Format4bppIndexed, 4, {0x01, 0x23, 0x20}},
        {1, 4, 3, {0xF1, 0x70}, PixelFormat::Format4bppIndexed, 16, {0xF1, 0x70}},
        {1, 8, 2, {0x3F, 0xFE}, PixelFormat::Format8bppIndexed, 256, {0x3F, 0xFE}},
        {2, 1, 3, {0xA0, 0x60}, PixelFormat::Format8bppIndexed, 4, {1, 2, 3}},
        {3, 1, 3, {0xA0, 0x60, 0x80}, PixelFormat::Format8bppIndexed, 8, {5, 2, 3}},
        {4,
         1,
         9,
         {0x80, 0, 0x40, 0, 0x20, 0, 0x10, 0x80},
         PixelFormat::Format8bppIndexed,
         16,
         {1, 2, 4, 8, 0, 0, 0, 0, 8}},
        {3, 8, 2, {1, 2, 3, 4, 5, 6}, PixelFormat::Format24bppRgb, 0, {5, 3, 1, 6, 4, 2}},
    };
    for (const PlanesCase& one : cases) {
        SCOPED_TRACE(testing::Message() << int{one.Planes} << " planes of " << int{one.Bits});
        PcxBuilder file{.Bits = one.Bits, .Planes = one.Planes, .Width = one.Width, .Palette = HeaderPalette()};
        file.BytesPerLine = static_cast<std::uint16_t>(one.Line.size() / one.Planes);
        file.Data = PcxBuilder::Pack(one.Line);
        if (one.EntryCount == 256) {
            file.Tail = PcxBuilder::FilePalette();
        }
        const auto raster = Load(file);
        ASSERT_EQ(raster->GetPixelFormat(), one.Format);
        EXPECT_EQ(Row(*raster, 0), one.Expected);
        if (one.EntryCount == 0) {
            EXPECT_EQ(raster->GetColorMapRef(), nullptr);
            continue;
        }
        ASSERT_EQ(raster->GetColorMapRef()->GetEntryCount(), one.EntryCount);
        EXPECT_EQ(Entry(*raster, 1), one.EntryCount == 256 ? (Bytes{84, 254, 1, 255}) : (Bytes{6, 5, 4, 255}));
        if (one.EntryCount == 16) {
            EXPECT_EQ(Entry(*raster, 15), (Bytes{48, 47, 46, 255}));
        }
    }
}

TEST(PcxMetaData, PaddedLinesAndRunsAcrossThem) {
    // Two lines of three planes; a run of nothing, one over all but two bytes, and single bytes above 0xC0.
    PcxBuilder file{.Planes = 3, .Width = 2, .Height = 2, .Left = 100, .Top = 7, .BytesPerLine = 3};
    file.Data = {0xC0, 99, 0xD0, 7, 0xC1, 0xFF, 9};
    const auto raster = Load(file);
    ASSERT_EQ(raster->GetWidth(), 2U);
    ASSERT_EQ(raster->GetHeight(), 2U);
    EXPECT_EQ(Row(*raster, 0), (Bytes{7, 7, 7, 7, 7, 7}));
    EXPECT_EQ(Row(*raster, 1), (Bytes{7, 7, 7, 0xFF, 7, 7}));

    file.Data = {0xD0, 7, 0xC3, 9};
    EXPECT_THROW(Load(file), UnexpectedException) << "a run beyond the frame";
    for (const Bytes& data : {Bytes{0xD0, 7, 8}, Bytes{0xD0, 7, 8, 0xC1}, Bytes{}}) {
        file.Data = data;
        EXPECT_THROW(Load(file), MediaCorruptedException) << data.size();
    }
    file.Data = {0xD0, 7, 8, 9, 0xFF, 0xFF, 0xFF};
    EXPECT_NO_THROW(Load(file)) << "what stands behind the frame is nobody's";
}

TEST(PcxMetaData, FilePaletteStandsBehindThePixels) {
    PcxBuilder file{.Data = {3}, .Tail = PcxBuilder::FilePalette()};
    EXPECT_NO_THROW(Load(file));
    PcxFrameDecoder decoder;
    const Bytes bytes = file.Build();
    decoder.Attach(ObjPtr<AbstractReader>(new MemoryReader(bytes.data(), bytes.size())));
    Bytes entry(3);
    decoder.GetColorMap()->GetEntryRgb(2, entry.data()); // no frame has been decoded
    EXPECT_EQ(entry, (Bytes{87, 253, 2}));

    file.Tail.insert(file.Tail.begin(), 0);
    EXPECT_THROW(Load(file), MediaCorruptedException) << "the mark one byte late";
    file.Tail = PcxBuilder::FilePalette();
    file.Tail[0] = 0x0D;
    EXPECT_THROW(Load(file), MediaCorruptedException);
    file.Tail = PcxBuilder::FilePalette();
    file.Tail.pop_back();
    EXPECT_THROW(Load(file), MediaCorruptedException);
}

TEST(PcxMetaData, BadHeaders) {
    const PcxBuilder good{
        .Width = 4, .Height = 2, .BytesPerLine = 4, .Data = {0xC8, 1}, .Tail = PcxBuilder::FilePalette()};
    EXPECT_NO_THROW(Load(good));
    const auto with = [&](auto change) {
        PcxBuilder file = good;
        change(file);
        return file;
    };
    const auto isCorrupted = [](const PcxBuilder& file) { EXPECT_THROW(Load(file), MediaCorruptedException); };
    isCorrupted(with([](PcxBuilder& file) { file.Bits = 0; }));
    isCorrupted(with([](PcxBuilder& file) { file.Bits = 24; }));
    isCorrupted(with([](PcxBuilder& file) { file.Planes = 0; }));
    isCorrupted(with([](PcxBuilder& file) { file.Planes = 5; }));
    isCorrupted(with([](PcxBuilder& file) { file.BytesPerLine = 3; }));
    isCorrupted(with([](PcxBuilder& file) { file.Left = 5, file.Width = 0; }));
    isCorrupted(with([](PcxBuilder& file) { file.Top = 5, file.Height = 0; }));
    for (const auto& [planes, bits] :
         {std::pair(1, 3), std::pair(1, 7), std::pair(2, 8), std::pair(4, 8), std::pair(3, 2)}) {
        EXPECT_THROW(Load(with([&](PcxBuilder& file) {
                         file.Planes = static_cast<std::uint8_t>(planes);
                         file.Bits = static_cast<std::uint8_t>(bits);
                     })),
                     UnsupportedPixelFormatException)
            << planes << " planes of " << bits;
    }
    // The probe sees these first.
    EXPECT_THROW(Load(with([](PcxBuilder& file) { file.Encoding = 0; })), MediaUnsupportedException);
    EXPECT_THROW(Load(with([](PcxBuilder& file) { file.Manufacturer = 11; })), MediaUnsupportedException);
    PcxFrameDecoder decoder;
    for (Bytes file : {with([](PcxBuilder& one) { one.Encoding = 0; }).Build(), Bytes(127, 10)}) {
        EXPECT_THROW(decoder.Attach(ObjPtr<AbstractReader>(new MemoryReader(file.data(), file.size()))),
                     MediaCorruptedException);
    }
}

TEST(PcxMetaData, TheFrameMustBeInTheFile) {
    // 64 KiB and 32 bytes for each byte behind the header.
    PcxBuilder file{.Bits = 1, .Width = 8, .Height = 65535, .BytesPerLine = 1};
    EXPECT_THROW(Load(file), MediaCorruptedException) << "as runs of nothing it might be, but ends too early";
    file.BytesPerLine = 2;
    PcxMetaData metaData;
    file.Data = Bytes(65534 / 32);
    EXPECT_THROW(metaData.AttachToRead(std::make_shared<MemoryStream>(file.Build())), MediaCorruptedException);
    file.Data.push_back(0);
    EXPECT_NO_THROW(metaData.AttachToRead(std::make_shared<MemoryStream>(file.Build())));
    const PcxBuilder huge{.Width = 65535, .Height = 65535, .BytesPerLine = 65535, .Data = Bytes(1000)};
    EXPECT_THROW(metaData.AttachToRead(std::make_shared<MemoryStream>(huge.Build())), MediaCorruptedException);
}

TEST(PcxMetaData, Items) {
    PcxBuilder file{.Planes = 3, .Width = 300, .Height = 50, .DpiX = 300, .DpiY = 0, .BytesPerLine = 300};
    file.Data = PcxBuilder::Pack(Bytes(300 * 3 * 50, 200));
    PcxMetaData metaData;
    Testing::EventsProbe probe;
    const std::int32_t before = probe.Announced();
    metaData.SetEvents(&probe);
    const auto raster = LoadFrame(file.Build(), metaData);
    EXPECT_EQ(probe.Announced() - before, 50);
    EXPECT_EQ(probe.Steps(), 50);
    EXPECT_EQ(raster->GetHorizontalResolution(), 300);
    EXPECT_EQ(raster->GetVerticalResolution(), 72);
    ItemTag tag(MetaDataId::FrameCompression);
    ASSERT_TRUE(metaData.GetItem(tag));
    EXPECT_EQ(static_cast<FrameCompressionType>(tag), FrameCompressionType::Rle);
    tag.SetMetaDataId(MetaDataId::FrameCount);
    ASSERT_TRUE(metaData.GetItem(tag));
    EXPECT_EQ(static_cast<std::uint32_t>(tag), 1U);
    tag.SetMetaDataId(MetaDataId::ColorProfile);
    EXPECT_FALSE(metaData.GetItem(tag));
    EXPECT_FALSE(metaData.IsPixelFormatSupported(PixelFormat::Format24bppRgb));
    EXPECT_THROW(metaData.GetClosestPixelFormat(PixelFormat::Format24bppRgb), MetaDataWritingNotAllowedException);
    EXPECT_THROW(metaData.AttachToWrite(std::make_shared<MemoryStream>()), MetaDataWritingNotAllowedException);
    EXPECT_FALSE(metaData.IsInWriteState());
}

} // namespace
} // namespace ImagingFramework
