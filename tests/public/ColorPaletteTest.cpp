#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/BitmapStatisticsProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include "Throws.h"

#include <gtest/gtest.h>

namespace Corvane::Rasterloom {
namespace {

/// Entries as 0xAARRGGBB.
std::vector<std::uint32_t> Words(ColorPalette& palette) {
    std::vector<std::uint32_t> words;
    for (const RgbColor& color : palette.Export()) {
        words.push_back(color.ToInt32());
    }
    return words;
}

using WordList = std::vector<std::uint32_t>;

TEST(ColorPalette, IsMadeOfWhatItIsGiven) {
    const RgbColor colors[] = {RgbColor(0x80FF0000U), RgbColor(0xFF00FF00U)};
    ColorPalette opaque(colors, false);
    EXPECT_EQ(Words(opaque), (WordList{0xFFFF0000U, 0xFF00FF00U}));
    ColorPalette translucent(colors, true);
    EXPECT_EQ(translucent.get_Item(0).get_A(), 0x80);
    ColorPalette safe(ColorPaletteType::WebSafe);
    EXPECT_EQ(safe.get_Count(), 216);
    const Host::ArgbColor platform[] = {{1, 2, 3, 4}, {255, 6, 7, 8}, {0, 9, 10, 11}};
    ColorPalette fromPlatform(platform);
    EXPECT_EQ(Words(fromPlatform), (WordList{0x01020304U, 0xFF060708U, 0x00090A0BU}));
    EXPECT_FALSE(fromPlatform._IsChanged());
    EXPECT_EQ(static_cast<std::vector<Host::ArgbColor>>(fromPlatform),
              std::vector<Host::ArgbColor>(std::begin(platform), std::end(platform)));
}

TEST(ColorPalette, ChecksItsArguments) {
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { ColorPalette palette(ColorPaletteType::Adaptive); }),
              "The color palette type specified is not supported.");
    for (const int count : {-1, 1, 257}) {
        EXPECT_THROW(ColorPalette(count, true), Host::ArgumentOutOfRangeException);
        Bitmap bitmap(2, 2, PixelFormat::Format24bppRgb);
        EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([&] { ColorPalette palette(bitmap, count, false); }),
                  "The value should be in the range of [2, 256]");
    }
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(
                  [] { ColorPalette palette(std::span<const Host::ArgbColor>{}); }),
              "palette");
    Bitmap bitmap;
    EXPECT_EQ(ThrownText<BitmapEmptyException>([&] { ColorPalette palette(bitmap, 16, false); }), "Bitmap is empty.");
    bitmap.Create(2, 2, PixelFormat::Format24bppRgb);
    EXPECT_THROW(ColorPalette(bitmap, 16, false, static_cast<ColorQuantizationAlgorithm>(2)), Host::ArgumentException);
    EXPECT_THROW(ColorPalette(bitmap, 7, true), Host::ArgumentOutOfRangeException);
    ColorPalette empty;
    EXPECT_EQ(ThrownText<ColorPaletteEmptyException>([&] { empty.FindNearestIndex(RgbColor::Red); }),
              "Color palette \"ColorPalette\" has not been filled up with data.");
    ColorPalette two(2, false);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { two.FindNearestIndex(Color()); }), "color");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { two.get_Item(2); }), "itemIndex");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { two.SetColorKey(-1); }), "entryIndex");
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { two.Import(std::vector<RgbColor>(3)); }), "array");
}

