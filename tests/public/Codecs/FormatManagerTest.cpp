#include "TestFiles.h"
#include "TestFormat.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {
namespace {

class FormatManagerTest : public FilesTest {};

TEST_F(FormatManagerTest, FindsReadersByContentWhateverTheName) {
    RegisterTestFormat();
    const auto bmp = Write("picture.tst", FourColors());
    const auto tst = Write("noextension", TestFile(1, 1, 1, {9}));
    EXPECT_EQ(FormatManager::CreateFormatReader(bmp)->get_MediaFormat(), FormatManager::BmpFormat);
    const auto reader = FormatManager::CreateFormatReader(tst);
    EXPECT_EQ(reader->get_MediaFormat(), TestFormat);
    EXPECT_TRUE(reader->get_Opened());
    EXPECT_EQ(FormatManager::CreateFormatReader(std::make_shared<OneWayStream>(TestFile(3, 1, 1, {1, 2, 3})))
                  ->get_FrameCount(),
              3);
    EXPECT_EQ(ThrownText<MediaUnsupportedException>(
                  [&] { FormatManager::CreateFormatReader(StreamOf({0, 0, 0, 0})); }),
              "The media format is not supported.");
    EXPECT_THROW(FormatManager::CreateFormatReader(StreamOf({})), MediaUnsupportedException);
    EXPECT_THROW(FormatManager::CreateFormatReader(File("missing.bmp")), Host::FileNotFoundException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(
                  [] { FormatManager::CreateFormatReader(std::shared_ptr<Host::Stream>()); }),
              "stream");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(
                  [] { FormatManager::CreateFormatReader(std::filesystem::path()); }),
              "fileName");
}

TEST_F(FormatManagerTest, FindsWritersByExtensionInAnyCase) {
    RegisterTestFormat();
    EXPECT_EQ(FormatManager::CreateFormatWriter(File("a.b.DiB"))->get_MediaFormat(), FormatManager::BmpFormat);
    EXPECT_EQ(FormatManager::CreateFormatWriter(File("a.tst2"))->get_MediaFormat(), TestFormat);
    for (const char* name : {"bmp", "a.", "a.bmpx", "a.bm", ".", "folder.bmp/a"}) {
        EXPECT_THROW(FormatManager::CreateFormatWriter(File(name)), MediaUnsupportedException) << name;
    }
    EXPECT_FALSE(FormatManager::CreateFormatWriter(FormatManager::BmpFormat)->get_Opened());
    EXPECT_THROW(FormatManager::CreateFormatWriter(FormatManager::MpegFormat), MediaUnsupportedException);
    EXPECT_EQ(CountFiles(), 0U) << "opened and closed again without a frame";
    const auto options = FormatManager::CreateEncoderOptions(FormatManager::BmpFormat);
    EXPECT_EQ(dynamic_cast<BmpEncoderOptions&>(*options).get_Compression(), CompressionType::None);
}

TEST_F(FormatManagerTest, TellsTheFormatOfAFile) {
    RegisterTestFormat();
    EXPECT_EQ(FormatManager::GetMediaFormat(Write("x", FourColors())), FormatManager::BmpFormat);
    EXPECT_EQ(FormatManager::GetMediaFormat(File("not there.tst")), TestFormat) << "by the writer of the name";
    EXPECT_EQ(FormatManager::GetMediaFormat(Write("y.txt", {1, 2, 3})), FormatManager::UnknownFormat);
    EXPECT_EQ(FormatManager::GetMediaFormat(StreamOf(TestFile(1, 1, 1, {0}))), TestFormat);
    EXPECT_EQ(FormatManager::GetMediaFormat(std::shared_ptr<Host::Stream>()), FormatManager::UnknownFormat);
    EXPECT_EQ(CountFiles(), 2U);
}

