#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/Codecs/CustomFrame.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include "TestProfiles.h"
#include "Throws.h"

#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

using TestProfiles::Bytes;
using TestProfiles::Transform;
using Transforms::PixelFormatConverter;

std::shared_ptr<ColorProfile> Profile(const Bytes& bytes) { return std::make_shared<ColorProfile>(std::span(bytes)); }

Bytes FirstPixel(Bitmap& bitmap) {
    const PixelArray array = bitmap.Export();
    Bytes pixel;
    for (std::int32_t i = 0; i < array.GetLength(2); ++i) {
        pixel.push_back(static_cast<std::uint8_t>(array(0, 0, i)));
    }
    return pixel;
}

TEST(PixelFormatConverter, ChecksProfilesWhenTheyAreSet) {
    PixelFormatConverter converter;
    EXPECT_THROW(converter.set_ColorManagementEngine(static_cast<ColorManagementEngine>(3)), Host::ArgumentException);
    EXPECT_THROW(converter.set_TransformationIntent(static_cast<ColorTransformationIntent>(3)), Host::ArgumentException);
    EXPECT_THROW(converter.set_ColorQuantizationAlgorithm(static_cast<ColorQuantizationAlgorithm>(2)),
                 Host::ArgumentException);
    // Profiles of the right space alone; a wrong one leaves none.
    const auto rgb = Profile(TestProfiles::Rgb());
    const auto cmyk = Profile(TestProfiles::Cmyk());
    converter.set_RgbColorProfile(rgb);
    EXPECT_EQ(converter.get_RgbColorProfile(), rgb);
    EXPECT_EQ(ThrownText<CMInappropriateProfileException>([&] { converter.set_RgbColorProfile(cmyk); }),
              "The profile doesn't match to color space required.");
    EXPECT_EQ(converter.get_RgbColorProfile(), nullptr);
    EXPECT_THROW(converter.set_GrayScaleColorProfile(cmyk), CMInappropriateProfileException);
    EXPECT_THROW(converter.set_CmykColorProfile(rgb), CMInappropriateProfileException);
    converter.set_CmykColorProfile(cmyk);
    converter.set_TargetColorProfile(cmyk);
    EXPECT_EQ(converter.get_CmykColorProfile(), cmyk);
    EXPECT_EQ(converter.get_TargetColorProfile(), cmyk);
    converter.set_CmykColorProfile(nullptr);
    EXPECT_EQ(converter.get_CmykColorProfile(), nullptr);
}

TEST(PixelFormatConverter, NarrowsByValuesThatFitTogether) {
    PixelFormatConverter converter(PixelFormat::Format8bppGrayScale);
    const auto named = [&](auto set, std::int32_t value) {
        return ThrownParameter<Host::ArgumentOutOfRangeException>([&] { (converter.*set)(value); });
    };
    EXPECT_EQ(named(&PixelFormatConverter::set_QuantizationTo8bBitsUsed, 7), "quantizationTo8bBitsUsed");
    EXPECT_EQ(named(&PixelFormatConverter::set_QuantizationTo8bBitsUsed, 12), "quantizationTo8bBitsUsed"); // scale 16
    EXPECT_EQ(named(&PixelFormatConverter::set_QuantizationTo8bOffset, 1), "quantizationTo8bOffset");
    EXPECT_EQ(named(&PixelFormatConverter::set_QuantizationTo8bScale, 17), "quantizationTo8bScale");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { converter.SetQuantizationTo8b(12, 3841, 8); }),
              "quantizationTo8bOffset");
    converter.set_QuantizationTo8bScale(8);
    converter.set_QuantizationTo8bBitsUsed(12);
    converter.set_QuantizationTo8bOffset(100);
    EXPECT_EQ(named(&PixelFormatConverter::set_QuantizationTo8bScale, 12), "quantizationTo8bScale");
    PixelArray gray(3, 1, 1);
    gray(0, 0, 0) = 0x0640; // 100 of 12 bits
    gray(1, 0, 0) = 228 * 16;
    gray(2, 0, 0) = 355 * 16;
    const PixelArray narrow = converter.ConvertArray(gray, PixelFormat::Format16bppGrayScale);
    EXPECT_EQ(narrow.get_Values(), (std::vector<std::int32_t>{0, 128, 255}));
}

