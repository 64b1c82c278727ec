#include "TestFiles.h"
#include "TestFormat.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>
#include <Corvane/Rasterloom/Codecs/BmpWriter.h>
#include <Corvane/Rasterloom/ColorPalette.h>

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {
namespace {

class FormatWriterTest : public FilesTest {};

TEST_F(FormatWriterTest, WritesTheBytesOfABmp) {
    Bitmap bitmap(2, 2, PixelFormat::Format24bppRgb);
    bitmap.Load(StreamOf(FourColors()));
    const auto stream = StreamOf({});
    BmpWriter writer(stream);
    BmpFrame frame(&bitmap);
    writer.AddFrame(&frame);
    Bytes expected = FourColors();
    expected[34] = 16; // the image size, which a reader does not need
    EXPECT_THROW(writer.AddFrame(&frame), MultiFrameException);
    writer.Close();
    EXPECT_EQ(stream->GetBuffer(), expected);
    EXPECT_EQ(ThrownText<ObjectNotOpenedException>([&] { writer.AddFrame(&frame); }),
              "Object \"writer\" has not been opened.");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { writer.AddFrame(nullptr); }), "frame");
    EXPECT_FALSE(writer.get_Locked() || frame.get_Locked());
}

TEST_F(FormatWriterTest, FramesGoFromReaderToWriter) {
    // Two pixels of entry 1 and one of entry 0, as a run and a single pixel.
    const Bytes palette = {1, 2, 3, 0, 4, 5, 6, 0};
    BmpReader reader(StreamOf(BmpFile(3, 1, 8, 1, palette, {2, 1, 1, 0, 0, 0, 0, 1})));
    const auto frame = reader.LoadFrame(0);
    EXPECT_EQ(dynamic_cast<BmpFrame&>(*frame).get_Compression(), CompressionType::Rle);
    std::vector<std::string> events;
    const auto reading = reader.Started.Subscribe([&](EventArgs&) { events.push_back("reader"); });
    BmpWriter writer(File("copy.bmp"));
    const auto writing = writer.Started.Subscribe([&](EventArgs&) { events.push_back("writer"); });
    writer.AddFrame(frame.get());
    writer.Close();
    EXPECT_EQ(events, (std::vector<std::string>{"writer", "reader"}));
    const Bytes copy = Read("copy.bmp");
    EXPECT_EQ(copy[30], 1) << "the compression goes along";
    Bitmap bitmap(File("copy.bmp"));
    EXPECT_EQ(bitmap.GetPixel(1, 0).ToInt32(), 0xFF060504U);
    EXPECT_EQ(bitmap.GetPixel(2, 0).ToInt32(), 0xFF030201U);
}

TEST_F(FormatWriterTest, TheReaderMayBeGoneBeforeItsFrameIsWritten) {
    auto reader = std::make_unique<BmpReader>(StreamOf(FourColors()));
    const auto frame = reader->LoadFrame(0);
    BmpWriter writer(StreamOf({}));
    reader->Close();
    EXPECT_THROW(writer.AddFrame(frame.get()), ObjectNotOpenedException);
    reader.reset();
    EXPECT_THROW(writer.AddFrame(frame.get()), UnexpectedException);
    EXPECT_FALSE(writer.get_Locked());
    BmpFrame empty;
    EXPECT_THROW(writer.AddFrame(&empty), UnexpectedException);
    Bitmap nothing;
    BmpFrame emptyBitmap(&nothing);
    EXPECT_THROW(writer.AddFrame(&emptyBitmap), BitmapEmptyException);
    Bitmap good(RgbColor::Red, 1, 1, PixelFormat::Format24bppRgb);
    emptyBitmap.SetBitmap(&good);
    EXPECT_NO_THROW(writer.AddFrame(&emptyBitmap)) << "a failed frame leaves the writer open";
}

