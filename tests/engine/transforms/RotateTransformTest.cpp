#include "transforms/RotateTransform.h"

#include "EventsProbe.h"
#include "ResizeReference.h"
#include "SamplePlane.h"
#include "transforms/FlipAndRotateTransform.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <numbers>
#include <vector>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;
using Testing::Int;
using Testing::NoiseRaster;
using Testing::Pixel;
using Testing::SamePixels;
using enum InterpolationMode;

constexpr Transform::ColorRecord Background = {0x2010, 0x8030, 0xF050, 0x9070, 0x40B0};

std::unique_ptr<BitmapData> Rotate(const BitmapData& source, double angle, InterpolationMode mode,
                                   const Transform::ColorRecord& background = Background) {
    RotateTransform transform;
    transform.SetAngle(angle);
    transform.SetInterpolationMode(mode);
    transform.SetBackgroundColor(background);
    std::unique_ptr<BitmapData> result;
    transform.ApplyTransform(&source, nullptr, result);
    return result;
}

// --- The formulas alone, pixel by pixel

class Reference {
public:
    Reference(const BitmapData& source, bool bilinear) : m_source(Testing::ReadPlane(source)), m_bilinear(bilinear) {}

    /// The pixel of a 16.16 position.
    Pixel Sample(Int x, Int y) const {
        if (!m_bilinear) {
            return At((x + 32768) >> 16, (y + 32768) >> 16);
        }
        const Int left = x >> 16;
        const Int top = y >> 16;
        if (((x | y) & 0xFFFF) == 0) {
            return At(left, top);
        }
        const auto row = [&](Int at) { return m_source.Blend(At(left, at), At(left + 1, at), x & 0xFFFF); };
        return m_source.Blend(row(top), row(top + 1), y & 0xFFFF);
    }

private:
    Pixel At(Int x, Int y) const {
        if (x >= 0 && y >= 0 && x < m_source.Width && y < m_source.Height) {
            return m_source.At(x, y);
        }
        Pixel pixel{};
        for (std::size_t c = 0; c < m_source.Samples; ++c) {
            pixel[c] = m_source.Wide ? Background[c] : Background[c] >> 8;
        }
        return pixel;
    }

    Testing::SamplePlane m_source;
    bool m_bilinear;
};

void ExpectFormula(const BitmapData& source, double degrees, InterpolationMode mode) {
    const Testing::SamplePlane result = Testing::ReadPlane(*Rotate(source, degrees, mode));
    const double radians = -degrees * std::numbers::pi / 180.0;
    const auto dxx = static_cast<Int>(std::floor(std::cos(radians) * 65536.0 + 0.5));
    const auto dxy = static_cast<Int>(std::floor(std::sin(radians) * 65536.0 + 0.5));
    const Reference reference(source, mode == Bilinear);
    for (Int y = 0; y < result.Height; ++y) {
        for (Int x = 0; x < result.Width; ++x) {
            // Twice the distances from the centres, so that everything stays whole.
            const Int X = 2 * x - result.Width + 1;
            const Int Y = 2 * y - result.Height + 1;
            const Int sx = ((Int{source.GetWidth()} - 1) * 65536 + X * dxx - Y * dxy) >> 1;
            const Int sy = ((Int{source.GetHeight()} - 1) * 65536 + X * dxy + Y * dxx) >> 1;
            ASSERT_EQ(result.At(x, y), reference.Sample(sx, sy))
                << std::hex << ToWord(source.GetPixelFormat()) << std::dec << " by " << degrees << " mode "
                << static_cast<int>(mode) << " at " << x << " " << y << " of " << source.GetWidth() << "x"
                << source.GetHeight();
        }
    }
}

std::vector<PixelFormat> WholeFormats() {
    std::vector<PixelFormat> formats;
    for (const PixelFormat format : AllPixelFormats()) {
        if (PixelFormatIsWholeChannel(format)) {
            formats.push_back(format);
        }
    }
    return formats;
}