TEST(PixelFormatConverter, ConvertsThroughProfiles) {
    const Bytes wide = TestProfiles::Rgb();
    const Bytes srgb = TestProfiles::SRgb();
    const Bytes printer = TestProfiles::Cmyk();
    const Bytes pixel = {60, 200, 30};
    Bitmap bitmap(Color::FromRgb(30, 200, 60), 3, 2, PixelFormat::Format24bppRgb);
    bitmap.set_ColorProfile(Profile(wide));
    PixelFormatConverter converter(PixelFormat::Format24bppRgb);
    converter.set_RgbColorProfile(Profile(srgb));
    converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    Bitmap result;
    converter.ApplyTransform(bitmap, result);
    EXPECT_EQ(FirstPixel(result), Transform(wide, TYPE_BGR_8, srgb, TYPE_BGR_8, pixel));
    EXPECT_NE(FirstPixel(result), FirstPixel(bitmap));
    EXPECT_EQ(result.get_ColorProfile()->get_Description(), "sRGB built-in");
    // The converter's temporary file serves the result as well.
    EXPECT_EQ(result.get_ColorProfile()->get_FileName(), converter.get_RgbColorProfile()->get_FileName());
    converter.set_DestinationPixelFormat(PixelFormat::Format32bppCmyk);
    converter.set_CmykColorProfile(Profile(printer));
    converter.set_TransformationIntent(ColorTransformationIntent::AbsoluteColorimetric);
    converter.ApplyTransform(bitmap, result);
    EXPECT_EQ(FirstPixel(result),
              Transform(wide, TYPE_BGR_8, printer, TYPE_KYMC_8, pixel, INTENT_ABSOLUTE_COLORIMETRIC));
    converter.set_ColorManagementEngine(ColorManagementEngine::None);
    converter.ApplyTransform(bitmap, result);
    EXPECT_EQ(FirstPixel(result), (Bytes{55, 140, 0, 170})); // black 255 - 200, the rest beyond it
    EXPECT_EQ(result.get_ColorProfile(), nullptr);
    converter.set_ColorManagementEngine(ColorManagementEngine::AdobeCmm);
    EXPECT_THROW(converter.ApplyTransform(bitmap, result), CMAdobeModuleLoadException);
}