TEST_F(FormatManagerTest, DescribesFormats) {
    RegisterTestFormat();
    EXPECT_EQ(FormatManager::GetFormatName(FormatManager::BmpFormat), "BMP");
    EXPECT_EQ(FormatManager::GetFormatDescription(FormatManager::BmpFormat), "BMP (Windows Bitmap)");
    EXPECT_EQ(FormatManager::GetDefaultExtension(FormatManager::BmpFormat), "*.bmp");
    EXPECT_EQ(FormatManager::GetMimeType(TestFormat), "image/x-tst");
    EXPECT_THROW(FormatManager::GetFormatName(FormatManager::UnknownFormat), MediaUnsupportedException);
    EXPECT_EQ(FormatManager::GetFilterString({TestFormat, FormatManager::BmpFormat, TestFormat}, "Mine"),
              "Mine (*.tst;*.bmp;*.dib)|*.tst;*.bmp;*.dib");
    EXPECT_EQ(FormatManager::GetFilterString({FormatManager::BmpFormat}), "*.bmp;*.dib");
    EXPECT_EQ(FormatManager::GetFilterString(std::vector<std::int64_t>{FormatManager::BmpFormat}),
              "Formats (*.bmp;*.dib)|*.bmp;*.dib");
    const auto load = FormatManager::FilterStringForLoad();
    const auto save = FormatManager::FilterStringForSave();
    EXPECT_TRUE(load.starts_with("All Images (*.bmp;*.dib;")) << load;
    EXPECT_NE(load.find("|BMP (Windows Bitmap) (*.bmp;*.dib)|*.bmp;*.dib|"), std::string::npos) << load;
    EXPECT_NE(load.find("|Test format (*.tst)|*.tst|"), std::string::npos) << load;
    EXPECT_TRUE(load.ends_with("|All Files (*.*)|*.*")) << load;
    EXPECT_NE(save.find("|Test format (*.tst;*.Tst2)|*.tst;*.Tst2"), std::string::npos) << save;
    EXPECT_EQ(save.find("All Files"), std::string::npos) << save;
    const auto formats = FormatManager::SupportedMediaFormatsForLoad();
    EXPECT_EQ(formats.front(), FormatManager::BmpFormat);
    EXPECT_NE(std::ranges::find(formats, TestFormat), formats.end());
    EXPECT_EQ(std::ranges::find(formats, FormatManager::MpegFormat), formats.end());
}

TEST_F(FormatManagerTest, AHigherPriorityReplacesACodec) {
    constexpr std::int64_t format = 1002;
    const auto priority = [] { return FormatManager::CreateFormatReader(format)->get_CodecPriority(); };
    int made = 0;
    const auto add = [&](std::int64_t number, std::int32_t level) {
        FormatManager::RegisterFormatReader([&made, number, level] {
            ++made;
            return std::make_unique<TestReader>(number, level);
        });
    };
    EXPECT_THROW(FormatManager::CreateFormatReader(format), MediaUnsupportedException);
    add(format, 3);
    const std::size_t count = FormatManager::SupportedMediaFormatsForLoad().size();
    EXPECT_EQ(priority(), 3);
    add(format, 2);
    EXPECT_EQ(priority(), 3);
    add(format, 4);
    EXPECT_EQ(priority(), 4);
    add(FormatManager::UnknownFormat, 9);
    add(FormatManager::UnknownBeforeOpenFormat, 9);
    EXPECT_EQ(FormatManager::SupportedMediaFormatsForLoad().size(), count);
    EXPECT_EQ(made, 5);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([] {
                  FormatManager::RegisterFormatWriter([] { return std::unique_ptr<IFormatWriter>(); });
              }),
              Host::ArgumentException("Erroneous writer type.", "writer").get_Message());
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { FormatManager::RegisterFormatReader({}); }), "reader");
}

TEST_F(FormatManagerTest, CheckForSupportLooksAtTheFirstBytes) {
    BmpReader bmp;
    const auto stream = StreamOf(FourColors());
    EXPECT_TRUE(bmp.CheckForSupport(stream));
    EXPECT_EQ(stream->get_Position(), 0);
    EXPECT_FALSE(bmp.CheckForSupport(Write("a.bmp", {'B'})));
    TestReader custom;
    const auto own = StreamOf(TestFile(1, 1, 1, {0}));
    EXPECT_TRUE(custom.CheckForSupport(own));
    EXPECT_EQ(own->get_Position(), 0);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { custom.CheckForSupport(std::make_shared<OneWayStream>()); }),
              Host::ArgumentException("Stream did not return current position.", "stream").get_Message());
    own->Close();
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { custom.CheckForSupport(own); }),
              Host::ArgumentException("Stream has been closed.", "stream").get_Message());
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
