#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include "Throws.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

using Ints = std::vector<std::int32_t>;

TEST(ColorConversion, BetweenTheThreeKinds) {
    // Full gray component replacement: c' = 65535 - 60000, m' = 65535 - 40000, y' = 65535 - 20000; the least is black.
    const CmykColor cmyk = Color::FromArgb32(1234, 60000, 40000, 20000);
    EXPECT_EQ(cmyk.ToArray32(), (Ints{5535, 40000, 20000, 0, 1234}));
    // Blue, green and red weigh 30, 59 and 11: (30 * 20000 + 59 * 40000 + 11 * 60000) / 100.
    const GrayScaleColor gray = Color::FromArgb32(1234, 60000, 40000, 20000);
    EXPECT_EQ(gray.ToArray32(), (Ints{36200, 1234}));
    EXPECT_EQ(RgbColor(Color::FromAGrayScale32(1234, 777)).ToArray32(), (Ints{777, 777, 777, 1234}));
    EXPECT_EQ(CmykColor(Color::FromAGrayScale32(1234, 535)).ToArray32(), (Ints{65000, 0, 0, 0, 1234}));
    // Black alone: 65535 * (1 - 65535 / 65535) = 0; no ink: 65535.
    EXPECT_EQ(RgbColor(CmykColor(9, 0, 0, 0, 65535)).ToArray32(), (Ints{0, 0, 0, 9}));
    EXPECT_EQ(RgbColor(CmykColor(9, 0, 65535, 0, 0)).ToArray32(), (Ints{65535, 0, 65535, 9}));
    // To the own space.
    EXPECT_EQ(RgbColor::Crimson.ConvertColorSpace(ColorSpace::Rgb), RgbColor::Crimson);
}

TEST(ColorConversion, PlatformColours) {
    const Host::ArgbColor platform{1, 2, 3, 4};
    EXPECT_EQ(Color(platform).ToGdiplusColor(), platform);
    EXPECT_EQ(Color::FromAGrayScale(7, 9).ToGdiplusColor(), (Host::ArgbColor{7, 9, 9, 9}));
    EXPECT_EQ(static_cast<Host::ArgbColor>(Color::FromAcmyk(5, 0, 0, 0, 255)).A, 5);
    EXPECT_EQ(GrayScaleColor(Host::ArgbColor{1, 8, 8, 8}).get_Gray(), 8);
}

TEST(ColorConversion, Refusals) {
    for (const auto& convert :
         std::initializer_list<void (*)()>{[] { (void)Color().ConvertColorSpace(ColorSpace::Rgb); },
                                           [] { (void)RgbColor(Color()); }, [] { (void)Color().ToGdiplusColor(); }}) {
        EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(convert), "obj");
    }
    EXPECT_EQ(ThrownText<UnsupportedPixelFormatException>(
                  [] { (void)RgbColor::Red.ConvertColorSpace(ColorSpace::Unknown); }),
              "The specified color space is not supported.");
    EXPECT_THROW((void)RgbColor::Red.ConvertColorSpace(static_cast<ColorSpace>(1)), Host::ArgumentException);
    EXPECT_THROW(Color::Register(Color()), Host::ArgumentNullException);
}

TEST(ColorConversion, RegisteredKindsTakeTheirSpace) {
    struct OpaqueRgb : Color {
        explicit OpaqueRgb(PixelFormat format) : Color(format, {}) {}
    };
    EXPECT_THROW(Color::Register(OpaqueRgb(PixelFormat::Format24bppRgb)), UnsupportedPixelFormatException);
    Color::Register(OpaqueRgb(PixelFormat::Format48bppRgb));
    const Color opaque = Color::FromAGrayScale32(5, 700).ConvertColorSpace(ColorSpace::Rgb);
    EXPECT_EQ(opaque.ToArray32(), (Ints{700, 700, 700}));
    // The library's own kinds do not depend on what is registered.
    EXPECT_EQ(RgbColor(Color::FromAGrayScale32(5, 700)).get_A32(), 5);
    Color::Register(RgbColor());
    EXPECT_EQ(Color::FromAGrayScale32(5, 700).ConvertColorSpace(ColorSpace::Rgb).get_ChannelCount(), 4);
}

TEST(ColorConversionThreading, ConversionsOfManyThreadsAreTheSame) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < 200; ++i) {
                const std::int32_t gray = t * 10000 + i;
                EXPECT_EQ(RgbColor(Color::FromAGrayScale32(t, gray)).ToArray32(), (Ints{gray, gray, gray, t}));
                EXPECT_EQ(CmykColor(RgbColor(t, 65535 - gray, 65535, 65535)).ToArray32(), (Ints{0, 0, 0, gray, t}));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace Corvane::Rasterloom
