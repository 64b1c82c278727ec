#include "colorconversion/ColorSpaceManager.h"

#include "EventsProbe.h"
#include "ReferenceConversion.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace ImagingFramework {
namespace {

constexpr std::uint32_t Width = 37; // not a whole number of bytes at 1 and 4 bits
constexpr std::uint32_t Height = 3;

std::string Name(PixelFormat format) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", ToWord(format));
    return text;
}

ColorMap RandomMap(std::uint32_t count, PixelFormat format, std::uint32_t seed) {
    std::mt19937 random(seed);
    ColorMap map(count, format);
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto word = static_cast<std::uint32_t>(random());
        std::uint8_t entry[4];
        std::memcpy(entry, &word, 4);
        map.SetEntryArgb(i, entry);
    }
    return map;
}

BitmapData RandomRaster(PixelFormat format) {
    BitmapData raster(Width, Height, format);
    std::mt19937 random(ToWord(format));
    for (std::uint32_t y = 0; y < Height; ++y) {
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(random());
        }
    }
    // The extremes, as many as fit.
    std::memset(raster.GetScanlineRef(0), 0, 10);
    std::memset(raster.GetScanlineRef(1), 255, 4);
    if (PixelFormatIsIndexed(format)) {
        raster.SetColorMap(RandomMap(1U << PixelFormatSize(format), PixelFormat::Format24bppRgb, 5));
    }
    return raster;
}

/// What stays in a scanline behind its last pixel does not count, nor does the spare byte of `Format32bppRgb`.
std::vector<std::uint8_t> PixelBytes(const BitmapData& raster, std::uint32_t x, std::uint32_t y) {
    const std::uint32_t size = PixelFormatSize(raster.GetPixelFormat()) / 8;
    const std::uint8_t* const pixel = raster.GetScanlineRef(y) + std::size_t{x} * size;
    std::vector<std::uint8_t> bytes(pixel, pixel + size);
    if (raster.GetPixelFormat() == PixelFormat::Format32bppRgb) {
        bytes[3] = 0;
    }
    return bytes;
}

bool IsRefused(PixelFormat source, PixelFormat destination) {
    return source == PixelFormat::Format64bppPArgb || destination == PixelFormat::Format64bppPArgb ||
           PixelFormatIsPacked16(destination);
}

/// What a pixel goes to the search of the nearest entry as: pixels below the threshold become the transparent entry, where
/// there is one, and all others opaque.
void CutAlpha(std::vector<std::uint8_t>& argb, const ColorMap& map, std::uint8_t threshold) {
    for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
        std::uint8_t entry[4];
        map.GetEntryArgb(i, entry);
        if (entry[3] == 0) {
            if (argb[3] < threshold) {
                std::copy_n(entry, 4, argb.begin());
            } else {
                argb[3] = 255;
            }
            return;
        }
    }
}

void ExpectConverted(const BitmapData& source, const BitmapData& destination, const Reference::Settings& settings,
                     std::optional<std::uint8_t> threshold = std::nullopt) {
    const PixelFormat format = destination.GetPixelFormat();
    // Nearest entries stay with the one before where they tie.
    std::uint32_t last = 0;
    for (std::uint32_t y = 0; y < Height; ++y) {
        for (std::uint32_t x = 0; x < Width; ++x) {
            const Reference::Pixel pixel = Reference::Read(source, x, y, settings);
            if (!PixelFormatIsIndexed(format)) {
                ASSERT_EQ(PixelBytes(destination, x, y), Reference::Write(pixel, format)) << x << "," << y;
                continue;
            }
            auto argb = Reference::Write(pixel, PixelFormat::Format32bppArgb);
            if (threshold) {
                CutAlpha(argb, *destination.GetColorMapRef(), *threshold);
            }
            const auto nearest = Reference::NearestEntries(argb.data(), *destination.GetColorMapRef());
            const std::uint32_t index = Reference::ReadIndex(destination, x, y);
            ASSERT_TRUE(std::ranges::count(nearest, index) == 1) << x << "," << y << " index " << index;
            if (std::ranges::count(nearest, last) == 1) {
                ASSERT_EQ(index, last) << x << "," << y;
            }
            last = index;
        }
    }
}

void UsePlainPalette(ColorSpaceManager& manager) {
    manager.SetDitheringType(DitheringType::None);
    manager.SetColorMapType(ColorMapType::WebSafe);
    manager.SetUsePaletteAlphaThreshold(false);
}

