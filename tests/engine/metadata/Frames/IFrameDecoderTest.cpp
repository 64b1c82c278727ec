#include "metadata/Frames/IFrameDecoder.h"

#include "BmpRasters.h"
#include "metadata/Streams/MemoryStream.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

TEST(IFrameDecoder, ThumbnailDimensions) {
    struct Case {
        std::uint32_t SourceWidth, SourceHeight, BoxWidth, BoxHeight, Width, Height;
    };
    const Case cases[] = {
        {400, 300, 100, 100, 100, 75},  // by the width
        {300, 400, 100, 100, 75, 100},  // by the height
        {400, 300, 200, 100, 133, 100}, // 150 is too high for the box: 133.3 wide
        {400, 300, 400, 300, 400, 300}, // fits
        {40, 30, 100, 100, 40, 30},     // never enlarged
        {400, 300, 100, 0, 100, 75},    // one side is free
        {400, 300, 0, 100, 133, 100},   //
        {400, 301, 200, 0, 200, 151},   // 150.5 rounds up
        {400, 300, 400, 0, 400, 300},   // not smaller than the source
        {40, 30, 0, 100, 40, 30},       //
        {10000, 1, 100, 100, 100, 1},   // a side never vanishes
        {1, 10000, 0, 10, 1, 10},       //
        {4294967295U, 1, 4294967294U, 0, 4294967294U, 1},
    };
    for (const Case& c : cases) {
        std::uint32_t width = c.BoxWidth;
        std::uint32_t height = c.BoxHeight;
        IFrameDecoderImpl::CalculateThumbnailDimensions(c.SourceWidth, c.SourceHeight, width, height);
        EXPECT_EQ(width, c.Width) << c.SourceWidth << " " << c.SourceHeight << " " << c.BoxWidth << " " << c.BoxHeight;
        EXPECT_EQ(height, c.Height);
    }
    std::uint32_t zero = 0;
    std::uint32_t one = 1;
    EXPECT_THROW(IFrameDecoderImpl::CalculateThumbnailDimensions(0, 5, one, one), ArgumentOutOfRangeException);
    EXPECT_THROW(IFrameDecoderImpl::CalculateThumbnailDimensions(5, 0, one, one), ArgumentOutOfRangeException);
    EXPECT_THROW(IFrameDecoderImpl::CalculateThumbnailDimensions(5, 5, zero, zero), ArgumentOutOfRangeException);
}

/// Writes down what it gets.
class Recorder : public IScanLineConsumerImpl {
public:
    void Initialize(std::shared_ptr<const FilterData> pData) override {
        IScanLineConsumerImpl::Initialize(std::move(pData));
        ++Initializations;
    }
    void SetScanline(const std::uint8_t* pScanline, std::uint32_t row) override {
        EXPECT_EQ(row, Rows.size()) << "rows come from the top";
        const std::size_t size =
            (std::size_t{m_pSourceImageMetaData->Width} * PixelFormatSize(m_pSourceImageMetaData->Format) + 7) / 8;
        Rows.emplace_back(pScanline, pScanline + size);
    }
    const FilterData& Data() const { return *m_pSourceImageMetaData; }

    int Initializations = 0;
    std::vector<Bytes> Rows;
};

std::unique_ptr<BitmapFrameDecoder> Open(Bytes file) {
    auto pDecoder = std::make_unique<BitmapFrameDecoder>();
    pDecoder->Attach(std::make_shared<MemoryStream>(std::move(file)));
    return pDecoder;
}

TEST(IFrameDecoder, ProducesLinesForConsumersFromTheTop) {
    // The same frame raw and packed, bottom line first: rows {3, 4}, {1, 2}.
    BmpBuilder file{.Width = 2, .Height = 2, .BitCount = 8, .PpmX = 10000, .PpmY = 5000};
    file.Palette = MakePalette(256);
    file.Pixels = {1, 2, 0, 0, 3, 4, 0, 0};
    const Bytes raw = file.Build();
    file.Compression = 1;
    file.Pixels = {1, 1, 1, 2, 0, 0, 1, 3, 1, 4, 0, 1};
    const Bytes packed = file.Build();
    for (const Bytes& bytes : {raw, packed}) {
        const auto pDecoder = Open(bytes);
        const auto pFirst = std::make_shared<Recorder>();
        const auto pSecond = std::make_shared<Recorder>();
        pDecoder->AddConsumer(pFirst);
        pDecoder->AddConsumer(pSecond);
        pDecoder->Start(nullptr);
        for (const auto& pRecorder : {pFirst, pSecond}) {
            EXPECT_EQ(pRecorder->Initializations, 1);
            EXPECT_EQ(pRecorder->Rows, (std::vector<Bytes>{{3, 4}, {1, 2}}));
            EXPECT_EQ(pRecorder->Data().Width, 2U);
            EXPECT_EQ(pRecorder->Data().Format, PixelFormat::Format8bppIndexed);
            EXPECT_DOUBLE_EQ(pRecorder->Data().HorizontalResolution, 254.0);
            EXPECT_DOUBLE_EQ(pRecorder->Data().VerticalResolution, 127.0);
            ASSERT_NE(pRecorder->Data().Palette, nullptr);
            EXPECT_EQ(pRecorder->Data().Palette->GetEntryCount(), 256U);
            pRecorder->Rows.clear();
        }
        // Plain decoding goes on to work, and consumers stay until they are removed.
        pDecoder->RemoveConsumer(pSecond);
        BitmapData raster;
        BitmapData* pRaster = &raster;
        pDecoder->DecodeFrame(pRaster, 0);
        EXPECT_EQ(PixelBytes(raster), (Bytes{3, 4, 1, 2}));
        const std::uint32_t index = 0;
        pDecoder->Start(&index);
        EXPECT_EQ(pFirst->Rows.size(), 2U);
        EXPECT_TRUE(pSecond->Rows.empty());
        const std::uint32_t beyond = 1;
        EXPECT_THROW(pDecoder->Start(&beyond), ArgumentOutOfRangeException);
    }
    EXPECT_THROW(Recorder().Initialize(nullptr), ArgumentNullPointerException);
}

TEST(IFrameDecoder, AGivenRasterIsFilledAndStaysTheCallers) {
    const auto pDecoder = Open(BmpBuilder{.Pixels = {1, 2, 3, 0}}.Build());
    BitmapData raster(50, 50, PixelFormat::Format64bppArgb);
    BitmapData* pRaster = &raster;
    pDecoder->DecodeFrame(pRaster, 0);
    EXPECT_EQ(pRaster, &raster);
    EXPECT_EQ(raster.GetWidth(), 1U);
    EXPECT_EQ(raster.GetPixelFormat(), PixelFormat::Format24bppRgb);
    const auto pTruncated = Open(BmpBuilder{.Pixels = {1, 2, 3}}.Build());
    EXPECT_THROW(pTruncated->DecodeFrame(pRaster, 0), OutOfRangeException);
    EXPECT_EQ(pRaster, &raster);
    BitmapData* pNone = nullptr;
    EXPECT_THROW(pTruncated->DecodeFrame(pNone, 0), OutOfRangeException);
    EXPECT_EQ(pNone, nullptr);
    EXPECT_THROW(pDecoder->DecodeFrame(pNone, 1), ArgumentOutOfRangeException);
    EXPECT_THROW(pDecoder->DecodeFrameToThumbnail(0, 0, pNone, 0), ArgumentException);
}

} // namespace
} // namespace ImagingFramework