TEST(ColorPalette, IsMadeFromTheColorsOfABitmap) {
    Bitmap bitmap(RgbColor::Red, 4, 4, PixelFormat::Format32bppArgb);
    bitmap.SetPixel(1, 1, RgbColor(0xFF0000FFU));
    bitmap.SetPixel(2, 1, RgbColor(0x40123456U));
    ColorPalette opaque(bitmap, 16, false);
    EXPECT_EQ(Words(opaque), (WordList{0xFF123456U, 0xFF0000FFU, 0xFFFF0000U}));
    EXPECT_EQ(opaque.get_Type(), ColorPaletteType::Adaptive);
    EXPECT_FALSE(opaque.get_HasAlpha());
    ColorPalette key(bitmap, 16, true, ColorQuantizationAlgorithm::Octree, 200);
    EXPECT_EQ(Words(key), (WordList{0, 0xFFFF0000U, 0xFF0000FFU}));
    ColorPalette translucent(bitmap, 16, true, ColorQuantizationAlgorithm::MedianCut, 0, false);
    EXPECT_EQ(translucent.FindNearestIndex(RgbColor::Red), 2);
    EXPECT_EQ(translucent.get_Item(0).ToInt32(), 0x40123456U);
    Bitmap indexed(4, 4, PixelFormat::Format8bppIndexed, &key);
    ColorPalette copy(indexed, 2, false);
    EXPECT_EQ(Words(copy), Words(key)) << "its own palette, whatever is asked for";
    copy.set_Item(0, RgbColor::White);
    EXPECT_EQ(indexed.get_Palette()->get_Item(0).ToInt32(), 0U);
}

TEST(ColorPalette, KeepsOneColorKey) {
    ColorPalette palette(ColorPaletteType::Bicolor);
    palette.SetColorKey(RgbColor(0xFFEEEEEEU));
    EXPECT_EQ(Words(palette), (WordList{0xFF000000U, 0x00FFFFFFU}));
    palette.SetColorKey(0);
    EXPECT_EQ(Words(palette), (WordList{0x00000000U, 0xFFFFFFFFU}));
    EXPECT_TRUE(palette._IsChanged());
    // The search takes all entries for what they are: transparent black is farther from black than its colour tells.
    EXPECT_EQ(palette.FindNearestIndex(RgbColor(0xFF787878U)), 1);
}

TEST(ColorPalette, IsWalkedByACursor) {
    auto palette = std::make_unique<ColorPalette>(ColorPaletteType::Bicolor);
    ColorPaletteEnumerator cursor = palette->GetEnumerator();
    EXPECT_THROW(cursor.get_Current(), Host::InvalidOperationException);
    EXPECT_TRUE(cursor.MoveNext());
    palette->set_Item(0, RgbColor::Red);
    EXPECT_EQ(cursor.get_Current().ToInt32(), 0xFFFF0000U);
    EXPECT_TRUE(cursor.MoveNext());
    EXPECT_EQ(cursor.get_Current().ToInt32(), 0xFFFFFFFFU);
    EXPECT_FALSE(cursor.MoveNext());
    EXPECT_FALSE(cursor.MoveNext());
    EXPECT_THROW(cursor.get_Current(), Host::InvalidOperationException);
    cursor.Reset();
    EXPECT_TRUE(cursor.MoveNext());
    const auto copy = palette->Clone();
    palette.reset();
    EXPECT_THROW(cursor.MoveNext(), Host::ObjectDisposedException);
    EXPECT_EQ(copy->get_Item(0).ToInt32(), 0xFFFF0000U);
}

TEST(BitmapStatisticsProvider, CountsColors) {
    Bitmap bitmap;
    EXPECT_THROW(bitmap.get_Statistics()->GetSumHistogram(), BitmapEmptyException);
    bitmap.Create(RgbColor(0xFF0A141EU), 3, 2, PixelFormat::Format24bppRgb); // red 10, green 20, blue 30
    const auto sum = bitmap.get_Statistics()->GetSumHistogram();
    EXPECT_EQ(sum->get_Length(), 256);
    EXPECT_EQ(sum->get_Item(10), 6);
    EXPECT_EQ(sum->get_ChannelCount(), 3);
    EXPECT_DOUBLE_EQ(sum->get_Mean(), 20.0);
    const auto gray = bitmap.get_Statistics()->GetLuminosityHistogram();
    EXPECT_EQ(gray->get_Median(), 21); // (30 * 30 + 59 * 20 + 11 * 10) / 100
    EXPECT_EQ(gray->get_Item(21), 6);
    EXPECT_FALSE(bitmap.get_Locked());
    bitmap.Create(2, 2, PixelFormat::Format8bppIndexed);
    EXPECT_THROW(bitmap.get_Statistics()->GetSumHistogram(), UnsupportedPixelFormatException);
    auto kept = bitmap.get_Statistics();
    bitmap.Dispose();
    EXPECT_THROW(kept->GetSumHistogram(), Host::ObjectDisposedException);
}

} // namespace
} // namespace Corvane::Rasterloom