// Every source format into every destination format, the engine's own included: the pixels of the formulas, or the failure.
TEST(ColorSpaceManager, ConvertsAllPairsOfFormats) {
    for (const ColorManagementEngine engine : {ColorManagementEngine::LittleCms, ColorManagementEngine::None}) {
        for (const PixelFormat sourceFormat : AllPixelFormats()) {
            const BitmapData source = RandomRaster(sourceFormat);
            for (const PixelFormat format : AllPixelFormats()) {
                SCOPED_TRACE(Name(sourceFormat) + " to " + Name(format));
                ColorSpaceManager manager;
                UsePlainPalette(manager);
                manager.SetColorManagementEngine(engine);
                manager.SetConvertAlpha(0.5);
                std::unique_ptr<BitmapData> destination;
                const bool isCopy = sourceFormat == format && engine == ColorManagementEngine::None;
                const bool isRefused = IsRefused(sourceFormat, format);
                if (isRefused && !(isCopy && format != PixelFormat::Format64bppPArgb)) {
                    EXPECT_THROW(manager.TransformBitmapData(source, format, destination),
                                 UnsupportedPixelFormatException);
                    EXPECT_EQ(destination, nullptr);
                    continue;
                }
                manager.TransformBitmapData(source, format, destination);
                ASSERT_EQ(destination->GetPixelFormat(), format);
                if (isCopy) {
                    for (std::uint32_t y = 0; y < Height; ++y) {
                        ASSERT_EQ(std::memcmp(destination->GetScanlineRef(y), source.GetScanlineRef(y), source.GetRowSize()), 0);
                    }
                    continue;
                }
                ExpectConverted(source, *destination, {32767, source.GetColorMapRef()});
            }
        }
    }
}

// Every source format into each indexed one, with each kind of palette that needs no picture, with and without the alpha
// threshold, against a search of all entries.
TEST(ColorSpaceManager, ConvertsToIndexedFormatsWithEveryPalette) {
    ColorMap custom = RandomMap(40, PixelFormat::Format32bppArgb, 3);
    custom.SetAlpha(7, 0);
    for (const PixelFormat sourceFormat : AllPixelFormats()) {
        if (IsRefused(sourceFormat, PixelFormat::Format8bppIndexed)) {
            continue;
        }
        const BitmapData source = RandomRaster(sourceFormat);
        for (const PixelFormat format :
             {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed}) {
            for (const ColorMapType type : {ColorMapType::Custom, ColorMapType::WebSafe, ColorMapType::Windows,
                                            ColorMapType::Mac, ColorMapType::GrayScale, ColorMapType::Bicolor}) {
                for (const bool useThreshold : {false, true}) {
                    SCOPED_TRACE(Name(sourceFormat) + " to " + Name(format) + " with " +
                                 std::to_string(static_cast<int>(type)));
                    constexpr std::uint8_t threshold = 128;
                    ColorSpaceManager manager;
                    manager.SetDitheringType(DitheringType::None);
                    manager.SetColorMapType(type);
                    manager.SetCustomColorMap(custom);
                    manager.SetUsePaletteAlphaThreshold(useThreshold);
                    manager.SetPaletteAlphaThreshold(threshold);
                    std::unique_ptr<BitmapData> destination;
                    manager.TransformBitmapData(source, format, destination);
                    ASSERT_LE(destination->GetColorMapRef()->GetEntryCount(), 1U << PixelFormatSize(format));
                    ExpectConverted(source, *destination, {65535, source.GetColorMapRef()},
                                    useThreshold ? std::optional(threshold) : std::nullopt);
                }
            }
        }
    }
}

