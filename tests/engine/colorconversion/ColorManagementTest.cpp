#include "Common/PixelWalker.h"
#include "ReferenceConversion.h"
#include "TestProfiles.h"
#include "Throws.h"
#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/IcmProvider.h"
#include "colorconversion/LcmsProvider.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace ImagingFramework {
namespace {

using TestProfiles::Bytes;
using Words = std::vector<std::uint16_t>;

constexpr std::uint32_t Width = 67;
constexpr std::uint32_t Height = 5;

constexpr PixelFormat Formats[] = {
    PixelFormat::Format24bppRgb,        PixelFormat::Format32bppArgb,        PixelFormat::Format48bppRgb,
    PixelFormat::Format64bppArgb,       PixelFormat::Format8bppGrayScale,    PixelFormat::Format16bppAGrayScale,
    PixelFormat::Format16bppGrayScale,  PixelFormat::Format32bppAGrayScale,  PixelFormat::Format32bppCmyk,
    PixelFormat::Format40bppAcmyk,      PixelFormat::Format64bppCmyk,        PixelFormat::Format80bppAcmyk,
};

const Bytes& ProfileOf(ColorSpace space) {
    static const Bytes rgb = TestProfiles::Rgb();
    static const Bytes gray = TestProfiles::Gray();
    static const Bytes cmyk = TestProfiles::Cmyk();
    return space == ColorSpace::Rgb ? rgb : (space == ColorSpace::Cmyk ? cmyk : gray);
}

/// The profiles of the destinations, as files.
struct ProfileFiles {
    TestProfiles::File Rgb{TestProfiles::SRgb()};
    TestProfiles::File Gray{ProfileOf(ColorSpace::GrayScale)};
    TestProfiles::File Cmyk{ProfileOf(ColorSpace::Cmyk)};

    const TestProfiles::File& Of(ColorSpace space) const {
        return space == ColorSpace::Rgb ? Rgb : (space == ColorSpace::Cmyk ? Cmyk : Gray);
    }
    void GiveTo(ColorSpaceManager& manager) const {
        manager.SetRgbColorProfile(&Rgb.Name());
        manager.SetGrayColorProfile(&Gray.Name());
        manager.SetCmykColorProfile(&Cmyk.Name());
    }
};

BitmapData RandomRaster(PixelFormat format, std::uint32_t seed = 1) {
    BitmapData raster(Width, Height, format);
    std::mt19937 random(ToWord(format) + seed);
    for (std::uint32_t y = 0; y < Height; ++y) {
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(random());
        }
    }
    const Bytes& profile = ProfileOf(PixelFormatColorSpace(format));
    raster.SetProfile(profile.data(), profile.size());
    return raster;
}

/// All samples of a raster, in the order of memory.
Words Samples(const BitmapData& raster) {
    Words samples;
    PixelWalker<std::uint16_t, std::uint32_t> walker(raster, nullptr, true);
    do {
        for (std::uint32_t i = 0; i < walker.GetChannelCount(); ++i) {
            samples.push_back(walker.GetChannel());
            walker.NextChannel();
        }
    } while (walker.NextPixel());
    return samples;
}

cmsUInt32Number LcmsFormat(ColorSpace space, bool isExtended) {
    switch (space) {
    case ColorSpace::Rgb:
        return isExtended ? TYPE_BGR_16 : TYPE_BGR_8;
    case ColorSpace::Cmyk:
        return isExtended ? TYPE_KYMC_16 : TYPE_KYMC_8;
    default:
        return isExtended ? TYPE_GRAY_16 : TYPE_GRAY_8;
    }
}

struct LcmsSetup {
    cmsUInt32Number Intent = INTENT_PERCEPTUAL;
    cmsUInt32Number Flags = 0;
    const Bytes* pTarget = nullptr;
};

