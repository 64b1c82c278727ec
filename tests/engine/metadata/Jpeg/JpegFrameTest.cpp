#include "ErrorHandling/Exceptions.h"
#include "EventsProbe.h"
#include "FaultyStream.h"
#include "metadata/Frames/FilterData.h"
#include "metadata/Jpeg/JpegFrameDecoder.h"
#include "metadata/Jpeg/JpegFrameEncoder.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Encode(const BitmapData& raster) {
    const auto stream = std::make_shared<MemoryStream>();
    JpegFrameEncoder encoder;
    encoder.Attach(stream, 0, 0);
    encoder.EncodeFrame(raster, 0, 0);
    encoder.Detach();
    return stream->GetBytes();
}

BitmapData Pattern(PixelFormat format) {
    BitmapData raster(37, 21, format);
    for (std::uint32_t y = 0; y < raster.GetHeight(); ++y) {
        for (std::size_t i = 0; i < raster.GetRowSize(); ++i) {
            raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(i * 2 + y * 3);
        }
    }
    return raster;
}

std::unique_ptr<BitmapData> Decode(const Bytes& file) {
    JpegFrameDecoder decoder;
    decoder.Attach(std::make_shared<MemoryStream>(file));
    BitmapData* pRaster = nullptr;
    decoder.DecodeFrame(pRaster, 0);
    return std::unique_ptr<BitmapData>(pRaster);
}

TEST(JpegFrame, LinesOfAProducerMakeTheSameFile) {
    for (const PixelFormat format :
         {PixelFormat::Format24bppRgb, PixelFormat::Format8bppGrayScale, PixelFormat::Format32bppCmyk}) {
        const Bytes file = Encode(Pattern(format));
        JpegFrameDecoder decoder;
        decoder.Attach(std::make_shared<MemoryStream>(file));
        for (const bool seekable : {true, false}) {
            const auto target = std::make_shared<FaultyStream>();
            target->Seekable = seekable;
            const auto encoder = std::make_shared<JpegFrameEncoder>();
            encoder->Attach(std::shared_ptr<IStream>(target), 0, 0);
            decoder.AddConsumer(encoder);
            decoder.Start(nullptr);
            EXPECT_THROW(decoder.Start(nullptr), MultiFrameException);
            decoder.RemoveAllConsumers();
            encoder->Detach();
            EXPECT_EQ(target->GetBytes(), Encode(*Decode(file))) << seekable;
        }
    }
}

TEST(JpegFrame, LinesNeedAFile) {
    const auto data = std::make_shared<FilterData>();
    data->Width = 3;
    data->Height = 2;
    data->Format = PixelFormat::Format24bppRgb;
    const Bytes line(9);
    JpegFrameEncoder encoder;
    EXPECT_THROW(encoder.Initialize(data), NotInitializedException);
    const auto target = std::make_shared<FaultyStream>();
    target->Seekable = false;
    encoder.Attach(std::shared_ptr<IStream>(target), 0, 0);
    encoder.Initialize(data);
    encoder.SetScanline(line.data(), 0);
    encoder.Detach();
    // The frame is not complete, so there is no file, and its other line comes too late.
    encoder.SetScanline(line.data(), 1);
    EXPECT_EQ(target->GetBytes(), Bytes());
    data->Format = PixelFormat::Format32bppArgb;
    EXPECT_THROW(encoder.Initialize(data), UnsupportedPixelFormatException);
}

/// Their lines are only taken in when they are written; the coding comes behind the last one.
TEST(JpegFrame, ProgressiveFilesAreAbortedScanByScan) {
    class AbortBehindTheLines : public Testing::EventsProbe {
    public:
        void OnProgress(std::int32_t step) override {
            EventsProbe::OnProgress(step);
            Polls += Steps() == 21 && step == 0 ? 1 : 0;
            if (Polls == 3) {
                Abort();
            }
        }
        int Polls = 0;
    } events;
    const BitmapData raster = Pattern(PixelFormat::Format24bppRgb);
    JpegFrameEncoder encoder;
    encoder.SetProgressive(true);
    encoder.SetEvents(&events);
    encoder.Attach(std::make_shared<MemoryStream>(), 0, 0);
    EXPECT_THROW(encoder.EncodeFrame(raster, 0, 0), AbortedException);
    EXPECT_EQ(events.Polls, 3);
}

} // namespace
} // namespace ImagingFramework