TEST(ColorSpaceManager, GivesTheStatedNumbers) {
    ColorSpaceManager manager;
    const auto convert = [&](std::vector<std::uint8_t> pixel, PixelFormat from, PixelFormat to) {
        std::vector<std::uint8_t> result(PixelFormatSize(to) / 8);
        manager.TransformScanline(1, pixel.data(), nullptr, from, nullptr, result.data(), to);
        return result;
    };
    using Bytes = std::vector<std::uint8_t>;
    EXPECT_EQ(convert({255, 255, 255, 255}, PixelFormat::Format32bppArgb, PixelFormat::Format64bppArgb),
              (Bytes{0, 255, 0, 255, 0, 255, 0, 255}));
    EXPECT_EQ(convert({0, 255, 0, 255, 0, 255, 0, 255}, PixelFormat::Format64bppArgb, PixelFormat::Format32bppArgb),
              (Bytes{255, 255, 255, 255}));
    EXPECT_EQ(convert({255, 0, 0}, PixelFormat::Format24bppRgb, PixelFormat::Format8bppGrayScale), Bytes{76});
    EXPECT_EQ(convert({0, 0, 255}, PixelFormat::Format24bppRgb, PixelFormat::Format8bppGrayScale), Bytes{28});
    EXPECT_EQ(convert({0, 255, 0}, PixelFormat::Format24bppRgb, PixelFormat::Format8bppGrayScale), Bytes{150});
    EXPECT_EQ(convert({255, 255}, PixelFormat::Format16bppRgb565, PixelFormat::Format24bppRgb), (Bytes{248, 248, 248}));
    EXPECT_EQ(convert({50, 100, 0, 255}, PixelFormat::Format32bppCmyk, PixelFormat::Format24bppRgb), (Bytes{124, 205, 0}));
    EXPECT_EQ(convert({128, 128, 0, 0}, PixelFormat::Format32bppCmyk, PixelFormat::Format24bppRgb), (Bytes{63, 127, 127}));
    EXPECT_EQ(convert({0, 43, 43, 43}, PixelFormat::Format32bppCmyk, PixelFormat::Format24bppRgb), (Bytes{211, 211, 211}));
    EXPECT_EQ(convert({10, 20, 30}, PixelFormat::Format24bppRgb, PixelFormat::Format32bppCmyk), (Bytes{225, 20, 10, 0}));
    // Opacity for sources without alpha alone.
    manager.SetConvertAlpha(0.5);
    EXPECT_EQ(convert({1, 2, 3}, PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb), (Bytes{1, 2, 3, 127}));
    EXPECT_EQ(convert({1, 2, 3, 4}, PixelFormat::Format32bppArgb, PixelFormat::Format32bppArgb), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(convert({7, 8}, PixelFormat::Format16bppGrayScale, PixelFormat::Format32bppAGrayScale),
              (Bytes{7, 8, 255, 127}));
    // A premultiplied source is divided by its alpha, and one without any is black.
    EXPECT_EQ(convert({64, 32, 0, 128}, PixelFormat::Format32bppPArgb, PixelFormat::Format32bppArgb),
              (Bytes{127, 63, 0, 128}));
    EXPECT_EQ(convert({64, 32, 9, 0}, PixelFormat::Format32bppPArgb, PixelFormat::Format24bppRgb), (Bytes{0, 0, 0}));
}

TEST(ColorSpaceManager, NarrowsByBitsOffsetAndScale) {
    ColorSpaceManager manager;
    const auto narrow = [&](std::uint16_t value) {
        const std::uint8_t pixel[2] = {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)};
        std::uint8_t gray = 0;
        manager.TransformScanline(1, pixel, nullptr, PixelFormat::Format16bppGrayScale, nullptr, &gray,
                                  PixelFormat::Format8bppGrayScale);
        return static_cast<int>(gray);
    };
    manager.SetOffsetQuantizeTo8(0);
    EXPECT_EQ(narrow(0x1234), 0x12);
    manager.SetBitsUsedQuantizeTo8(12);
    manager.SetOffsetQuantizeTo8(100);
    manager.SetScaleQuantizeTo8(8);
    EXPECT_EQ(narrow(0x0640), 0);         // 100
    EXPECT_EQ(narrow(0x063F), 0);         // 99
    EXPECT_EQ(narrow(0x0650), 1);         // 101
    EXPECT_EQ(narrow(355 * 16), 255);     // the first at the top
    EXPECT_EQ(narrow(354 * 16), 254);
    EXPECT_EQ(narrow(0xFFFF), 255);
    manager.SetOffsetQuantizeTo8(0);
    manager.SetScaleQuantizeTo8(12);
    EXPECT_EQ(narrow(0xFFE0), 255); // 4094 >> 4
    EXPECT_EQ(narrow(0x8000), 128);
    // Values that do not fit each other fail when the chain is built.
    manager.SetOffsetQuantizeTo8(1);
    EXPECT_THROW(narrow(0), ArgumentOutOfRangeException);
}

