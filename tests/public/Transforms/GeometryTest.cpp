#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/Crop.h>
#include <Corvane/Rasterloom/Transforms/Rotate.h>
#include <Corvane/Rasterloom/Transforms/RotateAndFlip.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include "Ramp.h"
#include "Throws.h"

#include <gtest/gtest.h>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

using Host::RotateFlipType;
using Transforms::InterpolationMode;

std::uint32_t At(Bitmap& bitmap, std::int32_t x, std::int32_t y) { return bitmap.GetPixel(x, y).ToInt32(); }

TEST(Crop, CutsAndExtends) {
    Bitmap bitmap(10, 8, PixelFormat::Format32bppArgb);
    Ramp(bitmap);
    std::vector<BitmapChange> told;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) { told.push_back(args.get_Change()); });
    bitmap.get_Transforms()->Crop(3, 2, 5, 4);
    EXPECT_EQ(bitmap.get_Width(), 5);
    EXPECT_EQ(bitmap.get_Height(), 4);
    EXPECT_EQ(At(bitmap, 0, 0), RampAt(3, 2));
    EXPECT_EQ(At(bitmap, 4, 3), RampAt(7, 5));
    bitmap.get_Transforms()->Crop(Host::RectangleF(-1, -2, 7, 7));
    EXPECT_EQ(At(bitmap, 0, 6), 0x00FFFFFFU) << "transparent white";
    EXPECT_EQ(At(bitmap, 1, 2), RampAt(3, 2));
    bitmap.get_Transforms()->Crop(Host::Rectangle{0, 0, 8, 7}, RgbColor::Red);
    EXPECT_EQ(At(bitmap, 7, 6), 0xFFFF0000U);
    bitmap.get_Transforms()->Crop(7.0F, 0.0F, 2.0F, 1.0F, Color::FromRgb(1, 2, 3));
    EXPECT_EQ(At(bitmap, 1, 0), 0xFF010203U);
    EXPECT_EQ(told, std::vector<BitmapChange>(4, BitmapChange::Crop));
}

TEST(Crop, FindsTheBackgroundInPalettesAndColourSpaces) {
    for (const PixelFormat format :
         {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed}) {
        ColorPalette palette(2, false);
        palette.set_Item(0, RgbColor::Black);
        palette.set_Item(1, Color::FromRgb(200, 30, 30));
        Bitmap bitmap(RgbColor::Black, 5, 3, format, &palette);
        bitmap.get_Transforms()->Crop(-2, -1, 9, 5, RgbColor::Red);
        EXPECT_EQ(bitmap.get_PixelFormat(), format);
        EXPECT_EQ(At(bitmap, 0, 1), 0xFFC81E1EU);
        EXPECT_EQ(At(bitmap, 2, 1), 0xFF000000U);
        EXPECT_EQ(At(bitmap, 7, 1), 0xFFC81E1EU);
        bitmap.get_Transforms()->Crop(-1, 0, 2, 1, Color::FromCmyk(255, 255, 255, 255));
        EXPECT_EQ(At(bitmap, 0, 0), 0xFF000000U);
    }
    Bitmap gray(Color::FromGrayScale(10), 2, 2, PixelFormat::Format16bppGrayScale);
    gray.get_Transforms()->Crop(1, 1, 2, 1, RgbColor::White);
    EXPECT_EQ(gray.GetPixel(1, 0).GetChannel(0), 255);
    Bitmap cmyk(Color::FromCmyk(1, 2, 3, 4), 2, 2, PixelFormat::Format32bppCmyk);
    cmyk.get_Transforms()->Crop(1, 1, 2, 1, Color::FromCmyk(90, 80, 70, 60));
    EXPECT_EQ(cmyk.GetPixel(1, 0).ToInt32(), Color::FromCmyk(90, 80, 70, 60).ToInt32());
}

TEST(Crop, ParametersInUnits) {
    Transforms::Crop crop;
    EXPECT_EQ(crop.get_Rectangle(), Host::RectangleF(0, 0, 1, 1));
    EXPECT_EQ(crop.get_Background(), Color::FromArgb(0, 255, 255, 255));
    crop.set_Rectangle({1, 2, -3, -4});
    EXPECT_EQ(crop.get_Rectangle(), Host::RectangleF(1, 2, 0, 0)) << "silently";
    Bitmap bitmap(200, 100, PixelFormat::Format24bppRgb);
    EXPECT_THROW(crop.ApplyTransform(bitmap), Host::ArgumentOutOfRangeException);
    EXPECT_EQ(bitmap.get_Width(), 200);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { crop.set_Background(Color()); }), "backgroundColor");
    bitmap.set_HorizontalResolution(100);
    bitmap.set_VerticalResolution(50);
    crop.set_Unit(Unit::Inch);
    crop.set_RectangleInPixels({36, 18, 72, 72}); // 72 to the inch without a bitmap
    EXPECT_EQ(crop.get_Rectangle(), Host::RectangleF(0.5F, 0.25F, 1, 1));
    EXPECT_EQ(crop.get_RectangleInPixels(), (Host::Rectangle{36, 18, 72, 72}));
    Bitmap part;
    crop.ApplyTransform(bitmap, part);
    EXPECT_EQ(part.get_Width(), 100);
    EXPECT_EQ(part.get_Height(), 50);
    crop.set_Unit(Unit::Pixel); // the same numbers in pixels; halves go up
    crop.set_Rectangle({0.5F, 0.25F, 2.5F, 1.4F});
    crop.ApplyTransform(bitmap, part);
    EXPECT_EQ(part.get_Width(), 3);
    EXPECT_EQ(part.get_Height(), 1);
    bitmap.set_Unit(Unit::Inch);
    bitmap.get_Transforms()->Crop(1.0F, 1.0F, 1.0F, 1.0F);
    EXPECT_EQ(bitmap.get_Width(), 100);
    Bitmap empty;
    EXPECT_THROW(empty.get_Transforms()->Crop(0, 0, 1, 1), BitmapEmptyException);
    EXPECT_EQ(crop.get_SupportedPixelFormats().size(), 18U);
}

