#include "TestFiles.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngFrame.h>
#include <Corvane/Rasterloom/Codecs/PngReader.h>
#include <Corvane/Rasterloom/Codecs/PngWriter.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <gtest/gtest.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

class Png : public testing::Test {
protected:
    Bytes Save(const PngEncoderOptions& options) {
        const auto stream = std::make_shared<Host::MemoryStream>();
        m_bitmap.Save(stream, &options);
        return stream->GetBuffer();
    }

    Bitmap m_bitmap{RgbColor::Red, 40, 30, PixelFormat::Format24bppRgb};
};

TEST_F(Png, OptionsReachTheFileAndComeBack) {
    PngEncoderOptions options(true);
    options.set_CompressionLevel(0);
    const Bytes file = Save(options);
    EXPECT_GT(file.size(), 40U * 30 * 3);
    EXPECT_LT(Save(PngEncoderOptions(true)).size(), 500U);

    PngReader reader(StreamOf(file));
    const auto frame = reader.LoadFrame(0);
    auto& png = dynamic_cast<PngFrame&>(*frame);
    EXPECT_TRUE(png.get_Interlaced());
    EXPECT_EQ(png.get_CompressionLevel(), PngEncoderOptions::DefaultCompressionLevel) << "files do not tell";
    const auto exported = png.ExportEncoderOptions();
    EXPECT_TRUE(dynamic_cast<PngEncoderOptions&>(*exported).get_Interlaced());
    // A frame of a reader goes to a writer as it is.
    const auto target = std::make_shared<Host::MemoryStream>();
    PngWriter writer(target);
    writer.AddFrame(frame.get());
    EXPECT_THROW(writer.AddFrame(frame.get()), MultiFrameException);
    writer.Close();
    PngReader again(StreamOf(target->GetBuffer()));
    EXPECT_TRUE(dynamic_cast<PngFrame&>(*again.LoadFrame(0)).get_Interlaced());
}

TEST_F(Png, SettingsAreChecked) {
    PngEncoderOptions options;
    EXPECT_EQ(options.get_MediaFormat(), 3);
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { options.set_CompressionLevel(10); }),
              "compressionLevel");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { PngFrame().set_CompressionLevel(-2); }),
              "compressionLevel");
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { options.set_Filter(static_cast<PngFilter>(7)); }), "filter");
    options.set_Filter(PngFilter::Paeth);
    const auto frame = options.ToFrame();
    EXPECT_EQ(dynamic_cast<PngFrame&>(*frame).get_Filter(), PngFilter::Paeth);
}

TEST_F(Png, CheckSumsAreSkippedOnRequest) {
    Bytes file = Save(PngEncoderOptions());
    file[file.size() - 13] ^= 1; // of the pixels, in front of the empty last chunk
    Bitmap bitmap;
    PngReader strict(StreamOf(file));
    EXPECT_THROW(strict.LoadFrame(0)->GetBitmap(&bitmap), MediaCorruptedException);
    PngReader reader;
    reader.set_SkipCrcCheck(true);
    reader.Open(StreamOf(file));
    reader.LoadFrame(0)->GetBitmap(&bitmap);
    EXPECT_EQ(RgbColor(bitmap.GetPixel(39, 29)).get_R(), 255);
    EXPECT_TRUE(dynamic_cast<PngReader&>(*reader.Clone()).get_SkipCrcCheck());
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