TEST(ColorSpaceManager, BlendsOverTheBackground) {
    ColorSpaceManager manager;
    manager.SetBlendWithBackground(true);
    manager.SetBackgroundColor({0x0A80, 0x6400, 0xFFFF, 0x1234, 0});
    const auto convert = [&](std::vector<std::uint8_t> pixel, PixelFormat from, PixelFormat to) {
        std::vector<std::uint8_t> result(PixelFormatSize(to) / 8);
        manager.TransformScanline(1, pixel.data(), nullptr, from, nullptr, result.data(), to);
        return result;
    };
    using Bytes = std::vector<std::uint8_t>;
    // (200 * 128 + 10 * 127) / 255 = 105; (0 + 100 * 127) / 255 = 49; (255 * 128 + 255 * 127) / 255 = 255.
    EXPECT_EQ(convert({200, 0, 255, 128}, PixelFormat::Format32bppArgb, PixelFormat::Format24bppRgb), (Bytes{105, 49, 255}));
    // Words: (0xFFFF * 0x8000 + 0x0A80 * 0x7FFF) / 0xFFFF = 32768 + 1343 = 34111 = 0x853F.
    EXPECT_EQ(convert({255, 255, 0, 0, 0, 0, 0, 128}, PixelFormat::Format64bppArgb, PixelFormat::Format48bppRgb),
              (Bytes{0x3F, 0x85, 0xFF, 0x31, 0xFF, 0x7F}));
    // All bits set stays so: the largest product that 32 bits must hold.
    EXPECT_EQ(convert({255, 255, 255, 255, 255, 255, 255, 255}, PixelFormat::Format64bppArgb, PixelFormat::Format48bppRgb),
              (Bytes{255, 255, 255, 255, 255, 255}));
    EXPECT_EQ(convert({9, 0}, PixelFormat::Format16bppAGrayScale, PixelFormat::Format8bppGrayScale), Bytes{10});
    EXPECT_EQ(convert({1, 2, 3, 4, 0}, PixelFormat::Format40bppAcmyk, PixelFormat::Format32bppCmyk), (Bytes{10, 100, 255, 18}));
    // Packed and premultiplied pixels are expanded first: bit 15 clear is the background, set is the colour.
    EXPECT_EQ(convert({0xFF, 0x7F}, PixelFormat::Format16bppArgb1555, PixelFormat::Format24bppRgb), (Bytes{10, 100, 255}));
    EXPECT_EQ(convert({0x1F, 0x80}, PixelFormat::Format16bppArgb1555, PixelFormat::Format24bppRgb), (Bytes{248, 0, 0}));
    // 64 at alpha 128 is 127: (127 * 128 + 10 * 127) / 255 = 68.
    EXPECT_EQ(convert({64, 0, 0, 128}, PixelFormat::Format32bppPArgb, PixelFormat::Format24bppRgb), (Bytes{68, 49, 127}));
    // A destination with alpha keeps it.
    EXPECT_EQ(convert({1, 2, 3, 4}, PixelFormat::Format32bppArgb, PixelFormat::Format32bppArgb), (Bytes{1, 2, 3, 4}));
}

TEST(ColorSpaceManager, ConvertsColors) {
    ColorSpaceManager manager;
    ColorSpaceManager::Channels result{9, 9, 9, 9, 9};
    using Channels = ColorSpaceManager::Channels;
    manager.TransformColor({65535, 0, 0, 77, 0}, ColorSpace::Rgb, nullptr, result, ColorSpace::GrayScale);
    EXPECT_EQ(result, (Channels{19660, 77, 0, 0, 0})); // 65535 * 30 / 100
    manager.TransformColor({1000, 5, 0, 0, 0}, ColorSpace::GrayScale, nullptr, result, ColorSpace::Cmyk);
    EXPECT_EQ(result, (Channels{64535, 0, 0, 0, 5}));
    manager.TransformColor({0, 0, 0, 65535, 300}, ColorSpace::Cmyk, nullptr, result, ColorSpace::Rgb);
    EXPECT_EQ(result, (Channels{65535, 65535, 0, 300, 0}));
    EXPECT_THROW(manager.TransformColor({}, ColorSpace::Unknown, nullptr, result, ColorSpace::Rgb),
                 UnsupportedPixelFormatException);
}

