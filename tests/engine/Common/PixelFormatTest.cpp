#include "Common/Numeric.h"
#include "Common/PixelFormat.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

TEST(PixelFormat, CountsChannelsByTable) {
    EXPECT_EQ(PixelFormatChannelCount(PixelFormat::Format32bppRgb), 3U);
    EXPECT_EQ(PixelFormatSize(PixelFormat::Format32bppRgb), 32U);
    EXPECT_EQ(PixelFormatChannelCount(PixelFormat::Format80bppAcmyk), 5U);
    EXPECT_EQ(PixelFormatColorChannelCount(PixelFormat::Format32bppAGrayScale), 1U);
    EXPECT_EQ(PixelFormatAlphaChannelIndex(PixelFormat::Format40bppAcmyk), 4U);
    EXPECT_EQ(PixelFormatAlphaChannelIndex(PixelFormat::Format16bppAGrayScale), 1U);
    EXPECT_EQ(PixelFormatAlphaChannelIndex(PixelFormat::Format64bppPArgb), 3U);
    EXPECT_THROW(PixelFormatAlphaChannelIndex(PixelFormat::Format24bppRgb), ArgumentException);
    EXPECT_THROW(PixelFormatChannelCount(PixelFormat::FormatUnknown), UnsupportedPixelFormatException);
    EXPECT_THROW(PixelFormatChannelCount(static_cast<PixelFormat>(0x01421807)), UnsupportedPixelFormatException);
}

TEST(PixelFormat, NamesTheColorSpace) {
    EXPECT_EQ(PixelFormatColorSpace(PixelFormat::FormatUnknown), ColorSpace::Unknown);
    EXPECT_EQ(PixelFormatColorSpace(PixelFormat::Format1bppIndexed), ColorSpace::Rgb);
    EXPECT_EQ(PixelFormatColorSpace(PixelFormat::Format16bppGrayScale), ColorSpace::GrayScale);
    EXPECT_EQ(PixelFormatColorSpace(PixelFormat::Format40bppAcmyk), ColorSpace::Cmyk);
    EXPECT_THROW(PixelFormatColorSpace(static_cast<PixelFormat>(0x0808)), UnsupportedPixelFormatException);
    EXPECT_EQ(TranslateColorChannel(ColorChannel::Alpha, ColorSpace::Cmyk), 4);
    EXPECT_EQ(TranslateColorChannel(ColorChannel::Alpha, PixelFormat::Format8bppGrayScale), 1);
    EXPECT_EQ(TranslateColorChannel(ColorChannel::Red, ColorSpace::Rgb), 2);
}

TEST(PixelFormat, AddsAndDropsAlphaInTheSameSpaceAndDepth) {
    EXPECT_EQ(PixelFormatAddAlpha(PixelFormat::Format8bppIndexed), PixelFormat::Format32bppArgb);
    EXPECT_EQ(PixelFormatAddAlpha(PixelFormat::Format64bppCmyk), PixelFormat::Format80bppAcmyk);
    EXPECT_EQ(PixelFormatAddAlpha(PixelFormat::Format16bppGrayScale), PixelFormat::Format32bppAGrayScale);
    EXPECT_EQ(PixelFormatAddAlpha(PixelFormat::Format16bppArgb1555), PixelFormat::Format16bppArgb1555);
    EXPECT_EQ(PixelFormatDiscardAlpha(PixelFormat::Format16bppArgb1555), PixelFormat::Format24bppRgb);
    EXPECT_EQ(PixelFormatDiscardAlpha(PixelFormat::Format40bppAcmyk), PixelFormat::Format32bppCmyk);
    EXPECT_EQ(PixelFormatDiscardAlpha(PixelFormat::Format4bppIndexed), PixelFormat::Format4bppIndexed);
}

TEST(PixelFormat, StrideRoundsUpAndWrapsAsDeclared) {
    EXPECT_EQ(CalculateStride(0, PixelFormat::Format24bppRgb, 4), 0U);
    EXPECT_EQ(CalculateStride(9, PixelFormat::Format1bppIndexed, 1), 2U);
    EXPECT_EQ(CalculateStride(1, PixelFormat::Format1bppIndexed, 4), 4U);
    EXPECT_EQ(CalculateStride(3, PixelFormat::Format24bppRgb, 4), 12U);
    EXPECT_EQ(CalculateStride(5, 0U, 4), 0U);
    // 134,217,728 pixels of 32 bits are 2^32 bits: within the limit, and the 32-bit product wraps to 0.
    EXPECT_EQ(CalculateStride(134217728, PixelFormat::Format32bppArgb, 4), 0U);
    EXPECT_THROW(CheckedStride(134217728, PixelFormat::Format32bppArgb, 4), OverflowException);
    // 0x7FFFFFFF8 is the last product that passes.
    EXPECT_NO_THROW(CalculateStride(0x3FFFFFFFU, PixelFormat::Format32bppArgb, 4));
    EXPECT_THROW(CalculateStride(0x40000000U, PixelFormat::Format32bppArgb, 4), OverflowException);
}

TEST(Numeric, RoundsHalvesUpAndChecksTheRange) {
    EXPECT_EQ(Round(1.5), 2);
    EXPECT_EQ(Round(2.5), 3);
    EXPECT_EQ(Round(-0.5), 0);
    EXPECT_EQ(Round(2147483647.4), 2147483647);
    EXPECT_THROW(Round(2147483647.5), OverflowException);
    EXPECT_THROW(Round(std::nan("")), OverflowException);
    EXPECT_EQ(TruncateToInt32(-1.9), -1);
    EXPECT_EQ(TruncateToInt32(1e20), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(TruncateToInt32(std::nan("")), 0);
}

} // namespace
} // namespace ImagingFramework
