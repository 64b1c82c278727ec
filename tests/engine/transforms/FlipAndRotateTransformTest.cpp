#include "transforms/FlipAndRotateTransform.h"

#include "EventsProbe.h"
#include "PixelValue.h"
#include "ResizeReference.h"

#include <gtest/gtest.h>
#include <memory>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;
using Testing::NoiseRaster;
using Testing::PixelAt;
using enum RotateFlipType;

std::unique_ptr<BitmapData> Apply(const BitmapData& source, RotateFlipType mode) {
    FlipAndRotateTransform transform;
    transform.SetMode(mode);
    std::unique_ptr<BitmapData> result;
    transform.ApplyTransform(&source, nullptr, result);
    return result;
}

/// The source pixel of each destination pixel, by the definition of the modes.
std::pair<std::uint32_t, std::uint32_t> Origin(RotateFlipType mode, std::uint32_t x, std::uint32_t y, std::uint32_t w,
                                               std::uint32_t h) {
    switch (mode) {
    case Rotate90FlipNone:
        return {y, h - 1 - x};
    case Rotate180FlipNone:
        return {w - 1 - x, h - 1 - y};
    case Rotate270FlipNone:
        return {w - 1 - y, x};
    case RotateNoneFlipX:
        return {w - 1 - x, y};
    case Rotate90FlipX:
        return {y, x};
    case Rotate180FlipX:
        return {x, h - 1 - y};
    case Rotate270FlipX:
        return {w - 1 - y, h - 1 - x};
    default:
        return {x, y};
    }
}

void ExpectEveryMode(const BitmapData& source) {
    for (std::uint32_t value = 0; value < 8; ++value) {
        const auto mode = static_cast<RotateFlipType>(value);
        const auto result = Apply(source, mode);
        const bool swapped = value % 2 == 1;
        ASSERT_EQ(result->GetPixelFormat(), source.GetPixelFormat());
        ASSERT_EQ(result->GetWidth(), swapped ? source.GetHeight() : source.GetWidth());
        ASSERT_EQ(result->GetHeight(), swapped ? source.GetWidth() : source.GetHeight());
        for (std::uint32_t y = 0; y < result->GetHeight(); ++y) {
            for (std::uint32_t x = 0; x < result->GetWidth(); ++x) {
                const auto [fromX, fromY] = Origin(mode, x, y, source.GetWidth(), source.GetHeight());
                ASSERT_EQ(PixelAt(*result, x, y), PixelAt(source, fromX, fromY))
                    << std::hex << ToWord(source.GetPixelFormat()) << std::dec << " mode " << value << " at " << x << " "
                    << y << " of " << source.GetWidth() << "x" << source.GetHeight();
            }
            ASSERT_TRUE(Testing::RowEndIsClear(*result, y));
        }
    }
}

// Odd sizes leave rests behind bytes, vectors and tiles; some are thinner than any of those.
TEST(FlipAndRotateTransform, EveryModeInEveryFormat) {
    const std::pair<std::uint32_t, std::uint32_t> sizes[] = {{1, 1}, {1, 9}, {9, 1}, {3, 2},    {5, 5},   {8, 16},
                                                             {17, 33}, {64, 7}, {67, 19}, {131, 150}, {16, 16}};
    for (const PixelFormat format : AllPixelFormats()) {
        for (const auto& [width, height] : sizes) {
            ExpectEveryMode(NoiseRaster(width, height, format, width * height));
        }
        // A part of a wider raster, whose bytes on either side must not matter.
        const BitmapData host = NoiseRaster(80, 40, format, 5);
        BitmapData part;
        part.AttachPartially(host, {16, 3, 72, 40});
        ExpectEveryMode(part);
    }
}

TEST(FlipAndRotateTransform, PropertiesProgressAndMisuse) {
    BitmapData source = NoiseRaster(150, 70, PixelFormat::Format8bppIndexed, 2);
    source.SetHorizontalResolution(204);
    source.SetVerticalResolution(98);
    FlipAndRotateTransform transform;
    transform.SetMode(Rotate270FlipNone);
    EventsProbe probe;
    transform.SetEvents(&probe);
    std::unique_ptr<BitmapData> result;
    transform.ApplyTransform(&source, nullptr, result);
    EXPECT_EQ(probe.Announced(), 150);
    EXPECT_EQ(probe.Steps(), 150);
    EXPECT_EQ(*result->GetColorMapRef(), *source.GetColorMapRef());
    EXPECT_DOUBLE_EQ(result->GetHorizontalResolution(), 204.0);
    EXPECT_DOUBLE_EQ(result->GetVerticalResolution(), 98.0);
    result.reset();
    const RegionRect part{0, 0, 3, 3};
    EXPECT_THROW(transform.ApplyTransform(&source, &part, result), ArgumentException);
    EXPECT_THROW(transform.SetMode(static_cast<RotateFlipType>(8)), ArgumentException);
}

} // namespace
} // namespace ImagingFramework