TEST(ColorSpaceManager, SettersGuardTheirRanges) {
    ColorSpaceManager manager;
    EXPECT_EQ(manager.GetDitheringType(), DitheringType::FloydSteinberg);
    EXPECT_EQ(manager.GetColorManagementEngine(), ColorManagementEngine::LittleCms);
    for (const double bad : {-0.01, 1.01, std::nan("")}) {
        EXPECT_THROW(manager.SetDitheringIntensity(bad), ArgumentOutOfRangeException);
        EXPECT_THROW(manager.SetConvertAlpha(bad), ArgumentOutOfRangeException);
    }
    EXPECT_EQ(manager.GetDitheringIntensity(), 1.0);
    EXPECT_EQ(manager.GetConvertAlpha(), 1.0);
    EXPECT_TRUE(manager.IsPixelFormatSupported(PixelFormat::Format80bppAcmyk));
    EXPECT_FALSE(manager.IsPixelFormatSupported(PixelFormat::Format40bppAcmyk));
    EXPECT_EQ(ColorSpaceManager::GetInteractionPixelFormat(PixelFormat::Format4bppIndexed), PixelFormat::Format32bppArgb);
    EXPECT_EQ(ColorSpaceManager::GetInteractionPixelFormat(PixelFormat::Format32bppPArgb), PixelFormat::Format32bppArgb);
    EXPECT_THROW(ColorSpaceManager::GetInteractionPixelFormat(PixelFormat::FormatUnknown), UnsupportedPixelFormatException);
    EXPECT_EQ(ColorSpaceManager::GetExtendedPixelFormat(PixelFormat::Format40bppAcmyk), PixelFormat::Format80bppAcmyk);
    EXPECT_EQ(ColorSpaceManager::GetSimplePixelFormat(PixelFormat::Format32bppAGrayScale), PixelFormat::Format16bppAGrayScale);
    EXPECT_THROW(ColorSpaceManager::GetSimplePixelFormat(PixelFormat::Format32bppArgb), UnsupportedPixelFormatException);
    EXPECT_THROW(ColorSpaceManager::GetExtendedPixelFormat(PixelFormat::Format24bppRgb), UnsupportedPixelFormatException);
}

template <class Failure, class Call> void ExpectText(const char* text, Call call) {
    try {
        call();
        ADD_FAILURE() << "no failure: " << text;
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.GetExceptionStringRef(), text);
    }
}

TEST(ColorSpaceManager, NamesWhatIsMissing) {
    ColorSpaceManager manager;
    std::unique_ptr<BitmapData> destination;
    std::uint8_t byte[8] = {};
    constexpr auto rgb = PixelFormat::Format24bppRgb;
    constexpr auto indexed = PixelFormat::Format8bppIndexed;
    ExpectText<ArgumentException>("Argument has an unappropriate value (objSrcBitmapData). (instance is empty).",
                                  [&] { manager.TransformBitmapData({}, rgb, destination); });
    ExpectText<PaletteException>("Palette is not presented or empty.",
                                 [&] { manager.TransformBitmapData(BitmapData(1, 1, indexed), rgb, destination); });
    ExpectText<NotInitializedException>("ColorSpaceManager is not initialized.", [&] { manager.TransformScanline(byte, byte); });
    ExpectText<ArgumentException>("Argument has an unappropriate value (uintPixelCount). (the value must be more than 0).",
                                  [&] { manager.InitializePerScanlineHandling(0, rgb, nullptr, nullptr, rgb); });
    ExpectText<ArgumentException>("Argument has an unappropriate value (pSrcColorMap). (source palette must be presented).",
                                  [&] { manager.InitializePerScanlineHandling(1, indexed, nullptr, nullptr, rgb); });
    ExpectText<ArgumentException>("Argument has an unappropriate value (color map type). (color map must be custom).",
                                  [&] { manager.InitializePerScanlineHandling(1, rgb, nullptr, nullptr, indexed); });
    manager.SetColorMapType(ColorMapType::Custom);
    ExpectText<ArgumentException>(
        "Argument has an unappropriate value (custom color map). (custom color map must be presented).",
        [&] { manager.InitializePerScanlineHandling(1, rgb, nullptr, nullptr, indexed); });
    ExpectText<PaletteException>("'Custom' palette is not presented or empty.",
                                 [&] { manager.TransformBitmapData(BitmapData(1, 1, rgb), indexed, destination); });
    manager.InitializePerScanlineHandling(1, rgb, nullptr, nullptr, rgb);
    EXPECT_THROW(manager.TransformScanline(nullptr, byte), ArgumentNullPointerException);
    EXPECT_THROW(manager.TransformScanline(byte, nullptr), ArgumentNullPointerException);
    EXPECT_THROW(manager.CreateTransformChain(rgb, rgb, nullptr), ArgumentNullPointerException);
    EXPECT_EQ(destination, nullptr);
}