TEST(RotateTransform, EqualsItsFormulaInEveryWholeFormat) {
    std::uint32_t seed = 0;
    for (const PixelFormat format : WholeFormats()) {
        for (const auto& [width, height] : {std::pair{1U, 1U}, {2U, 2U}, {1U, 13U}, {9U, 2U}, {61U, 47U}, {190U, 83U}}) {
            const BitmapData source = NoiseRaster(width, height, format, ++seed);
            for (const double angle : {17.0, 45.0, -33.3, 100.5, 181.0, 271.25, 0.01}) {
                ExpectFormula(source, angle, NearestNeighbour);
                ExpectFormula(source, angle, Bilinear);
            }
        }
        // What lies beside a part of a wider raster is no neighbour.
        const BitmapData host = NoiseRaster(70, 50, format, ++seed);
        BitmapData part;
        part.AttachPartially(host, {9, 8, 61, 50});
        ExpectFormula(part, 30.0, Bilinear);
    }
}

/// Opaque pictures go through vectors as a whole, and those with a few transparent spots in between.
TEST(RotateTransform, OpaqueAndSpottedAlphaEqualTheFormula) {
    BitmapData source = NoiseRaster(211, 90, PixelFormat::Format32bppArgb, 77);
    for (const std::uint32_t every : {0xFFFFFFFFU, 53U}) {
        for (std::uint32_t y = 0; y < source.GetHeight(); ++y) {
            for (std::uint32_t x = 0; x < source.GetWidth(); ++x) {
                const std::uint32_t place = x + 7 * y;
                source.GetScanlineRef(y)[4 * x + 3] = static_cast<std::uint8_t>(place % every == every - 1 ? 9 : 255);
            }
        }
        ExpectFormula(source, 17.0, Bilinear);
    }
}

// --- Numbers found by hand

// 2 by 2 by 45 degrees: the canvas is round(1 + sqrt 2) = 2 wide, steps are 46341, and the first pixel comes from
// (-13573, 32768): 51963 of the left column's 65536, halfway between its rows.
TEST(RotateTransform, BlendsItsEdgesWithTheBackground) {
    BitmapData source(2, 2, PixelFormat::Format8bppGrayScale);
    source.GetScanlineRef(0)[0] = 200;
    source.GetScanlineRef(1)[0] = 100;
    const auto result = Rotate(source, 45, Bilinear, {});
    ASSERT_EQ(result->GetWidth(), 2U);
    ASSERT_EQ(result->GetHeight(), 2U);
    EXPECT_EQ(result->GetScanlineRef(0)[0], 118); // 200 * 51963 >> 16 = 158, 100 * 51963 >> 16 = 79
    const auto white = Rotate(source, 45, Bilinear, {0xFF00});
    EXPECT_EQ(white->GetScanlineRef(0)[0], 171); // 158.6 + 52.8 = 211.4, 79.3 + 52.8 = 132.1
}

TEST(RotateTransform, CanvasHoldsTheWholeRaster) {
    const BitmapData square = NoiseRaster(101, 101, PixelFormat::Format8bppGrayScale, 1);
    for (const double angle : {45.0, -45.0, 135.0, 405.0}) {
        const auto result = Rotate(square, angle, MediumQuality);
        EXPECT_EQ(result->GetWidth(), 142U) << angle;
        EXPECT_EQ(result->GetHeight(), 142U) << angle;
    }
    // 100 (cos 20 + sin 20) + 1 = 129.2; where both sizes are odd, the middle pixel falls on the middle pixel.
    const auto result = Rotate(square, 20, Bilinear);
    ASSERT_EQ(result->GetWidth(), 129U);
    EXPECT_EQ(result->GetScanlineRef(64)[64], square.GetScanlineRef(50)[50]);
}

