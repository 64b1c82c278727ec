#include "JpegSegments.h"
#include "TestFiles.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegFrame.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/Codecs/JpegWriter.h>
#include <Corvane/Rasterloom/Codecs/UnsignedRational.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

Bytes Save(Bitmap& bitmap, const EncoderOptions& options) {
    const auto stream = StreamOf({});
    bitmap.Save(stream, &options);
    return stream->GetBuffer();
}

/// Puts a segment behind the first marker of a file.
Bytes WithSegment(Bytes file, std::uint8_t marker, const std::string& identifier, const Bytes& data) {
    const std::size_t size = identifier.size() + data.size() + 2;
    Bytes segment{0xFF, marker, static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size)};
    segment.insert(segment.end(), identifier.begin(), identifier.end());
    segment.insert(segment.end(), data.begin(), data.end());
    file.insert(file.begin() + 2, segment.begin(), segment.end());
    return file;
}

class JpegMetadata : public testing::Test {
protected:
    Bitmap m_bitmap{RgbColor::Red, 16, 8, PixelFormat::Format24bppRgb};
};

TEST_F(JpegMetadata, AllKindsOfBlocksSurvive) {
    JpegEncoderOptions options(90);
    const auto exif = std::make_shared<ExifDictionary>();
    exif->set_Item(ExifDictionary::Model, std::string("Camera"));
    options.set_Exif(exif);
    const auto iptc = std::make_shared<IptcDictionary>();
    iptc->set_Item(IptcDictionary::Caption, std::string("A caption"));
    options.set_Iptc(iptc);
    const std::string packet = "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'/>"
                               "<?xpacket end='w'?>";
    options.set_Xmp(packet);
    const Bytes file = Save(m_bitmap, options);

    JpegReader reader(StreamOf(file));
    EXPECT_EQ(reader.get_Exif()->GetItemString(ExifDictionary::Model), "Camera");
    // The resolution comes from the bitmap where the block has none.
    EXPECT_EQ(reader.get_Exif()->GetItemString(ExifDictionary::XResolution).substr(0, 2), "72");
    EXPECT_EQ(reader.get_Iptc()->GetItemString(IptcDictionary::Caption), "A caption");
    EXPECT_EQ(reader.get_Xmp(), packet);
    EXPECT_EQ(reader.get_AdobeResources()->get_Count(), 1);
    EXPECT_EQ(reader.get_Exif(), reader.get_Exif()) << "read once";
    reader.Close();
    EXPECT_THROW(reader.get_Exif(), ObjectNotOpenedException);
    // Nothing was changed on the way.
    EXPECT_EQ(exif->get_Count(), 1);
}

TEST_F(JpegMetadata, LargeProfilesAndPacketsGoInPieces) {
    Bytes profile(200000);
    for (std::size_t i = 0; i < profile.size(); ++i) {
        profile[i] = static_cast<std::uint8_t>(i * 7);
    }
    JpegEncoderOptions options;
    options.set_Xmp(std::string(65502, ' '));
    Bytes file = Save(m_bitmap, options);
    options.set_Xmp(std::string(65503, ' '));
    EXPECT_THROW(Save(m_bitmap, options), Host::ArgumentException);
    // Four chunks out of order.
    const auto identifier = [](int number) {
        return std::string("ICC_PROFILE\0", 12) + static_cast<char>(number) + '\4';
    };
    const auto at = [&](std::size_t offset) { return profile.begin() + static_cast<std::ptrdiff_t>(offset); };
    const auto chunk = [&](int number, std::size_t begin, std::size_t end) {
        file = WithSegment(file, 0xE2, identifier(number), Bytes(at(begin), at(end)));
    };
    chunk(2, 65519, 131038);
    chunk(1, 0, 65519);
    chunk(4, 196557, 200000);
    chunk(3, 131038, 196557);
    Bitmap loaded(StreamOf(file));
    const Bytes saved = Save(loaded, JpegEncoderOptions());
    Bytes written;
    for (const int number : {1, 2, 3, 4}) {
        const Bytes piece = JoinSegments(saved, 0xE2, identifier(number));
        written.insert(written.end(), piece.begin(), piece.end());
    }
    EXPECT_EQ(written, profile);
    // A chunk that is missing, or there twice, leaves no profile.
    chunk(3, 131038, 196557);
    EXPECT_EQ(Bitmap(StreamOf(file)).get_ColorProfile(), nullptr);
}

TEST_F(JpegMetadata, AWriterForgetsItsBlocksWithItsFile) {
    const auto first = StreamOf({});
    JpegWriter writer;
    writer.set_Xmp("<?xpacket?>");
    writer.Open(first);
    writer.set_Exif(std::make_shared<ExifDictionary>());
    writer.get_Exif()->set_Item(ExifDictionary::Model, std::string("Camera"));
    JpegFrame frame(&m_bitmap);
    writer.AddFrame(&frame);
    writer.Close();
    EXPECT_NE(JpegReader(first).get_Exif(), nullptr);
    EXPECT_EQ(writer.get_Exif(), nullptr);
    EXPECT_EQ(writer.get_Xmp(), "");
    const auto second = StreamOf({});
    writer.Open(second);
    writer.AddFrame(&frame);
    writer.Close();
    EXPECT_EQ(JpegReader(second).get_Exif(), nullptr);
}