/// The samples that a conversion to `format` must give: colours by Little CMS at the depth of the source, then the change
/// of depth; alpha kept, or opaque where there was none.
Words Expected(const BitmapData& source, PixelFormat format, const Bytes& to, const LcmsSetup& setup) {
    const PixelFormat from = source.GetPixelFormat();
    const bool isWide = PixelFormatIsExtended(from);
    const std::size_t channels = PixelFormatChannelCount(from);
    const Words samples = Samples(source);
    Words colors;
    Words alpha;
    for (std::size_t i = 0; i < samples.size(); i += channels) {
        const auto first = samples.begin() + static_cast<std::ptrdiff_t>(i);
        colors.insert(colors.end(), first, first + PixelFormatColorChannelCount(from));
        const std::uint16_t opaque = isWide ? 65535 : 255;
        alpha.push_back(PixelFormatHasAlpha(from) ? samples[i + channels - 1] : opaque);
    }
    const auto convert = [&](const auto& pixels) {
        return TestProfiles::Transform(
            ProfileOf(PixelFormatColorSpace(from)), LcmsFormat(PixelFormatColorSpace(from), isWide), to,
            LcmsFormat(PixelFormatColorSpace(format), isWide), pixels, setup.Intent, setup.Flags, setup.pTarget);
    };
    Words converted;
    if (isWide) {
        converted = convert(colors);
    } else {
        std::ranges::copy(convert(Bytes(colors.begin(), colors.end())), std::back_inserter(converted));
    }
    const auto toDepth = [&](std::uint16_t value) {
        const bool isWideResult = PixelFormatIsExtended(format);
        return static_cast<std::uint16_t>(isWide == isWideResult ? value : (isWide ? value >> 8 : value << 8));
    };
    const std::size_t colorCount = PixelFormatColorChannelCount(format);
    Words expected;
    for (std::size_t i = 0; i < alpha.size(); ++i) {
        for (std::size_t c = 0; c < colorCount; ++c) {
            expected.push_back(toDepth(converted[i * colorCount + c]));
        }
        if (PixelFormatHasAlpha(format)) {
            expected.push_back(toDepth(alpha[i]));
        }
    }
    return expected;
}

std::unique_ptr<BitmapData> Convert(ColorSpaceManager& manager, const BitmapData& source, PixelFormat format) {
    std::unique_ptr<BitmapData> result;
    manager.TransformBitmapData(source, format, result);
    return result;
}

TEST(ColorManagement, EqualsLittleCmsForAllPairsOfFormats) {
    const ProfileFiles files;
    for (const PixelFormat from : Formats) {
        const BitmapData source = RandomRaster(from);
        ColorSpaceManager manager;
        files.GiveTo(manager);
        for (const PixelFormat to : Formats) {
            SCOPED_TRACE(testing::Message() << std::hex << ToWord(from) << " to " << ToWord(to));
            const TestProfiles::File& profile = files.Of(PixelFormatColorSpace(to));
            const Bytes bytes = TestProfiles::ReadFile(profile.Path());
            const auto result = Convert(manager, source, to);
            EXPECT_EQ(Samples(*result), Expected(source, to, bytes, {}));
            // The result tells what its colours mean, by a file of its own.
            EXPECT_EQ(result->GetProfileData(), bytes);
            EXPECT_NE(*result->GetProfileNameRef(), profile.Path());
        }
    }
}

