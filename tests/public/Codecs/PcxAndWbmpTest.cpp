#include "PcxBuilder.h"
#include "TestFiles.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PcxEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PcxFrame.h>
#include <Corvane/Rasterloom/Codecs/PcxReader.h>
#include <Corvane/Rasterloom/Codecs/WbmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/WbmpFrame.h>
#include <Corvane/Rasterloom/Codecs/WbmpReader.h>
#include <Corvane/Rasterloom/Codecs/WbmpWriter.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

/// 4 by 4 pixels of the entry 200: red 200, green 55, blue 157.
Bytes PlainPcx() {
    return PcxBuilder{.Width = 4,
                      .Height = 4,
                      .DpiX = 300,
                      .DpiY = 150,
                      .BytesPerLine = 4,
                      .Data = {0xD0, 200},
                      .Tail = PcxBuilder::FilePalette()}
        .Build();
}

constexpr std::uint32_t PlainColor = 0xFFC8379D;

class PcxAndWbmp : public FilesTest {};

TEST_F(PcxAndWbmp, PcxFilesAreReadWhateverTheirName) {
    for (const char* name : {"a.pcx", "a.PCX", "a", "a.bmp"}) {
        Bitmap loaded(Write(name, PlainPcx()));
        EXPECT_EQ(loaded.GetPixel(3, 3).ToInt32(), PlainColor) << name;
    }
    PcxReader reader(File("a.pcx"));
    const auto frame = reader.LoadFrame(0);
    EXPECT_NE(dynamic_cast<PcxFrame*>(frame.get()), nullptr);
    EXPECT_EQ(frame->get_Width(), 4);
    EXPECT_EQ(frame->get_PixelFormat(), PixelFormat::Format8bppIndexed);
    EXPECT_EQ(frame->get_HorizontalResolution(), 300);
    EXPECT_EQ(frame->get_VerticalResolution(), 150);
    EXPECT_EQ(frame->get_ColorProfile(), nullptr);
    EXPECT_NE(dynamic_cast<PcxEncoderOptions*>(frame->ExportEncoderOptions().get()), nullptr);
    Bitmap thumbnail;
    frame->GetThumbnail(&thumbnail, 2, 0);
    EXPECT_EQ(thumbnail.get_Width(), 2);
    EXPECT_EQ(thumbnail.GetPixel(1, 1).ToInt32(), PlainColor);
}

TEST_F(PcxAndWbmp, PcxFilesAreNotWritten) {
    Bitmap bitmap;
    bitmap.Load(StreamOf(PlainPcx()));
    const PcxEncoderOptions options;
    EXPECT_EQ(options.get_MediaFormat(), FormatManager::PcxFormat);
    EXPECT_NE(dynamic_cast<PcxFrame*>(options.ToFrame().get()), nullptr);
    EXPECT_THROW(bitmap.Save(File("b.pcx"), &options), MediaUnsupportedException);
    EXPECT_THROW(bitmap.Save(File("b.pcx")), MediaUnsupportedException);
    EXPECT_THROW(FormatManager::CreateEncoderOptions(FormatManager::PcxFormat), MediaUnsupportedException);
    EXPECT_EQ(CountFiles(), 0U);
    EXPECT_EQ(FormatManager::GetMimeType(FormatManager::PcxFormat), "image/pcx");
}

TEST_F(PcxAndWbmp, BitmapsBecomeBlackAndWhite) {
    Bitmap bitmap(RgbColor::White, 9, 2, PixelFormat::Format24bppRgb);
    bitmap.SetPixel(0, 1, RgbColor::Black);
    bitmap.Save(File("a.wbm"));
    EXPECT_EQ(Read("a.wbm"), (Bytes{0, 0, 9, 2, 0xFF, 0x80, 0x7F, 0x80}));
    const auto options = FormatManager::CreateEncoderOptions(FormatManager::WbmpFormat);
    ASSERT_NE(dynamic_cast<WbmpEncoderOptions*>(options.get()), nullptr);
    bitmap.Save(File("a.WBMP"), options.get());
    EXPECT_EQ(Read("a.WBMP"), Read("a.wbm"));
    Bitmap loaded(File("a.wbm"));
    EXPECT_EQ(loaded.get_PixelFormat(), PixelFormat::Format1bppIndexed);
    EXPECT_EQ(loaded.get_Palette()->get_Item(0).ToInt32(), 0xFF000000U);
    EXPECT_EQ(loaded.GetPixel(0, 1).ToInt32(), 0xFF000000U);
}

TEST_F(PcxAndWbmp, AFramePassesFromReaderToWriter) {
    PcxReader reader(StreamOf(PlainPcx()));
    const auto stream = StreamOf({});
    WbmpWriter writer(stream);
    EXPECT_EQ(writer.get_SupportedPixelFormats(), std::vector{PixelFormat::Format1bppIndexed});
    const auto frame = reader.LoadFrame(0);
    writer.AddFrame(frame.get());
    WbmpFrame second(std::make_unique<Bitmap>(1, 1, PixelFormat::Format1bppIndexed).get());
    EXPECT_EQ(ThrownText<MultiFrameException>([&] { writer.AddFrame(&second); }),
              "Too many frames try to be saved to media format.");
    writer.Close();
    WbmpReader again(stream);
    EXPECT_EQ(again.LoadFrame(0)->get_Width(), 4);
    EXPECT_TRUE(WbmpReader().CheckForSupport(stream));
    EXPECT_FALSE(PcxReader().CheckForSupport(stream));
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