TEST_F(JpegMetadata, BrokenBlocksStopNoPixels) {
    const Bytes plain = Save(m_bitmap, JpegEncoderOptions());
    const Bytes file = WithSegment(plain, 0xE1, std::string("Exif\0\0", 6), {'M', 'M', 0, 42, 0, 0, 0, 200});
    JpegReader reader(StreamOf(file));
    EXPECT_ANY_THROW(reader.get_Exif());
    EXPECT_EQ(Bitmap(StreamOf(file)).get_Width(), 16);
    // Segments that only look like the real ones are not taken.
    EXPECT_EQ(JpegReader(StreamOf(WithSegment(plain, 0xED, std::string("Photoshop 3.0\0", 14), {'8', 'B', 'I', 'M'})))
                  .get_AdobeResources(),
              nullptr);
    EXPECT_EQ(JpegReader(StreamOf(plain)).get_Exif(), nullptr);
    EXPECT_EQ(JpegReader(StreamOf(plain)).get_Xmp(), "");
}

TEST_F(JpegMetadata, ResolutionsOfJfifAndExif) {
    const auto resolution = [](const Bytes& file) {
        return JpegReader(StreamOf(file)).LoadFrame(0)->get_HorizontalResolution();
    };
    m_bitmap.set_HorizontalResolution(300.2F);
    m_bitmap.set_VerticalResolution(150.0F);
    Bytes file = Save(m_bitmap, JpegEncoderOptions());
    EXPECT_EQ(resolution(file), 301.0F) << "rounded up";
    const std::size_t density = 13; // unit, and two numbers of 16 bits
    file[density] = 2;
    EXPECT_FLOAT_EQ(resolution(file), 301 * 2.54F);
    std::fill_n(file.begin() + density, 5, std::uint8_t{0});
    file[density + 2] = file[density + 4] = 1;
    EXPECT_EQ(resolution(file), 72.0F) << "the numbers that stand for nothing";
    JpegEncoderOptions options;
    options.set_Exif(std::make_shared<ExifDictionary>());
    options.get_Exif()->set_Item(ExifDictionary::XResolution, UnsignedRational(118, 1));
    options.get_Exif()->set_Item(ExifDictionary::YResolution, UnsignedRational(118, 1));
    options.get_Exif()->set_Item(ExifDictionary::ResolutionUnit, std::int32_t{3});
    EXPECT_FLOAT_EQ(resolution(Save(m_bitmap, options)), 118 * 2.54F) << "EXIF decides";
}

TEST_F(JpegMetadata, SettingsOfFrames) {
    JpegEncoderOptions options(80, true, false);
    EXPECT_THROW(options.set_Quality(101), Host::ArgumentOutOfRangeException);
    EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([] { JpegFrame(-1); }),
              "Quality should be in the range of [0, 100].");
    options.set_RestartInterval(1);
    JpegReader reader(StreamOf(Save(m_bitmap, options)));
    const auto frame = reader.LoadFrame(0);
    auto& jpeg = dynamic_cast<JpegFrame&>(*frame);
    EXPECT_FALSE(jpeg.get_ChromaSubsamplingEnabled());
    EXPECT_EQ(jpeg.get_RestartInterval(), 1);
    EXPECT_EQ(jpeg.get_Quality(), 75) << "files do not tell";
    JpegReader plain(StreamOf(Save(m_bitmap, JpegEncoderOptions())));
    EXPECT_TRUE(dynamic_cast<JpegFrame&>(*plain.LoadFrame(0)).get_ChromaSubsamplingEnabled());
    EXPECT_EQ(dynamic_cast<JpegFrame&>(*plain.LoadFrame(0)).get_RestartInterval(), 0);
}

TEST_F(JpegMetadata, FastThumbnailsHaveTheSizeOfTheOthers) {
    Bitmap large(RgbColor(static_cast<std::int32_t>(0xFF0AC85AU)), 1003, 757, PixelFormat::Format24bppRgb);
    const Bytes file = Save(large, JpegEncoderOptions(95));
    for (const bool fast : {false, true}) {
        JpegReader reader(StreamOf(file));
        reader.set_FastThumbnails(fast);
        Bitmap thumbnail;
        reader.LoadFrame(0)->GetThumbnail(&thumbnail, 100, 100);
        EXPECT_EQ(thumbnail.get_Width(), 100);
        EXPECT_EQ(thumbnail.get_Height(), 75);
        EXPECT_NEAR(RgbColor(thumbnail.GetPixel(50, 40)).get_G(), 200, 2);
    }
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