TEST(ColorManagement, FollowsIntentsAndProofs) {
    const ProfileFiles files;
    const Bytes& printer = ProfileOf(ColorSpace::Cmyk);
    const struct {
        ColorTransformIntent Intent;
        cmsUInt32Number Lcms;
        cmsUInt32Number Flags;
    } intents[] = {
        {ColorTransformIntent::Saturation, INTENT_SATURATION, 0},
        {ColorTransformIntent::RelativeColorimetric, INTENT_RELATIVE_COLORIMETRIC, 0},
        {ColorTransformIntent::Perceptual, INTENT_PERCEPTUAL, 0},
        {ColorTransformIntent::AbsoluteColorimetric, INTENT_ABSOLUTE_COLORIMETRIC, 0},
        {ColorTransformIntent::RelativeColorimetricBpc, INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_BLACKPOINTCOMPENSATION},
    };
    const BitmapData source = RandomRaster(PixelFormat::Format64bppArgb);
    const Bytes srgb = TestProfiles::ReadFile(files.Rgb.Path());
    Words plain;
    Words compensated;
    for (const auto& intent : intents) {
        ColorSpaceManager manager;
        files.GiveTo(manager);
        manager.SetColorTransformIntent(intent.Intent);
        LcmsSetup setup{intent.Lcms, intent.Flags, nullptr};
        const Words result = Samples(*Convert(manager, source, PixelFormat::Format80bppAcmyk));
        EXPECT_EQ(result, Expected(source, PixelFormat::Format80bppAcmyk, printer, setup));
        (intent.Flags != 0 ? compensated : plain) = result;
        const Words direct = Samples(*Convert(manager, source, PixelFormat::Format64bppArgb));
        manager.SetTargetColorProfile(&files.Cmyk.Name());
        setup.pTarget = &printer;
        const Words proof = Samples(*Convert(manager, source, PixelFormat::Format64bppArgb));
        EXPECT_EQ(proof, Expected(source, PixelFormat::Format64bppArgb, srgb, setup));
        EXPECT_NE(proof, direct); // the printer's paper and black show
    }
    EXPECT_NE(plain, compensated);
    ColorSpaceManager manager;
    files.GiveTo(manager);
    manager.SetColorTransformIntent(static_cast<ColorTransformIntent>(3));
    EXPECT_THROW(Convert(manager, source, PixelFormat::Format24bppRgb), CmTransformException);
}