TEST(PixelFormatConverter, LeavesABitmapWithADamagedProfileAlone) {
    Bitmap bitmap(Color::FromRgb(1, 2, 3), 2, 2, PixelFormat::Format24bppRgb);
    bitmap.set_ColorProfile(Profile(TestProfiles::WithoutTags(TestProfiles::Rgb())));
    const auto profile = bitmap.get_ColorProfile();
    ASSERT_NE(profile, nullptr);
    PixelFormatConverter converter(PixelFormat::Format8bppGrayScale);
    converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    converter.set_GrayScaleColorProfile(Profile(TestProfiles::Gray()));
    EXPECT_EQ(ThrownText<CMTransformException>([&] { converter.ApplyTransform(bitmap); }),
              "Error occured during color transformation with color management.");
    EXPECT_EQ(bitmap.get_PixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(FirstPixel(bitmap), (Bytes{3, 2, 1}));
    EXPECT_EQ(bitmap.get_ColorProfile(), profile);
}

TEST(PixelFormatConverter, ConvertsArraysAndColors) {
    PixelFormatConverter converter(PixelFormat::Format24bppRgb);
    PixelArray gray(2, 1, 1);
    gray(1, 0, 0) = 77;
    EXPECT_EQ(converter.ConvertArray(gray, PixelFormat::Format8bppGrayScale).get_Values(),
              (std::vector<std::int32_t>{0, 0, 0, 77, 77, 77}));
    const RgbColor entries[] = {Color::FromRgb(1, 2, 3), Color::FromRgb(4, 5, 6)};
    const ColorPalette palette(entries, false);
    gray(1, 0, 0) = 1;
    EXPECT_EQ(converter.ConvertArray(gray, PixelFormat::Format8bppIndexed, &palette).get_Values(),
              (std::vector<std::int32_t>{3, 2, 1, 6, 5, 4}));
    EXPECT_THROW(converter.ConvertArray(gray, PixelFormat::Format8bppIndexed), Host::ArgumentException);
    // Colours have 16 bits, alpha goes through.
    const Color color = Color::FromArgb32(1000, 60000, 20000, 5);
    EXPECT_EQ(converter.ConvertColor(color), color);
    converter.set_DestinationPixelFormat(PixelFormat::Format8bppGrayScale);
    // (30 * 5 + 59 * 20000 + 11 * 60000) / 100
    EXPECT_EQ(converter.ConvertColor(color), Color::FromAGrayScale32(1000, 18401));
    EXPECT_EQ(converter.get_DestinationPixelFormat(), PixelFormat::Format8bppGrayScale);
    EXPECT_THROW(converter.ConvertColor(Color()), Host::ArgumentNullException);
    // Through profiles as well; a failure restores the format.
    converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    converter.set_GrayScaleColorProfile(Profile(TestProfiles::Gray()));
    const Color managed = converter.ConvertColor(Color::FromRgb32(30000, 30000, 30000), Profile(TestProfiles::SRgb()));
    EXPECT_EQ(managed.get_ColorSpace(), ColorSpace::GrayScale);
    EXPECT_NE(managed.GetChannel32(0), 30000);
    converter.set_ColorManagementEngine(ColorManagementEngine::AdobeCmm);
    EXPECT_THROW(converter.ConvertColor(color, Profile(TestProfiles::SRgb())), CMAdobeModuleLoadException);
    EXPECT_EQ(converter.get_DestinationPixelFormat(), PixelFormat::Format8bppGrayScale);
    for (const PixelFormat indexed : {PixelFormat::Format1bppIndexed, PixelFormat::Format8bppIndexed}) {
        converter.set_DestinationPixelFormat(indexed);
        const auto text = [&](auto call) { return ThrownText<UnsupportedPixelFormatException>(call); };
        const std::string expected = "This operation doesn't support destination pixel formats of indexed types.";
        EXPECT_EQ(text([&] { converter.ConvertColor(color); }), expected);
        EXPECT_EQ(text([&] { converter.ConvertArray(gray, PixelFormat::Format8bppGrayScale); }), expected);
    }
    converter.set_DestinationPixelFormat(PixelFormat::Format16bppRgb555);
    EXPECT_EQ(ThrownText<UnsupportedPixelFormatException>(
                  [&] { converter.ConvertArray(gray, PixelFormat::Format8bppGrayScale); }),
              "Pixel format is not supported channels manipulations.");
}

// --- The providers

TEST(ColorManagementProvider, ConvertsItsBitmap) {
    Bitmap bitmap(Color::FromRgb(200, 100, 50), 3, 2, PixelFormat::Format24bppRgb);
    std::vector<BitmapChange> changes;
    int progress = 0;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) { changes.push_back(args.get_Change()); });
    const auto step = bitmap.Progress.Subscribe([&](ProgressEventArgs&) { ++progress; });
    const auto provider = bitmap.get_ColorManagement();
    using enum PixelFormat;
    const std::pair<ColorSpace, std::vector<PixelFormat>> spaces[] = {
        // plain, extended, with alpha, both
        {ColorSpace::Cmyk, {Format32bppCmyk, Format64bppCmyk, Format40bppAcmyk, Format80bppAcmyk}},
        {ColorSpace::GrayScale,
         {Format8bppGrayScale, Format16bppGrayScale, Format16bppAGrayScale, Format32bppAGrayScale}},
        {ColorSpace::Rgb, {Format24bppRgb, Format48bppRgb, Format32bppArgb, Format64bppArgb}},
    };
    for (const auto& [space, formats] : spaces) {
        for (std::size_t i = 0; i < formats.size(); ++i) {
            provider->ConvertToContinuous(space, i >= 2, i % 2 == 1);
            EXPECT_EQ(bitmap.get_PixelFormat(), formats[i]);
        }
    }
    EXPECT_EQ(changes, std::vector<BitmapChange>(12, BitmapChange::ColorSpace));
    EXPECT_GT(progress, 12);
    EXPECT_THROW(provider->ConvertToContinuous(ColorSpace::Unknown, false, false), UnsupportedPixelFormatException);
    EXPECT_THROW(provider->Convert(static_cast<PixelFormat>(3)), Host::ArgumentException);
    provider->Convert(PixelFormat::Format32bppArgb);
    EXPECT_EQ(bitmap.get_PixelFormat(), PixelFormat::Format32bppArgb);
    bitmap.Unload();
    EXPECT_THROW(provider->Convert(PixelFormat::Format24bppRgb), BitmapEmptyException);
    bitmap.Dispose();
    EXPECT_THROW(provider->get_Dithering(), Host::ObjectDisposedException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { ColorManagementProvider(nullptr); }), "bitmap");
}