TEST(ColorSpaceManager, KeepAlphaFillsTheAlphaOfAnyFormatWithoutIt) {
    auto raster = std::make_unique<BitmapData>(2, 1, PixelFormat::Format8bppIndexed);
    ColorMap map(1, PixelFormat::Format32bppArgb);
    const std::uint8_t entry[4] = {1, 2, 3, 200};
    map.SetEntryArgb(0, entry);
    raster->SetColorMap(map);
    ColorSpaceManager::KeepAlpha(raster, 0x7F00);
    ASSERT_EQ(raster->GetPixelFormat(), PixelFormat::Format32bppArgb);
    EXPECT_EQ(PixelBytes(*raster, 1, 0), (std::vector<std::uint8_t>{1, 2, 3, 0x7F}));
    ColorSpaceManager::KeepAlpha(raster, 0); // has alpha: stays
    EXPECT_EQ(PixelBytes(*raster, 0, 0), (std::vector<std::uint8_t>{1, 2, 3, 0x7F}));
    auto words = std::make_unique<BitmapData>(1, 1, PixelFormat::Format64bppCmyk);
    ColorSpaceManager::KeepAlpha(words, 0x1234);
    EXPECT_EQ(PixelBytes(*words, 0, 0), (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 0, 0, 0, 0x34, 0x12}));
}

TEST(ColorSpaceManager, ReportsRowsAndStops) {
    const BitmapData source = RandomRaster(PixelFormat::Format24bppRgb);
    Testing::EventsProbe events;
    ColorSpaceManager manager;
    UsePlainPalette(manager);
    manager.SetEvents(&events);
    std::unique_ptr<BitmapData> destination;
    manager.TransformBitmapData(source, PixelFormat::Format8bppGrayScale, destination);
    EXPECT_EQ(events.Announced(), static_cast<std::int32_t>(Height));
    EXPECT_EQ(events.Steps(), Height);
    // A selection of entries is a task of its own, and both together reach the end.
    manager.SetColorMapEntryCount(7);
    manager.TransformBitmapData(source, PixelFormat::Format4bppIndexed, destination);
    std::int32_t value = 0;
    events.GetProgressCurValue(&value);
    EXPECT_EQ(value, events.Announced());
    Testing::EventsProbe stop(1);
    manager.SetEvents(&stop);
    std::unique_ptr<BitmapData> untouched;
    EXPECT_THROW(manager.TransformBitmapData(source, PixelFormat::Format32bppArgb, untouched), AbortedException);
    EXPECT_EQ(untouched, nullptr);
    EXPECT_EQ(stop.Reports(), 2);
}

TEST(ColorSpaceManager, KeepsResolutionAndReplacesItsOwnSource) {
    auto raster = std::make_unique<BitmapData>(RandomRaster(PixelFormat::Format24bppRgb));
    raster->SetHorizontalResolution(300.0);
    const auto first = PixelBytes(*raster, 0, 1);
    ColorSpaceManager manager;
    manager.TransformBitmapData(*raster, PixelFormat::Format32bppRgb, raster);
    EXPECT_EQ(raster->GetHorizontalResolution(), 300.0);
    EXPECT_EQ(PixelBytes(*raster, 0, 1), (std::vector<std::uint8_t>{first[0], first[1], first[2], 0}));
    // A raster that is given is made anew and stays the same object.
    auto given = std::make_unique<BitmapData>(1, 1, PixelFormat::Format8bppGrayScale);
    const BitmapData* const object = given.get();
    manager.TransformBitmapData(*raster, PixelFormat::Format24bppRgb, given);
    EXPECT_EQ(given.get(), object);
    EXPECT_EQ(PixelBytes(*given, 0, 1), first);
}

} // namespace
} // namespace ImagingFramework
