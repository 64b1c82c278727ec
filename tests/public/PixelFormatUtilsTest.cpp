#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include "Throws.h"

#include <gtest/gtest.h>

namespace Corvane::Rasterloom {
namespace {

TEST(PixelFormatUtils, AnswersAndRefusals) {
    EXPECT_EQ(PixelFormatUtils::BitsPerPixel(PixelFormat::Format32bppRgb), 32);
    EXPECT_EQ(PixelFormatUtils::ChannelCountWithoutAlpha(PixelFormat::Format80bppAcmyk), 4);
    EXPECT_EQ(PixelFormatUtils::AlphaChannelIndex(PixelFormat::Format16bppAGrayScale), 1);
    EXPECT_TRUE(PixelFormatUtils::IsRgb(PixelFormat::Format1bppIndexed));
    EXPECT_FALSE(PixelFormatUtils::IsCmyk(PixelFormat::Format8bppGrayScale));
    EXPECT_EQ(PixelFormatUtils::ColorSpace(PixelFormat::FormatUnknown), ColorSpace::Unknown);
    EXPECT_EQ(ThrownText<UnsupportedPixelFormatException>(
                  [] { PixelFormatUtils::ChannelCount(PixelFormat::FormatUnknown); }),
              "The specified pixel format is not supported."); // of the engine, with the engine's text
    const auto noAlpha = [] { PixelFormatUtils::AlphaChannelIndex(PixelFormat::Format24bppRgb); };
    EXPECT_EQ(ThrownText<Host::ArgumentException>(noAlpha), "The pixel format has no alpha channel.");
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>(noAlpha), "format");
    // The premultiplied formats are the engine's own.
    for (const std::uint32_t word : {0x014E200BU, 0x011C400EU, 0x00000001U}) {
        const auto unnamed = [word] { PixelFormatUtils::HasAlpha(static_cast<PixelFormat>(word)); };
        EXPECT_EQ(ThrownText<Host::ArgumentException>(unnamed), "Enumeration value has an inappropriate value.");
        EXPECT_EQ(ThrownParameter<Host::ArgumentException>(unnamed), "format");
    }
}

TEST(PixelFormatUtils, PlatformNumbersGoBothWaysForTwelveFormats) {
    int mapped = 0;
    for (const auto& [format, name] : EnumNames<PixelFormat>()) {
        try {
            const std::uint32_t gdi = TransformPixelFormatGdi(format);
            EXPECT_EQ(TransformPixelFormatGdi(gdi), format) << name;
            ++mapped;
        } catch (const UnsupportedPixelFormatException&) {
            EXPECT_TRUE(PixelFormatUtils::IsCmyk(format) || PixelFormatUtils::IsGrayScale(format) ||
                        format == PixelFormat::FormatUnknown)
                << name;
        }
    }
    EXPECT_EQ(mapped, 12);
    EXPECT_EQ(TransformPixelFormatGdi(PixelFormat::Format24bppRgb), 0x00021808U);
    EXPECT_EQ(TransformPixelFormatGdi(0x0026200AU), PixelFormat::Format32bppArgb);
    EXPECT_EQ(TransformPixelFormatGdi(PixelFormat::Format16bppGrayScale), 0x00101004U);
    EXPECT_THROW(TransformPixelFormatGdi(0x000E200BU), UnsupportedPixelFormatException);
}

TEST(EnumNames, NamesAliasesAndParsing) {
    using Transforms::InterpolationMode;
    EXPECT_EQ(ToString(InterpolationMode::LowSpeed), "HighQuality");
    EXPECT_EQ(Parse<InterpolationMode>("scaletocolor"), InterpolationMode::ScaleToGray);
    EXPECT_EQ(Parse<InterpolationMode>("Lanczos"), std::nullopt);
    EXPECT_EQ(Parse<PixelFormat>("Format24bppRgb"), PixelFormat::Format24bppRgb);
    EXPECT_EQ(ToString(static_cast<InterpolationMode>(16)), "");
    EXPECT_EQ(ToString(static_cast<BitmapChange>(29)), "Resize");
    EXPECT_EQ(ToString(static_cast<BitmapChange>(53)), "AddAlphaChannel");
    EXPECT_EQ(ToString(static_cast<Unit>(8)), "Twip");
    EXPECT_EQ(ToString(static_cast<ActivityStatus>(0)), "");
}

} // namespace
} // namespace Corvane::Rasterloom