TEST(ColorManagementProvider, ConvertToIndexedForgetsWhatWasSet) {
    Bitmap bitmap(Color::FromRgb(255, 255, 255), 9, 2, PixelFormat::Format24bppRgb);
    const auto provider = bitmap.get_ColorManagement();
    EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>(
                  [&] { provider->ConvertToIndexed(2, ColorPaletteType::WebSafe); }),
              "Bits per pixel should have values 1, 4 or 8.");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>(
                  [&] { provider->ConvertToIndexed(16, ColorPaletteType::WebSafe); }),
              "bpp");
    provider->set_PaletteEntryCount(12);
    provider->set_Dithering(DitheringType::None);
    provider->set_DitheringIntensity(0.5F);
    EXPECT_EQ(ThrownText<ColorPaletteEmptyException>([&] { provider->ConvertToIndexed(8, ColorPaletteType::Custom); }),
              "'Custom' palette is not presented or empty.");
    EXPECT_EQ(provider->get_PaletteEntryCount(), 0);
    EXPECT_EQ(provider->get_Dithering(), DitheringType::FloydSteinberg);
    EXPECT_EQ(provider->get_DitheringIntensity(), 1.0F);
}

TEST(ColorManagementProvider, KeepsItsPropertiesAndManagesColors) {
    const Bytes wide = TestProfiles::Rgb();
    const Bytes srgb = TestProfiles::SRgb();
    const Bytes pixel = {60, 200, 30};
    Bitmap bitmap(Color::FromRgb(30, 200, 60), 1, 1, PixelFormat::Format24bppRgb);
    bitmap.set_ColorProfile(Profile(wide));
    const auto provider = bitmap.get_ColorManagement();
    const auto target = Profile(srgb);
    provider->set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    provider->set_RgbColorProfile(target);
    provider->set_TransformationIntent(ColorTransformationIntent::RelativeColorimetricBpc);
    provider->set_PaletteAlphaThreshold(7);
    provider->set_QuantizationTo8bScale(8);
    EXPECT_EQ(provider->get_RgbColorProfile(), target);
    EXPECT_EQ(provider->get_TransformationIntent(), ColorTransformationIntent::RelativeColorimetricBpc);
    EXPECT_EQ(provider->get_PaletteAlphaThreshold(), 7);
    EXPECT_EQ(provider->get_QuantizationTo8bScale(), 8);
    provider->set_TransformationIntent(ColorTransformationIntent::Perceptual);
    provider->Convert(PixelFormat::Format24bppRgb); // the format stays, the colours change
    EXPECT_EQ(FirstPixel(bitmap), Transform(wide, TYPE_BGR_8, srgb, TYPE_BGR_8, pixel));
    EXPECT_EQ(bitmap.get_ColorProfile()->get_Description(), "sRGB built-in");
}

