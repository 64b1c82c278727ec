// What a host accepts from files, over all codecs that there are.

#include "EveryCodec.h"
#include "TestFormat.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

/// The limits are the process's, so each test takes them back.
struct NoLimitsAfterwards {
    ~NoLimitsAfterwards() {
        GlobalSettings::set_MaximumFramePixels(0);
        GlobalSettings::set_MaximumFrameBytes(0);
        GlobalSettings::set_MaximumFrameCount(0);
    }
};

class Limits : public testing::TestWithParam<std::int64_t>, NoLimitsAfterwards {
protected:
    void SetUp() override {
        Bitmap source;
        FillWithNoise(source);
        m_file = SaveTo(GetParam(), source);
    }
    std::shared_ptr<Host::Stream> File() const { return std::make_shared<Host::MemoryStream>(m_file); }

    std::vector<std::uint8_t> m_file;
};

TEST_P(Limits, LargeFramesAreRefusedWithTheNumbers) {
    constexpr std::int64_t pixels = std::int64_t{NoiseWidth} * NoiseHeight;
    Bitmap bitmap(3, 2, PixelFormat::Format8bppGrayScale);
    const auto load = [&] { bitmap.Load(File()); };
    const auto loadThumbnail = [&] { bitmap.LoadThumbnail(File(), 20, 0); };

    GlobalSettings::set_MaximumFramePixels(pixels - 1);
    EXPECT_EQ(ThrownText<MediaCorruptedException>(load),
              "The frame of 61 x 43 pixels is larger than the limit of 2622 pixels.");
    EXPECT_THROW(loadThumbnail(), MediaCorruptedException);
    EXPECT_EQ(bitmap.get_Width(), 3);
    GlobalSettings::set_MaximumFramePixels(pixels);
    EXPECT_NO_THROW(load());
    const std::int64_t bytes = bitmap.get_MemoryUsed();
    EXPECT_NO_THROW(loadThumbnail());

    GlobalSettings::set_MaximumFramePixels(0);
    GlobalSettings::set_MaximumFrameBytes(bytes - 1);
    const std::string text = ThrownText<MediaCorruptedException>(load);
    EXPECT_NE(text.find("61 x 43"), std::string::npos) << text;
    EXPECT_NE(text.find(std::to_string(bytes - 1) + " bytes"), std::string::npos) << text;
    GlobalSettings::set_MaximumFrameBytes(bytes);
    EXPECT_NO_THROW(load());
}

INSTANTIATE_TEST_SUITE_P(All, Limits, testing::ValuesIn(FormatManager::SupportedMediaFormatsForSave()), CodecName);

TEST(FrameLimits, AFormatOfTheHostIsLimitedToo) {
    const NoLimitsAfterwards guard;
    const auto open = [](std::uint8_t frames) {
        TestReader reader;
        reader.Open(std::make_shared<Host::MemoryStream>(TestFile(frames, 2, 2, std::vector<std::uint8_t>(4 * frames))));
        Bitmap bitmap;
        reader.LoadFrame(0)->GetBitmap(&bitmap);
        return bitmap.get_Width();
    };
    GlobalSettings::set_MaximumFrameCount(2);
    EXPECT_EQ(open(2), 2);
    EXPECT_EQ(ThrownText<MediaCorruptedException>([&] { open(3); }), "The file has more frames (3) than the limit of 2.");
    GlobalSettings::set_MaximumFramePixels(3);
    EXPECT_THROW(open(1), MediaCorruptedException);
    EXPECT_EQ(GlobalSettings::get_MaximumFrameCount(), 2);
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([] { GlobalSettings::set_MaximumFrameBytes(-1); }),
              "value");
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
