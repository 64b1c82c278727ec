#include "transforms/CropTransform.h"

#include "EventsProbe.h"
#include "PixelValue.h"
#include "ResizeReference.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;
using Testing::NoiseRaster;
using Testing::PixelAt;
using Testing::PixelValue;

/// Blue 0x11, green 0x33, red 0x55, alpha 0x77, and a fifth sample, as words.
constexpr Transform::ColorRecord Background = {0x1122, 0x3344, 0x5566, 0x7788, 0x99AA};

/// The pixel that the background must become; for indexed formats the palette's second entry is made to fit it.
PixelValue BackgroundPixel(PixelFormat format) {
    const PixelValue bytes = {0x11, 0x33, 0x55, 0x77, 0x99};
    const PixelValue words = {0x22, 0x11, 0x44, 0x33, 0x66, 0x55, 0x88, 0x77, 0xAA, 0x99};
    PixelValue pixel{};
    if (PixelFormatIsIndexed(format)) {
        pixel[0] = 1;
    } else {
        std::copy_n((PixelFormatIsExtended(format) ? words : bytes).begin(), PixelFormatSize(format) / 8, pixel.begin());
    }
    return pixel;
}

BitmapData Source(std::uint32_t width, std::uint32_t height, PixelFormat format) {
    BitmapData raster = NoiseRaster(width, height, format, 3, PixelFormat::Format32bppArgb);
    if (PixelFormatIsIndexed(format)) {
        ColorMap map(1U << PixelFormatSize(format), PixelFormat::Format32bppArgb);
        const std::uint8_t entry[] = {0x12, 0x32, 0x56, 0x76};
        map.SetEntryArgb(1, entry);
        raster.SetColorMap(map);
    }
    return raster;
}

void ExpectCrop(const BitmapData& source, const RegionRect& rectangle) {
    CropTransform transform;
    transform.SetCropRectangle(rectangle);
    transform.SetBackgroundColor(Background);
    std::unique_ptr<BitmapData> result;
    transform.ApplyTransform(&source, nullptr, result);
    const PixelValue background = BackgroundPixel(source.GetPixelFormat());
    ASSERT_EQ(result->GetPixelFormat(), source.GetPixelFormat());
    ASSERT_EQ(result->GetWidth(), static_cast<std::uint32_t>(rectangle.Right - rectangle.Left + 1));
    ASSERT_EQ(result->GetHeight(), static_cast<std::uint32_t>(rectangle.Bottom - rectangle.Top + 1));
    for (std::uint32_t y = 0; y < result->GetHeight(); ++y) {
        for (std::uint32_t x = 0; x < result->GetWidth(); ++x) {
            const std::int64_t fromX = std::int64_t{rectangle.Left} + x;
            const std::int64_t fromY = std::int64_t{rectangle.Top} + y;
            const bool inside =
                fromX >= 0 && fromY >= 0 && fromX < source.GetWidth() && fromY < source.GetHeight();
            ASSERT_EQ(PixelAt(*result, x, y),
                      inside ? PixelAt(source, static_cast<std::uint64_t>(fromX), static_cast<std::uint32_t>(fromY))
                             : background)
                << std::hex << ToWord(source.GetPixelFormat()) << std::dec << " at " << x << " " << y << " of "
                << rectangle.Left << " " << rectangle.Top;
        }
        ASSERT_TRUE(Testing::RowEndIsClear(*result, y));
    }
}

TEST(CropTransform, EveryFormatAtOddPlacesAndBeyondAllEdges) {
    const RegionRect rectangles[] = {
        {3, 2, 17, 9},     {0, 0, 20, 12},   {-5, -3, 30, 19}, {-9, 4, 5, 40},         {13, -2, 22, 3}, {20, 12, 20, 12},
        {21, 0, 30, 5},    {-7, 0, -1, 3},   {0, 13, 4, 20},   {2, -30, 9, -1},        {-1, -1, 0, 0},  {1, 0, 8, 0},
        {-100000, 5, 0, 6}};
    for (const PixelFormat format : AllPixelFormats()) {
        const BitmapData source = Source(21, 13, format);
        for (const RegionRect& rectangle : rectangles) {
            ExpectCrop(source, rectangle);
        }
        // A part of a wider raster is read no further than its own last pixel's byte.
        BitmapData part;
        part.AttachPartially(source, {0, 3, 16, 11});
        ExpectCrop(part, {3, -1, 19, 8});
    }
    // Runs of whole words, with and without a shift.
    for (const PixelFormat format : {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed}) {
        const BitmapData wide = Source(403, 3, format);
        for (const std::int32_t left : {-11, 0, 1, 8, 37}) {
            ExpectCrop(wide, {left, -1, 399, 3});
        }
    }
}

TEST(CropTransform, KeepsWhatBelongsToTheRaster) {
    BitmapData source = Source(9, 9, PixelFormat::Format4bppIndexed);
    source.SetHorizontalResolution(300);
    source.SetVerticalResolution(150);
    CropTransform transform;
    transform.SetCropWidth(4);
    transform.SetCropHeight(5);
    std::unique_ptr<BitmapData> result;
    EventsProbe probe;
    transform.SetEvents(&probe);
    transform.ApplyTransform(&source, nullptr, result);
    EXPECT_EQ(*result->GetColorMapRef(), *source.GetColorMapRef());
    EXPECT_DOUBLE_EQ(result->GetHorizontalResolution(), 300.0);
    EXPECT_DOUBLE_EQ(result->GetVerticalResolution(), 150.0);
    EXPECT_EQ(probe.Steps(), 5);
    EXPECT_EQ(probe.Announced(), 5);
    // Without a palette there is nothing to search.
    source.SetColorMapRef(nullptr);
    transform.SetCropX(-3);
    result.reset();
    transform.ApplyTransform(&source, nullptr, result);
    EXPECT_EQ(result->GetScanlineRef(0)[0], 0);
}

TEST(CropTransform, Misuse) {
    const BitmapData source = Source(4, 4, PixelFormat::Format24bppRgb);
    std::unique_ptr<BitmapData> result;
    CropTransform transform;
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, result), ArgumentOutOfRangeException);
    EXPECT_THROW(transform.SetCropWidth(0), ArgumentOutOfRangeException);
    EXPECT_THROW(transform.SetCropHeight(0), ArgumentOutOfRangeException);
    EXPECT_THROW(transform.SetCropRectangle({3, 0, 2, 0}), ArgumentException);
    EXPECT_THROW(transform.SetCropRectangle({0, 3, 0, 2}), ArgumentException);
    EXPECT_THROW(transform.SetCropRectangle({std::numeric_limits<std::int32_t>::min(), 0,
                                             std::numeric_limits<std::int32_t>::max(), 0}),
                 ArgumentOutOfRangeException);
    transform.SetCropRectangle({-2000000000, -2000000000, 2000000000, 2000000000});
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, result), OverflowException);
    transform.SetCropRectangle({0, 0, 1, 1});
    const RegionRect part{0, 0, 2, 3};
    EXPECT_THROW(transform.ApplyTransform(&source, &part, result), ArgumentException);
    EXPECT_EQ(result, nullptr);
}

} // namespace
} // namespace ImagingFramework
