#include "transforms/Histogram.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

BitmapData PixelsOf(PixelFormat format, std::uint32_t width, std::uint32_t height, const auto& samples) {
    BitmapData raster(width, height, format);
    for (std::uint32_t y = 0; y < height; ++y) {
        std::memcpy(raster.GetScanlineRef(y), reinterpret_cast<const std::uint8_t*>(samples) + y * raster.GetRowSize(),
                    raster.GetRowSize());
    }
    return raster;
}

// Two by two: gray = (30 * blue + 59 * green + 11 * red) / 100, so 18, 29, 7 and 100.
constexpr std::uint8_t Argb[] = {10, 20, 30, 5, 100, 0, 0, 6, 0, 0, 70, 7, 100, 100, 100, 8};

TEST(Histogram, CountsSamplesOrGrays) {
    const BitmapData raster = PixelsOf(PixelFormat::Format32bppArgb, 2, 2, Argb);
    Histogram histogram;
    histogram.BuildHistogram(raster, HistogramMode::Sum);
    EXPECT_EQ(histogram.GetSize(), 256U);
    EXPECT_EQ(histogram.GetChannelCount(), 3U);
    EXPECT_EQ(histogram.GetEntry(0), 4U);
    EXPECT_EQ(histogram.GetEntry(100), 4U);
    EXPECT_EQ(histogram.GetEntry(70), 1U);
    EXPECT_EQ(histogram.GetEntry(5), 0U) << "alpha does not count";
    histogram.BuildHistogram(raster, HistogramMode::Luminosity);
    EXPECT_EQ(histogram.GetChannelCount(), 1U);
    for (const std::uint32_t gray : {18U, 30U, 7U, 100U}) {
        EXPECT_EQ(histogram.GetEntry(gray), 1U) << gray;
    }
    // Channel 2 and alpha of the right column alone, its corners the other way round.
    histogram.GetChannels().SetIsAlphaProcessed(true);
    histogram.GetChannels().DeselectAllChannels();
    histogram.GetChannels().AddChannelsToSelection(2, 2);
    const RegionRect right{1, 1, 1, 0};
    histogram.BuildHistogram(raster, HistogramMode::Sum, &right);
    EXPECT_EQ(histogram.GetWidth() * histogram.GetHeight() * histogram.GetChannelCount(), 4U);
    for (const std::uint32_t value : {0U, 100U, 6U, 8U}) {
        EXPECT_EQ(histogram.GetEntry(value), 1U) << value;
    }
}

TEST(Histogram, TellsItsStatistics) {
    const std::uint16_t words[] = {0, 300, 300, 60000};
    const BitmapData raster = PixelsOf(PixelFormat::Format16bppGrayScale, 4, 1, words);
    Histogram histogram;
    for (const auto mode : {HistogramMode::Sum, HistogramMode::Luminosity}) {
        histogram.BuildHistogram(raster, mode);
        EXPECT_EQ(histogram.GetSize(), 65536U);
        EXPECT_EQ(histogram.GetEntry(300), 2U);
        EXPECT_DOUBLE_EQ(histogram.CalculateMean(), 15150.0);
        // Squares of 15150, twice 14850, and 44850.
        EXPECT_DOUBLE_EQ(histogram.CalculateStdDev(), std::sqrt((229522500.0 + 2 * 220522500.0 + 2011522500.0) / 4));
    }
    EXPECT_EQ(histogram.CalculateMedian(), 300U);
    EXPECT_EQ(histogram.GetPercentile(0.0F), 0U);
    EXPECT_EQ(histogram.GetPercentile(0.125F), 300U) << "half a sample rounds up";
    EXPECT_EQ(histogram.GetPercentile(0.75F), 60000U);
    EXPECT_EQ(histogram.GetPercentile(1.0F), 65535U) << "no sum exceeds all";
}

TEST(Histogram, ChecksItsArguments) {
    Histogram histogram;
    EXPECT_THROW(histogram.GetEntry(0), ArgumentOutOfRangeException);
    EXPECT_THROW(histogram.BuildHistogram(BitmapData(), HistogramMode::Sum), NotInitializedException);
    for (const auto format : {PixelFormat::Format8bppIndexed, PixelFormat::Format16bppRgb565}) {
        EXPECT_THROW(histogram.BuildHistogram(BitmapData(1, 1, format), HistogramMode::Sum),
                     UnsupportedPixelFormatException);
    }
    const BitmapData gray(2, 2, PixelFormat::Format8bppGrayScale);
    for (const RegionRect region : {RegionRect{0, 0, 2, 1}, RegionRect{0, -1, 1, 1}}) {
        EXPECT_THROW(histogram.BuildHistogram(gray, HistogramMode::Sum, &region), ArgumentOutOfRangeException);
    }
    histogram.BuildHistogram(gray, HistogramMode::Sum);
    EXPECT_THROW(histogram.SetEntry(256, 1), ArgumentOutOfRangeException);
    EXPECT_THROW(histogram.GetPercentile(1.01F), ArgumentOutOfRangeException);
    EXPECT_THROW(histogram.GetPercentile(std::nanf("")), ArgumentOutOfRangeException);
}

} // namespace
} // namespace ImagingFramework