TEST(ChannelsProvider, ReadsAndReplacesChannels) {
    Bitmap bitmap(Color::FromArgb(40, 30, 20, 10), 3, 2, PixelFormat::Format32bppArgb);
    const auto channels = bitmap.get_Channels();
    EXPECT_EQ(channels->get_Count(), 4);
    EXPECT_EQ(channels->get_AlphaChannelIndex(), 3);
    for (const std::int32_t index : {0, 1, 2, 3}) {
        const auto channel = channels->get_Channel(index);
        EXPECT_EQ(channel->get_PixelFormat(), PixelFormat::Format8bppGrayScale);
        EXPECT_EQ(channel->GetPixel(2, 1), Color::FromAGrayScale32(65535, (index + 1) * 10 * 256)) << index;
    }
    EXPECT_EQ(channels->get_Channel(ColorChannel::Alpha)->GetPixel(0, 0), channels->get_Channel(3)->GetPixel(0, 0));
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { channels->get_Channel(4); }), "channelIndex");
    EXPECT_THROW(channels->get_Channel(-2), Host::ArgumentOutOfRangeException);
    std::vector<BitmapChange> changes;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) { changes.push_back(args.get_Change()); });
    Bitmap gray(Color::FromGrayScale(99), 3, 2, PixelFormat::Format8bppGrayScale);
    channels->set_Channel(ColorChannel::Red, &gray);
    EXPECT_EQ(FirstPixel(bitmap), (Bytes{10, 20, 99, 40}));
    EXPECT_EQ(changes, std::vector{BitmapChange::ReplaceChannel});
    EXPECT_THROW(channels->set_Channel(0, nullptr), Host::ArgumentNullException);
    Bitmap wrong;
    EXPECT_EQ(ThrownText<BitmapEmptyException>([&] { channels->set_Channel(0, &wrong); }),
              "Bitmap \"channel\" has not been filled up with data.");
    wrong.Create(3, 3, PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { channels->set_Channel(0, &wrong); }), "channel");
    wrong.Create(3, 2, PixelFormat::Format16bppGrayScale);
    EXPECT_THROW(channels->set_Channel(0, &wrong), UnsupportedPixelFormatException);
    channels->DiscardAlpha();
    EXPECT_EQ(bitmap.get_PixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(channels->get_AlphaChannelIndex(), -1);
    EXPECT_EQ(ThrownText<Exception>([&] { channels->DiscardAlpha(); }), "Bitmap already hasn't alpha.");
    bitmap.Create(2, 2, PixelFormat::Format64bppCmyk);
    Bitmap wide(Color::FromGrayScale32(12345), 2, 2, PixelFormat::Format16bppGrayScale);
    channels->set_Channel(ColorChannel::Cyan, &wide);
    EXPECT_EQ(channels->get_Channel(3)->GetPixel(1, 1).GetChannel32(0), 12345);
    bitmap.Create(2, 2, PixelFormat::Format16bppRgb565);
    EXPECT_THROW(channels->get_Channel(0), UnsupportedPixelFormatException);
}

TEST(Frame, TellsTheProfileOfItsImage) {
    Bitmap bitmap(1, 1, PixelFormat::Format24bppRgb);
    Codecs::CustomFrame frame;
    EXPECT_EQ(frame.get_ColorProfile(), nullptr);
    bitmap.set_ColorProfile(Profile(TestProfiles::Rgb()));
    frame.SetBitmap(&bitmap);
    EXPECT_EQ(frame.get_ColorProfile()->get_FileName(), bitmap.get_ColorProfile()->get_FileName());
    const auto other = Profile(TestProfiles::SRgb());
    frame.set_ColorProfileTU(other);
    EXPECT_EQ(frame.get_ColorProfile(), other);
}

} // namespace
} // namespace Corvane::Rasterloom
