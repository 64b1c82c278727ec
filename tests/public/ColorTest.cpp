#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Host/Errors.h>

#include "Throws.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace Corvane::Rasterloom {
namespace {

using Ints = std::vector<std::int32_t>;

/// Of any argument failure.
std::string ParameterOf(const std::function<void()>& call) {
    return ThrownParameter<Host::ArgumentException>(call);
}

TEST(Color, FactoriesStoreWhatTheyAreGiven) {
    const struct {
        Color Made;
        Ints Channels; // in memory order
    } cases[] = {
        {Color::FromArgb(1, 2, 3, 4), {0x400, 0x300, 0x200, 0x100}},
        {Color::FromRgb(255, 255, 255), {65280, 65280, 65280, 65280}},
        {Color::FromArgb32(1, 2, 3, 65535), {65535, 3, 2, 1}},
        {Color::FromRgb32(1, 2, 3), {3, 2, 1, 65535}},
        {Color::FromArgb32(0x80112233U), {0x3300, 0x2200, 0x1100, 0x8000}},
        {Color::FromArgb64(0x1111222233334444U), {0x4444, 0x3333, 0x2222, 0x1111}},
        {Color::FromCmyk(1, 2, 3, 4), {0x400, 0x300, 0x200, 0x100, 65280}},
        {Color::FromAcmyk(9, 1, 2, 3, 4), {0x400, 0x300, 0x200, 0x100, 0x900}},
        {Color::FromCmyk32(1, 2, 3, 4), {4, 3, 2, 1, 65535}},
        {Color::FromAcmyk32(9, 1, 2, 3, 4), {4, 3, 2, 1, 9}},
        {Color::FromCmyk32(0xFF112233U), {0x3300, 0x2200, 0x1100, 0xFF00, 65280}},
        {Color::FromCmyk64(0x1111222233334444U), {0x4444, 0x3333, 0x2222, 0x1111, 65535}},
        {Color::FromGrayScale(7), {0x700, 65280}},
        {Color::FromAGrayScale(1, 2), {0x200, 0x100}},
        {Color::FromGrayScale32(7), {7, 65535}},
        {Color::FromAGrayScale32(1, 2), {2, 1}},
        {Color::FromAGrayScale32(0xFFFF8040U), {0x4000, 0x8000}},
        {Color::FromAGrayScale64(0xFFFFFFFF11112222U), {0x2222, 0x1111}},
        {Color::FromGdiplusColor({1, 2, 3, 4}), {0x400, 0x300, 0x200, 0x100}},
        {RgbColor(1, 2, 3, 4), {4, 3, 2, 1}},
        {RgbColor(0x80112233U), {0x3300, 0x2200, 0x1100, 0x8000}},
        {CmykColor(std::uint64_t{0x1111222233334444U}), {0x4444, 0x3333, 0x2222, 0x1111, 65535}},
        {GrayScaleColor(0x8040), {0x4000, 0x8000}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(test.Made.ToArray32(), test.Channels) << test.Made.ToString();
    }
}

TEST(Color, FirstBadChannelIsReported) {
    EXPECT_EQ(ParameterOf([] { Color::FromArgb32(65536, -1, 0, 0); }), "alpha");
    EXPECT_EQ(ParameterOf([] { RgbColor(0, -1, 65536, 0); }), "red");
    EXPECT_EQ(ParameterOf([] { Color::FromRgb32(0, 0, -1); }), "blue");
    EXPECT_EQ(ParameterOf([] { CmykColor(0, 0, 0, 65536, 65536); }), "yellow");
    EXPECT_EQ(ParameterOf([] { Color::FromCmyk32(0, 0, 0, -1); }), "black");
    EXPECT_EQ(ParameterOf([] { GrayScaleColor(65535, 65536); }), "gray");
}

TEST(Color, ChannelsByNumberAndName) {
    const Color cmyk = Color::FromAcmyk32(0x1234, 0x2345, 0x3456, 0x4567, 0x5678);
    EXPECT_EQ(cmyk.GetChannel32(ColorChannel::Alpha), 0x1234);
    EXPECT_EQ(cmyk.GetChannel(4), 0x12);
    EXPECT_EQ(cmyk.GetChannel(ColorChannel::Cyan), 0x23);
    EXPECT_EQ(cmyk.GetChannel32(ColorChannel::Black), 0x5678);
    EXPECT_EQ(cmyk.ToArray(), (std::vector<std::uint8_t>{0x56, 0x45, 0x34, 0x23, 0x12}));

    const Color rgb = Color::FromRgb(1, 2, 3);
    EXPECT_EQ(rgb.GetChannel32(ColorChannel::Alpha), 65280);
    EXPECT_EQ(ParameterOf([&] { rgb.GetChannel(4); }), "index");
    EXPECT_EQ(ParameterOf([&] { rgb.GetChannel32(-1); }), "index");
    EXPECT_EQ(ParameterOf([&] { rgb.GetChannel(static_cast<ColorChannel>(4)); }), "channel");
    const Color gray = Color::FromAGrayScale(8, 9);
    EXPECT_EQ(gray.GetChannel(ColorChannel::Alpha), 8);
    EXPECT_EQ(gray.GetChannel(ColorChannel::Gray), 9);
    EXPECT_EQ(ParameterOf([&] { gray.GetChannel(ColorChannel::Red); }), "index");
    EXPECT_EQ(gray.get_ColorSpace(), ColorSpace::GrayScale);
    EXPECT_EQ(gray.get_ChannelCount(), 2);
}

TEST(Color, PackingAndTexts) {
    EXPECT_EQ(Color::FromRgb(255, 255, 255).ToInt32(), 0xFFFFFFFFU);
    EXPECT_EQ(Color::FromArgb32(0x1122, 0x3344, 0x5566, 0x7788).ToInt32(), 0x11335577U);
    EXPECT_EQ(Color::FromArgb32(0x1122, 0x3344, 0x5566, 0x7788).ToInt64(), 0x1122334455667788U);
    EXPECT_EQ(Color::FromAcmyk32(0, 0x1122, 0x3344, 0x5566, 0x7788).ToInt32(), 0x11335577U);
    EXPECT_EQ(Color::FromAcmyk32(65535, 0x1122, 0x3344, 0x5566, 0x7788).ToInt64(), 0x1122334455667788U);
    EXPECT_EQ(Color::FromAGrayScale32(0x1122, 0x3344).ToInt32(), 0x1133U);
    EXPECT_EQ(Color::FromAGrayScale32(0x1122, 0x3344).ToInt64(), 0x11223344U);
    EXPECT_EQ(static_cast<std::uint32_t>(RgbColor(0x11223344U)), 0x11223344U);

    EXPECT_EQ(Color::FromArgb(1, 2, 3, 4).ToString(), "Color [A=1, R=2, G=3, B=4]");
    EXPECT_EQ(Color::FromAcmyk(1, 2, 3, 4, 5).ToString(), "Color [A=1, C=2, M=3, Y=4, K=5]");
    EXPECT_EQ(Color::FromAGrayScale(1, 2).ToString(), "Color [A=1, Gray=2]");
}

TEST(Color, ComparisonIsOfOneKind) {
    EXPECT_TRUE(Color::FromRgb(1, 2, 3) == Color::FromArgb(255, 1, 2, 3));
    EXPECT_TRUE(Color::FromRgb(255, 0, 0) != Color::FromRgb32(65280, 0, 0)); // alpha 65280 and 65535
    EXPECT_THROW((void)(Color::FromRgb(0, 0, 0) == Color::FromGrayScale(0)), Host::InvalidCastException);

    const Color none;
    const Color black = Color::FromRgb(0, 0, 0);
    EXPECT_TRUE(none.IsNull());
    EXPECT_FALSE(black.IsNull());
    EXPECT_EQ(none.get_ColorSpace(), ColorSpace::Unknown);
    for (const std::function<void()>& call : std::initializer_list<std::function<void()>>{
             [&] { (void)(black == none); }, [&] { (void)none.Equals(black); }, [&] { none.ToInt32(); },
             [&] { none.ToInt64(); }, [&] { none.GetChannel(0); }, [&] { none.GetChannel32(ColorChannel::Alpha); },
             [&] { none.ToArray(); }, [&] { none.ToArray32(); }, [&] { (void)none.ToString(); }}) {
        EXPECT_EQ(ParameterOf(call), "obj");
    }
}

TEST(Color, NamedColoursAreWidenedByShift) {
    EXPECT_EQ(RgbColor::White.ToArray32(), Ints({65280, 65280, 65280, 65280}));
    EXPECT_EQ(RgbColor::Transparent.ToInt32(), 0x00FFFFFFU);
    EXPECT_EQ(RgbColor::CornflowerBlue.ToInt32(), 0xFF6495EDU);
    EXPECT_EQ(RgbColor::DarkGray.ToInt32(), 0xFFA9A9A9U);
    static_assert(RgbColor::Gray.get_A32() == 65280 && RgbColor::Gray.get_R() == 0x80);
    static_assert(RgbColor::Green.get_G() == 0x80 && RgbColor::Lime.get_G() == 0xFF);
}

TEST(Color, FromHsl) {
    // A lightness of 0.5 is 32767 steps of 65535, so that full channels are 65534.
    const struct {
        float Hue, Saturation, Lightness;
        Ints Rgb;
    } cases[] = {
        {0, 1, 0, {0, 0, 0}},
        {0, 1, 0.5F, {65534, 0, 0}},
        {120, 1, 0.5F, {0, 65534, 0}},
        {240, 1, 0.5F, {0, 0, 65534}},
        {90, 1, 0.5F, {32767, 65534, 0}},
        {30, 0.5F, 0.25F, {24574, 16383, 8191}},
        {210.9F, 0.4F, 0.75F, {42597, 49151, 55704}}, // the fraction of the hue is lost
        {300, 1, 1, {65535, 65535, 65535}},
        {400, 1, 0.5F, {65534, 43689, 0}}, // one turn is taken off
        {-30, 1, 0.5F, {0, 0, 0}},         // 65506 degrees after the cut to 16 bits
        {std::numeric_limits<float>::quiet_NaN(), 1, 0.5F, {65534, 0, 0}},
    };
    for (const auto& test : cases) {
        const Color color = Color::FromHsl(test.Hue, test.Saturation, test.Lightness);
        EXPECT_EQ(color.ToArray32(), Ints({test.Rgb[2], test.Rgb[1], test.Rgb[0], 65535})) << test.Hue;
    }
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(ParameterOf([] { Color::FromHsl(0, -0.01F, 2); }), "saturation");
    EXPECT_EQ(ParameterOf([&] { Color::FromHsl(0, nan, 0); }), "saturation");
    EXPECT_EQ(ParameterOf([] { Color::FromHsl(0, 1, 1.01F); }), "lightness");
    EXPECT_EQ(ParameterOf([&] { Color::FromHsl(0, 1, nan); }), "lightness");
}

TEST(Color, ImportArrayWantsEveryChannel) {
    struct Probe : CmykColor {
        using CmykColor::ImportArray32;
    };
    Probe probe;
    probe.ImportArray32(Ints{1, 2, 3, 4, 5});
    EXPECT_EQ(probe.ToArray32(), (Ints{1, 2, 3, 4, 5}));
    EXPECT_EQ(ParameterOf([&] { probe.ImportArray32({}); }), "array");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { probe.ImportArray32(Ints{1, 2, 3, 4}); }),
              "Number of array items should be the same as channels count.");
}

} // namespace
} // namespace Corvane::Rasterloom