TEST_F(FormatWriterTest, ConvertsToTheClosestFormatWithOneProgress) {
    BmpWriter writer;
    EXPECT_TRUE(writer.IsPixelFormatSupported(PixelFormat::Format8bppGrayScale));
    EXPECT_FALSE(writer.IsPixelFormatSupported(PixelFormat::Format48bppRgb));
    EXPECT_EQ(writer.get_SupportedPixelFormats().size(), 7U);
    struct Case {
        PixelFormat From;
        Color Fill;
        std::uint8_t Bits;
        Bytes Pixel;
    };
    for (const Case& one : {Case{PixelFormat::Format48bppRgb, Color::FromRgb(1, 2, 3), 24, {3, 2, 1}},
                            Case{PixelFormat::Format64bppArgb, Color::FromArgb(128, 1, 2, 3), 32, {3, 2, 1, 128}},
                            Case{PixelFormat::Format16bppAGrayScale, Color::FromArgb(255, 9, 9, 9), 32, {9, 9, 9, 255}},
                            Case{PixelFormat::Format16bppGrayScale, Color::FromGrayScale(200), 24, {200, 200, 200}}}) {
        // Wide enough for a report after each line.
        Bitmap bitmap(one.Fill, 1200, 4, one.From);
        BmpFrame frame(&bitmap);
        const auto stream = StreamOf({});
        writer.Open(stream);
        std::vector<std::int32_t> progress;
        const auto onProgress =
            writer.Progress.Subscribe([&](ProgressEventArgs& args) { progress.push_back(args.get_Current()); });
        writer.AddFrame(&frame);
        writer.Close();
        const Bytes& bytes = stream->GetBuffer();
        ASSERT_GT(bytes.size(), 58U);
        EXPECT_EQ(bytes[28], one.Bits);
        EXPECT_EQ(Bytes(bytes.begin() + 54, bytes.begin() + 54 + static_cast<std::ptrdiff_t>(one.Pixel.size())),
                  one.Pixel);
        EXPECT_TRUE(std::ranges::is_sorted(progress));
        EXPECT_EQ(progress.front(), 0);
        EXPECT_EQ(progress.back(), 200);
        EXPECT_TRUE(std::ranges::any_of(progress, [](auto value) { return value > 0 && value <= 100; }));
        EXPECT_TRUE(std::ranges::any_of(progress, [](auto value) { return value > 100 && value < 200; }));
    }
}

TEST_F(FormatWriterTest, OptionsTravelBetweenFrameWriterAndHost) {
    BmpEncoderOptions options(CompressionType::Rle);
    options.set_Left(3);
    EXPECT_EQ(options.get_MediaFormat(), FormatManager::BmpFormat);
    const auto frame = options.ToFrame();
    EXPECT_EQ(frame->get_Left(), 3);
    EXPECT_EQ(dynamic_cast<BmpFrame&>(*frame).get_Compression(), CompressionType::Rle);
    CustomFrame other;
    frame->ExportEncoderOptions(&options);
    other.ImportEncoderOptions(&options);
    EXPECT_EQ(other.get_Left(), 3);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { options.set_Compression(CompressionType::Zip); }),
              Host::ArgumentException("The compression type you specified is not supported by bitmap format.",
                                      "compression")
                  .get_Message());
    EXPECT_THROW(BmpFrame(static_cast<CompressionType>(99)), Host::ArgumentException);
    BmpWriter writer;
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { writer.ImportEncoderOptions(nullptr); }), "options");
}

TEST_F(FormatWriterTest, AHostsFormatHasSeveralFramesAndReplacesItsFileWhole) {
    Write("a.tst", {'o', 'l', 'd'});
    TestWriter writer;
    writer.Open(File("a.tst"));
    for (const int gray : {50, 60}) {
        Bitmap bitmap(Color::FromGrayScale(static_cast<std::uint8_t>(gray)), 2, 1, PixelFormat::Format24bppRgb);
        const auto frame = writer.GetEmptyFrame();
        frame->SetBitmap(&bitmap);
        writer.AddFrame(frame.get());
    }
    EXPECT_EQ(Read("a.tst"), (Bytes{'o', 'l', 'd'}));
    writer.Close();
    EXPECT_EQ(Read("a.tst"), TestFile(2, 2, 1, {50, 50, 60, 60}));
    writer.Open(File("a.tst"));
    writer.Work = [](TestWriter&) { throw Host::IOException("no"); };
    Bitmap bitmap(1, 1, PixelFormat::Format8bppGrayScale);
    BmpFrame frame(&bitmap);
    EXPECT_THROW(writer.AddFrame(&frame), Host::IOException);
    writer.Close();
    EXPECT_EQ(Read("a.tst").size(), 11U) << "no frame was completed";
    EXPECT_EQ(CountFiles(), 1U);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
