#include "Common/PixelTools.h"
#include "Common/ColorTreater.h"
#include "Throws.h"

#include <gtest/gtest.h>

#include <vector>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Ramp(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i + 1);
    }
    return bytes;
}

TEST(PixelTools, SwapReversesColourChannelsAndLeavesTheFifth) {
    const struct {
        std::uint32_t Bits;
        Bytes Expected; // of two pixels 1, 2, 3, ...
    } cases[] = {
        {24, {3, 2, 1, 6, 5, 4}},
        {32, {4, 3, 2, 1, 8, 7, 6, 5}},
        {40, {4, 3, 2, 1, 5, 9, 8, 7, 6, 10}},
        {48, {5, 6, 3, 4, 1, 2, 11, 12, 9, 10, 7, 8}},
        {64, {7, 8, 5, 6, 3, 4, 1, 2, 15, 16, 13, 14, 11, 12, 9, 10}},
        {80, {7, 8, 5, 6, 3, 4, 1, 2, 9, 10, 17, 18, 15, 16, 13, 14, 11, 12, 19, 20}},
        {16, {1, 2, 3, 4}},
        {8, {1, 2}},
    };
    for (const auto& test : cases) {
        Bytes pixels = Ramp(test.Expected.size());
        SwapChannelsInPixel(pixels.data(), 2, test.Bits);
        EXPECT_EQ(pixels, test.Expected) << test.Bits;
    }
    Bytes pixel = Ramp(12);
    EXPECT_THROW(SwapChannelsInPixel(pixel.data(), 1, 96), UnsupportedPixelFormatException);
    EXPECT_NO_THROW(SwapChannelsInPixel(nullptr, 1, 96));
    EXPECT_NO_THROW(SwapChannelsInPixel(pixel.data(), 0, 96));
}

TEST(PixelTools, InvertTakesAlphaAlongExceptInTheFiveChannelLayouts) {
    Bytes argb = {0, 1, 0x80, 0xFF, 7, 8, 9, 10};
    InvertChannelsInPixel(argb.data(), 2, PixelFormat::Format32bppArgb);
    EXPECT_EQ(argb, (Bytes{0xFF, 0xFE, 0x7F, 0, 0xF8, 0xF7, 0xF6, 0xF5}));

    Bytes acmyk = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    InvertChannelsInPixel(acmyk.data(), 2, PixelFormat::Format40bppAcmyk);
    EXPECT_EQ(acmyk, (Bytes{0xFF, 0xFE, 0xFD, 0xFC, 4, 0xFA, 0xF9, 0xF8, 0xF7, 9}));

    Bytes acmyk16 = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x55};
    InvertChannelsInPixel(acmyk16.data(), 1, PixelFormat::Format80bppAcmyk);
    EXPECT_EQ(acmyk16, (Bytes{0xFF, 0xFE, 0xFD, 0xFC, 0xFB, 0xFA, 0xF9, 0xF8, 8, 9, 0x55}));

    Bytes rgb48 = {0, 1, 2, 3, 4, 5, 0x55};
    InvertChannelsInPixel(rgb48.data(), 1, PixelFormat::Format48bppRgb);
    EXPECT_EQ(rgb48, (Bytes{0xFF, 0xFE, 0xFD, 0xFC, 0xFB, 0xFA, 0x55}));

    for (const auto format : {PixelFormat::Format16bppGrayScale, PixelFormat::Format16bppRgb565,
                              PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed}) {
        EXPECT_THROW(InvertChannelsInPixel(argb.data(), 1, format), UnsupportedPixelFormatException);
    }
}

TEST(PixelTools, ConvertColorToFormatWritesOnePixelAndNoByteMore) {
    const Color rgb = Color::FromArgb16(0x1122, 0x3344, 0x5566, 0x7788);
    const Color cmyk = Color::FromAcmyk(0x11, 0x22, 0x33, 0x44, 0x55);
    const struct {
        const Color& Source;
        PixelFormat Format;
        Bytes Expected; // 0xEE: untouched
    } cases[] = {
        {rgb, PixelFormat::Format1bppIndexed, {0x88, 0xEE}},
        {rgb, PixelFormat::Format8bppIndexed, {0x88, 0xEE}},
        {rgb, PixelFormat::Format16bppRgb565, {0x77, 0x55, 0xEE, 0xEE}},
        {rgb, PixelFormat::Format16bppArgb1555, {0x77, 0x55, 0xEE, 0xEE}},
        {rgb, PixelFormat::Format24bppRgb, {0x77, 0x55, 0x33, 0xEE}},
        {rgb, PixelFormat::Format32bppRgb, {0x77, 0x55, 0x33, 0xEE}},
        {rgb, PixelFormat::Format32bppArgb, {0x77, 0x55, 0x33, 0x11, 0xEE}},
        {rgb, PixelFormat::Format48bppRgb, {0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0xEE}},
        {cmyk, PixelFormat::Format32bppCmyk, {0x55, 0x44, 0x33, 0x22, 0xEE}},
        {cmyk, PixelFormat::Format40bppAcmyk, {0x55, 0x44, 0x33, 0x22, 0x11, 0xEE}},
        {cmyk, PixelFormat::Format80bppAcmyk, {0, 0x55, 0, 0x44, 0, 0x33, 0, 0x22, 0, 0x11, 0xEE}},
    };
    for (const auto& test : cases) {
        Bytes pixel(test.Expected.size(), 0xEE);
        ConvertColorToFormat(test.Source, test.Format, pixel.data());
        EXPECT_EQ(pixel, test.Expected) << std::hex << ToWord(test.Format);
    }
    Bytes pixel(10);
    EXPECT_THROW(ConvertColorToFormat(rgb, PixelFormat::FormatUnknown, pixel.data()), UnsupportedPixelFormatException);
    EXPECT_EQ(ThrownText<ArgumentNullPointerException>(
                  [&] { ConvertColorToFormat(rgb, PixelFormat::Format24bppRgb, nullptr); }),
              "Argument is null pointer (pResult).");
}

TEST(ColorTreater, ModesAndRefusals) {
    const Argb32 color = Argb32::FromArgb(4, 3, 2, 1);
    const auto treat = [&](int mode, PixelFormat format) {
        Argb32 result;
        ColorTreater(static_cast<ColorTreatment>(mode)).TreatForOutside(color, &result, format);
        return result;
    };
    EXPECT_EQ(treat(0, PixelFormat::Format64bppArgb), color);
    EXPECT_EQ(treat(1, PixelFormat::Format32bppArgb), Argb32::FromArgb(4, 1, 2, 3));
    EXPECT_EQ(treat(2, PixelFormat::Format32bppArgb), Argb32::FromArgb(0, 3, 2, 1));
    EXPECT_THROW(treat(1, PixelFormat::Format32bppCmyk), UnsupportedPixelFormatException);
    EXPECT_THROW(treat(4, PixelFormat::Format8bppIndexed), UnexpectedException);

    for (const auto& [mode, format] :
         {std::pair{0, PixelFormat::Format8bppIndexed}, std::pair{1, PixelFormat::Format1bppIndexed},
          std::pair{2, PixelFormat::Format4bppIndexed}, std::pair{3, PixelFormat::Format32bppArgb}}) {
        try {
            treat(mode, format);
            ADD_FAILURE() << mode;
        } catch (const Exception& failure) {
            EXPECT_EQ(failure.GetHresult(), static_cast<std::int32_t>(0x80004001U));
            EXPECT_EQ(failure.GetExceptionStringRef(), "Work with palettes is not implemented by now");
        }
    }
}

} // namespace
} // namespace ImagingFramework