TEST(ColorManagement, BringsIndexedFormatsThroughProfiles) {
    const ProfileFiles files;
    ColorSpaceManager manager;
    files.GiveTo(manager);
    manager.SetDitheringType(DitheringType::None);
    manager.SetUsePaletteAlphaThreshold(false);
    manager.SetColorMapType(ColorMapType::WebSafe);
    const BitmapData source = RandomRaster(PixelFormat::Format24bppRgb);
    const auto indexed = Convert(manager, source, PixelFormat::Format8bppIndexed);
    const Bytes srgb = TestProfiles::ReadFile(files.Rgb.Path());
    const Words colors = Expected(source, PixelFormat::Format24bppRgb, srgb, {});
    EXPECT_EQ(indexed->GetProfileData(), srgb);
    for (std::size_t i = 0; i < std::size_t{Width} * Height; ++i) {
        std::uint8_t argb[4] = {0, 0, 0, 255};
        std::copy_n(colors.begin() + static_cast<std::ptrdiff_t>(3 * i), 3, argb);
        const auto nearest = Reference::NearestEntries(argb, *indexed->GetColorMapRef());
        const std::uint8_t index = indexed->GetScanlineRef(static_cast<std::uint32_t>(i / Width))[i % Width];
        ASSERT_EQ(std::ranges::count(nearest, index), 1) << i;
    }
    // And back, with the palette's colours as the source.
    const auto back = Convert(manager, *indexed, PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(back->GetProfileData(), TestProfiles::ReadFile(files.Gray.Path()));
    ColorSpaceManager steps;
    files.GiveTo(steps);
    steps.SetColorManagementEngine(ColorManagementEngine::None);
    auto expanded = Convert(steps, *indexed, PixelFormat::Format24bppRgb);
    expanded->SetProfile(srgb.data(), srgb.size());
    EXPECT_EQ(Samples(*back), Samples(*Convert(manager, *expanded, PixelFormat::Format8bppGrayScale)));
}

TEST(ColorManagement, FallsBackToTheFormulasWithoutAPair) {
    const ProfileFiles files;
    BitmapData source = RandomRaster(PixelFormat::Format24bppRgb);
    ColorSpaceManager formulas;
    formulas.SetColorManagementEngine(ColorManagementEngine::None);
    const Words expected = Samples(*Convert(formulas, source, PixelFormat::Format32bppCmyk));
    ColorSpaceManager manager;
    for (const auto engine : {ColorManagementEngine::LittleCms, ColorManagementEngine::AdobeCmm}) {
        manager.SetColorManagementEngine(engine);
        manager.SetRgbColorProfile(&files.Rgb.Name()); // of no use to a CMYK destination
        const auto unmanaged = Convert(manager, source, PixelFormat::Format32bppCmyk);
        EXPECT_EQ(Samples(*unmanaged), expected);
        EXPECT_EQ(unmanaged->GetProfileNameRef(), nullptr);
    }
    // With its pair the module that this platform has not is missed.
    EXPECT_EQ(ThrownText<CmAdobeModuleLoadException>([&] { Convert(manager, source, PixelFormat::Format24bppRgb); }),
              "Failed to load Adobe Color Management Module");
    source.SetProfileName(nullptr);
    EXPECT_NO_THROW(Convert(manager, source, PixelFormat::Format24bppRgb));
    EXPECT_FALSE(IcmProvider::IsAdobeCmmAccessible());
}

TEST(ColorManagement, RefusesProfilesOfAnotherSpace) {
    const ProfileFiles files;
    const TestProfiles::File lab(TestProfiles::Lab());
    ColorSpaceManager manager;
    files.GiveTo(manager);
    const auto refused = [&](auto set, const TestProfiles::File& file) {
        EXPECT_EQ(ThrownText<CmUnappropriateProfileException>([&] { (manager.*set)(&file.Name()); }),
                  "The profile doesn't match to color space required.");
    };
    refused(&ColorSpaceManager::SetRgbColorProfile, files.Cmyk);
    refused(&ColorSpaceManager::SetGrayColorProfile, files.Cmyk);
    refused(&ColorSpaceManager::SetCmykColorProfile, files.Gray);
    refused(&ColorSpaceManager::SetRgbColorProfile, lab);
    // The old profile is gone by then: the conversion is by formula.
    BitmapData source = RandomRaster(PixelFormat::Format24bppRgb);
    EXPECT_EQ(Convert(manager, source, PixelFormat::Format24bppRgb)->GetProfileNameRef(), nullptr);
    // A raster may carry any profile, and then does not convert.
    source.SetProfile(ProfileOf(ColorSpace::Cmyk).data(), ProfileOf(ColorSpace::Cmyk).size());
    EXPECT_THROW(Convert(manager, source, PixelFormat::Format24bppRgb), CmUnappropriateProfileException);
}

TEST(ColorManagement, FailsOnDamagedProfilesAndLeavesTheRasterAlone) {
    const ProfileFiles files;
    const Bytes& good = ProfileOf(ColorSpace::Rgb);
    const auto raises = [&](const Bytes& profile, ExceptionType type, const char* what) {
        BitmapData source = RandomRaster(PixelFormat::Format32bppArgb);
        const Words before = Samples(source);
        source.SetProfile(profile.data(), profile.size());
        ColorSpaceManager manager;
        files.GiveTo(manager);
        std::unique_ptr<BitmapData> result;
        try {
            manager.TransformBitmapData(source, PixelFormat::Format32bppCmyk, result);
            ADD_FAILURE() << what;
        } catch (const Exception& failure) {
            EXPECT_EQ(failure.GetExceptionType(), type) << what << ": " << failure.GetExceptionStringRef();
        }
        EXPECT_EQ(result, nullptr);
        EXPECT_EQ(Samples(source), before);
    };
    Bytes damaged = good;
    damaged[36] = 'A';
    raises(damaged, ExceptionType::CmOpenProfileException, "signature");
    damaged = good;
    for (std::size_t tag = 0; tag < damaged[131]; ++tag) {
        std::fill_n(damaged.begin() + 132 + static_cast<std::ptrdiff_t>(tag) * 12 + 8, 4, std::uint8_t{0xFF});
    }
    raises(damaged, ExceptionType::CmTransformException, "tags of 4 GiB");
    raises(TestProfiles::WithoutTags(good), ExceptionType::CmTransformException, "nothing but ones in the tags");
    // Classes that no conversion begins or ends with: a link of two devices, a change of colours in Lab, names of
    // colours.
    for (const char* const deviceClass : {"link", "abst", "nmcl"}) {
        damaged = good;
        std::copy_n(deviceClass, 4, damaged.begin() + 12);
        raises(damaged, ExceptionType::CmTransformException, deviceClass);
        const TestProfiles::File file(damaged);
        ColorSpaceManager manager;
        manager.SetRgbColorProfile(&file.Name());
        EXPECT_THROW(Convert(manager, RandomRaster(PixelFormat::Format24bppRgb), PixelFormat::Format24bppRgb),
                     CmTransformException);
    }
}

// Cut at any length a profile fails in one of the two ways, or, where only its texts are cut, converts as the whole one does.
// Never do other colours come out.
TEST(ColorManagement, FailsOnProfilesCutAnywhere) {
    const ProfileFiles files;
    ColorSpaceManager manager;
    files.GiveTo(manager);
    for (const PixelFormat format : {PixelFormat::Format32bppArgb, PixelFormat::Format8bppGrayScale, PixelFormat::Format64bppCmyk}) {
        BitmapData source = RandomRaster(format);
        const Bytes whole = ProfileOf(PixelFormatColorSpace(format));
        const Words before = Samples(source);
        const Words expected = Samples(*Convert(manager, source, PixelFormat::Format24bppRgb));
        const std::size_t directoryEnd = 132 + std::size_t{12} * whole[131];
        std::size_t failures = 0;
        // A transform out of the tables of CMYK takes long to make.
        const std::size_t step = whole.size() < 1000 ? 1 : 997;
        for (std::size_t size = 1; size < whole.size(); size += step) {
            SCOPED_TRACE(testing::Message() << std::hex << ToWord(format) << std::dec << " of " << size << " bytes");
            source.SetProfile(whole.data(), size);
            std::unique_ptr<BitmapData> result;
            try {
                manager.TransformBitmapData(source, PixelFormat::Format24bppRgb, result);
                ASSERT_EQ(Samples(*result), expected);
            } catch (const Exception& failure) {
                ++failures;
                ASSERT_EQ(result, nullptr);
                // What is behind the directory of tags fails where it is needed.
                ASSERT_EQ(failure.GetExceptionType(), size < directoryEnd ? ExceptionType::CmOpenProfileException
                                                                          : ExceptionType::CmTransformException);
            }
            ASSERT_EQ(Samples(source), before);
        }
        EXPECT_GT(failures, 5U);
    }
}

// --- The provider by itself

TEST(LcmsProvider, ChecksItsArguments) {
    const ProfileFiles files;
    LcmsProvider provider;
    std::uint8_t pixel[8] = {};
    std::uint8_t out[10] = {};
    constexpr auto argb = PixelFormat::Format32bppArgb;
    EXPECT_THROW(provider.TransformScanline(nullptr, argb, out, argb, 1), ArgumentNullPointerException);
    EXPECT_THROW(provider.TransformScanline(pixel, argb, nullptr, argb, 1), ArgumentNullPointerException);
    EXPECT_THROW(provider.TransformScanline(pixel, argb, out, argb, 0), ArgumentOutOfRangeException);
    EXPECT_EQ(ThrownText<NotInitializedException>([&] { provider.TransformScanline(pixel, argb, out, argb, 1); }),
              "color management provider is not initialized.");
    for (const PixelFormat format :
         {PixelFormat::Format8bppIndexed, PixelFormat::Format16bppRgb565, PixelFormat::Format32bppPArgb,
          PixelFormat::Format32bppRgb, PixelFormat::FormatUnknown}) {
        EXPECT_FALSE(provider.IsFormatSupported(format));
        EXPECT_THROW(provider.TransformScanline(pixel, format, out, argb, 1), UnsupportedPixelFormatException);
    }
    const std::string& rgb = files.Rgb.Name();
    const std::string missing = "/nonexistent/p.icc";
    provider.SetSrcColorProfile(&rgb);
    EXPECT_FALSE(provider.IsReady());
    provider.SetDestColorProfile(&rgb);
    EXPECT_TRUE(provider.IsReady());
    EXPECT_EQ(ThrownText<CmOpenProfileException>([&] { provider.SetDestColorProfile(&missing); }),
              "Unable to open color profile '/nonexistent/p.icc'.");
    EXPECT_FALSE(provider.IsReady());
    std::string text;
    CmsProvider::GetProfileDescription(rgb, &text);
    EXPECT_EQ(text, "sRGB built-in");
    EXPECT_THROW(CmsProvider::GetProfileName(rgb, nullptr), ArgumentNullPointerException);
    EXPECT_THROW(CmsProvider::GetSRgbFilePath(nullptr), ArgumentNullPointerException);
    EXPECT_THROW(CmsProvider::GetDeviceClass(missing), CmOpenProfileException);
    EXPECT_EQ(CmsProvider::GetDeviceClass(files.Cmyk.Name()), 0x70727472U); // "prtr"
}

TEST(LcmsProvider, TellsWhyItFailedAndMakesANewTransformForOtherFormats) {
    const ProfileFiles files;
    const TestProfiles::File empty(TestProfiles::WithoutTags(ProfileOf(ColorSpace::Rgb)));
    constexpr auto argb = PixelFormat::Format32bppArgb;
    LcmsProvider provider;
    provider.SetSrcColorProfile(&empty.Name());
    provider.SetDestColorProfile(&files.Rgb.Name());
    const std::uint8_t pixel[8] = {10, 20, 30, 77, 200, 100, 50, 7};
    std::uint8_t out[16] = {};
    EXPECT_THROW(provider.TransformScanline(pixel, argb, out, argb, 2), CmTransformException);
    EXPECT_NE(provider.GetErrorText(), "");
    provider.SetSrcColorProfile(&files.Rgb.Name());
    provider.TransformScanline(pixel, argb, out, argb, 2);
    EXPECT_EQ(std::memcmp(pixel, out, 8), 0);
    EXPECT_EQ(provider.GetErrorText(), "");
    // Without alpha to with: opaque; from bytes to words the alpha is shifted.
    provider.TransformScanline(pixel, PixelFormat::Format24bppRgb, out, argb, 1);
    EXPECT_EQ(out[3], 255);
    provider.TransformScanline(pixel, argb, out, PixelFormat::Format64bppArgb, 1);
    EXPECT_EQ(out[6] | out[7] << 8, 77 << 8);
}

// Providers share nothing: on several threads each gives what it gives alone.
TEST(ColorManagement, ThreadingChangesNoResult) {
    const ProfileFiles files;
    const auto convertAll = [&](std::size_t number) {
        std::vector<Words> results;
        for (std::size_t round = 0; round < 6; ++round) {
            const BitmapData source =
                RandomRaster(Formats[(number + round) % std::size(Formats)], static_cast<std::uint32_t>(number));
            ColorSpaceManager manager;
            files.GiveTo(manager);
            results.push_back(Samples(*Convert(manager, source, Formats[(number * 5 + round) % std::size(Formats)])));
        }
        return results;
    };
    std::array<std::vector<Words>, 4> together;
    {
        std::vector<std::jthread> workers;
        for (std::size_t number = 0; number < together.size(); ++number) {
            workers.emplace_back([&, number] { together[number] = convertAll(number); });
        }
    }
    for (std::size_t number = 0; number < together.size(); ++number) {
        EXPECT_EQ(together[number], convertAll(number)) << number;
    }
}

} // namespace
} // namespace ImagingFramework