TEST(RotateTransform, RightAnglesAreExact) {
    const std::pair<double, RotateFlipType> turns[] = {
        {0, RotateFlipType::RotateNoneFlipNone},  {90, RotateFlipType::Rotate90FlipNone},
        {180, RotateFlipType::Rotate180FlipNone}, {270, RotateFlipType::Rotate270FlipNone},
        {-90, RotateFlipType::Rotate270FlipNone}, {360, RotateFlipType::RotateNoneFlipNone},
        {-360, RotateFlipType::RotateNoneFlipNone}, {3690, RotateFlipType::Rotate90FlipNone}};
    for (const PixelFormat format : WholeFormats()) {
        for (const auto& [width, height] : {std::pair{40U, 31U}, {7U, 12U}, {5U, 5U}}) {
            const BitmapData source = NoiseRaster(width, height, format, 9);
            for (const auto& [angle, mode] : turns) {
                FlipAndRotateTransform turn;
                turn.SetMode(mode);
                std::unique_ptr<BitmapData> expected;
                turn.ApplyTransform(&source, nullptr, expected);
                EXPECT_TRUE(SamePixels(*Rotate(source, angle, NearestNeighbour), *expected)) << angle;
                EXPECT_TRUE(SamePixels(*Rotate(source, angle, HighQuality), *expected)) << angle;
            }
        }
    }
}

TEST(RotateTransform, TransparentSurroundingsLendNoColour) {
    BitmapData source(8, 8, PixelFormat::Format32bppArgb);
    for (std::uint32_t i = 0; i < 64; ++i) {
        const std::uint8_t pixel[] = {10, 20, 30, 255};
        std::memcpy(source.GetScanlineRef(i / 8) + i % 8 * 4, pixel, 4);
    }
    const auto result = Rotate(source, 30, Bilinear, {0xFF00, 0xFF00, 0xFF00, 0});
    for (std::uint32_t y = 0; y < result->GetHeight(); ++y) {
        for (std::uint32_t x = 0; x < result->GetWidth(); ++x) {
            const std::uint8_t* const pixel = result->GetScanlineRef(y) + 4 * x;
            EXPECT_TRUE(pixel[3] == 0 || (pixel[0] == 10 && pixel[1] == 20 && pixel[2] == 30)) << x << " " << y;
        }
    }
    EXPECT_EQ(result->GetScanlineRef(0)[0], 255) << "the corner is background as it was given";
}

TEST(RotateTransform, AnglesThatAreNoneAndMisuse) {
    const BitmapData source = NoiseRaster(6, 5, PixelFormat::Format24bppRgb, 4);
    for (const double angle : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), 1e300}) {
        EXPECT_TRUE(SamePixels(*Rotate(source, angle, Bilinear), source)) << angle;
    }
    RotateTransform transform;
    for (const InterpolationMode mode : {Trilinear, Anisotropic4, Lanczos3Filter, ScaleToGray}) {
        EXPECT_THROW(transform.SetInterpolationMode(mode), ArgumentException);
    }
    std::unique_ptr<BitmapData> result;
    for (const PixelFormat format : AllPixelFormats()) {
        if (!PixelFormatIsWholeChannel(format)) {
            const BitmapData other(3, 3, format);
            EXPECT_THROW(transform.ApplyTransform(&other, nullptr, result), UnsupportedPixelFormatException);
        }
    }
    const RegionRect part{0, 0, 3, 3};
    EXPECT_THROW(transform.ApplyTransform(&source, &part, result), ArgumentException);
    // 70712 pixels on each side are no raster; nothing is allocated for them.
    const BitmapData wide(100000, 1, PixelFormat::Format8bppGrayScale);
    transform.SetAngle(45);
    EXPECT_THROW(transform.ApplyTransform(&wide, nullptr, result), OverflowException);
    EventsProbe probe;
    transform.SetEvents(&probe);
    transform.ApplyTransform(&source, nullptr, result);
    EXPECT_EQ(probe.Steps(), probe.Announced());
    EXPECT_EQ(probe.Steps(), result->GetHeight());
}

} // namespace
} // namespace ImagingFramework