TEST(RotateAndFlip, TurnsInPlace) {
    Bitmap bitmap(6, 4, PixelFormat::Format24bppRgb);
    Ramp(bitmap);
    int changes = 0;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) {
        EXPECT_EQ(args.get_Change(), BitmapChange::RotateAndFlip);
        ++changes;
    });
    bitmap.get_Transforms()->RotateAndFlip(RotateFlipType::Rotate90FlipNone);
    EXPECT_EQ(bitmap.get_Width(), 4);
    EXPECT_EQ(At(bitmap, 3, 0), RampAt(0, 0)) << "top left goes to the top right";
    EXPECT_EQ(At(bitmap, 0, 5), RampAt(5, 3));
    bitmap.get_Transforms()->RotateAndFlip(RotateFlipType::Rotate270FlipNone);
    bitmap.get_Transforms()->RotateAndFlip(RotateFlipType::RotateNoneFlipY);
    EXPECT_EQ(At(bitmap, 0, 0), RampAt(0, 3));
    EXPECT_EQ(changes, 3);
    Transforms::RotateAndFlip turn;
    EXPECT_EQ(turn.get_Mode(), RotateFlipType::RotateNoneFlipNone);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { turn.set_Mode(static_cast<RotateFlipType>(8)); }), "mode");
    EXPECT_THROW(bitmap.get_Transforms()->RotateAndFlip(static_cast<RotateFlipType>(1000)), Host::ArgumentException);
    ColorPalette palette(2, false);
    palette.set_Item(1, RgbColor::White);
    Bitmap bits(RgbColor::Black, 9, 2, PixelFormat::Format1bppIndexed, &palette);
    bits.SetPixel(8, 0, RgbColor::White);
    turn.set_Mode(RotateFlipType::RotateNoneFlipX);
    turn.ApplyTransform(bits);
    EXPECT_EQ(At(bits, 0, 0), 0xFFFFFFFFU);
    EXPECT_EQ(At(bits, 8, 0), 0xFF000000U);
}

TEST(Rotate, TurnsByAnyAngle) {
    Bitmap bitmap(6, 4, PixelFormat::Format24bppRgb);
    Ramp(bitmap);
    bitmap.get_Transforms()->Rotate(90.0F);
    EXPECT_EQ(bitmap.get_Width(), 4);
    EXPECT_EQ(At(bitmap, 3, 0), RampAt(0, 0)) << "clockwise";
    bitmap.get_Transforms()->Rotate(-90.0F, InterpolationMode::LowQuality);
    EXPECT_EQ(At(bitmap, 5, 3), RampAt(5, 3));
    Bitmap square(RgbColor::Blue, 101, 101, PixelFormat::Format32bppArgb);
    BitmapChange change = BitmapChange::Custom;
    const auto changed = square.Changed.Subscribe([&](BitmapChangedEventArgs& args) { change = args.get_Change(); });
    Bitmap other(square);
    square.get_Transforms()->Rotate(45.0F);
    EXPECT_EQ(change, BitmapChange::Rotate);
    EXPECT_EQ(square.get_Width(), 142);
    EXPECT_EQ(At(square, 0, 0), 0x00FFFFFFU);
    EXPECT_EQ(At(square, 70, 70), 0xFF0000FFU);
    other.get_Transforms()->Rotate(45.0F, RgbColor::Lime, InterpolationMode::HighQuality);
    EXPECT_EQ(At(other, 0, 0), 0xFF00FF00U);
}

TEST(Rotate, ParametersAndFailures) {
    Transforms::Rotate rotate;
    EXPECT_EQ(rotate.get_Angle(), 0.0F);
    EXPECT_EQ(rotate.get_InterpolationMode(), InterpolationMode::MediumQuality);
    EXPECT_EQ(rotate.get_BackgroundColor(), Color::FromArgb(0, 255, 255, 255));
    EXPECT_NE(ThrownText<Host::ArgumentException>(
                  [&] { rotate.set_InterpolationMode(InterpolationMode::Anisotropic4); })
                  .find("Specified interpolation mode is not supported."),
              std::string::npos);
    EXPECT_THROW(rotate.set_InterpolationMode(static_cast<InterpolationMode>(77)), Host::ArgumentException);
    EXPECT_EQ(rotate.get_InterpolationMode(), InterpolationMode::MediumQuality);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { rotate.set_BackgroundColor(Color()); }),
              "backgroundColor");
    EXPECT_EQ(rotate.get_SupportedPixelFormats().size(), 12U);
    Bitmap bits(9, 2, PixelFormat::Format1bppIndexed);
    EXPECT_THROW(bits.get_Transforms()->Rotate(1.0F), UnsupportedPixelFormatException);
    EXPECT_EQ(bits.get_Width(), 9);
}

} // namespace
} // namespace Corvane::Rasterloom
