#include "EventsProbe.h"
#include "ReferenceConversion.h"
#include "colorconversion/AdaptivePaletteCreator.h"
#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/HexadecimalTreeQuantizer.h"
#include "colorconversion/PackedIndices.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace ImagingFramework {
namespace {

using Entry = std::array<std::uint8_t, 4>; ///< blue, green, red, alpha

std::vector<Entry> Entries(const ColorMap& map) {
    std::vector<Entry> entries(map.GetEntryCount());
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
        map.GetEntryArgb(i, entries[i].data());
    }
    return entries;
}

BitmapData RowOf(const std::vector<Entry>& pixels) {
    BitmapData raster(static_cast<std::uint32_t>(pixels.size()), 1, PixelFormat::Format32bppArgb);
    std::memcpy(raster.GetPixelsRef(), pixels.data(), pixels.size() * 4);
    return raster;
}

std::vector<Entry> PaletteOf(const BitmapData& raster, const AdaptivePaletteParameters& parameters) {
    ColorMap map;
    AdaptivePaletteCreator(parameters).GetPalette(raster, map);
    return Entries(map);
}

constexpr auto Octree = ColorQuantizationAlgorithm::Octree;
constexpr auto Cut = ColorQuantizationAlgorithm::MedianCut;

TEST(AdaptivePaletteCreator, TreatsAlphaInThreeWays) {
    const BitmapData row = RowOf({{1, 2, 3, 0}, {200, 0, 0, 127}, {0, 0, 200, 128}, {0, 0, 200, 255}});
    // Without alpha all pixels count as opaque; the order is that of the tree, by red, green and blue.
    EXPECT_EQ(PaletteOf(row, {256, false, Octree, true, 128}),
              (std::vector<Entry>{{1, 2, 3, 255}, {200, 0, 0, 255}, {0, 0, 200, 255}}));
    // With alpha: by the children's numbers, of which blue is the highest bit.
    EXPECT_EQ(PaletteOf(row, {256, true, Octree, false, 128}),
              (std::vector<Entry>{{1, 2, 3, 0}, {200, 0, 0, 127}, {0, 0, 200, 128}, {0, 0, 200, 255}}));
    EXPECT_EQ(PaletteOf(row, {256, true, Octree, true, 128}), (std::vector<Entry>{{0, 0, 0, 0}, {0, 0, 200, 255}}));
    EXPECT_EQ(PaletteOf(row, {256, true, Cut, true, 128}), (std::vector<Entry>{{0, 0, 0, 0}, {0, 0, 200, 255}}));
    const BitmapData faint = RowOf({{9, 9, 9, 100}, {0, 0, 0, 0}});
    for (const auto algorithm : {Octree, Cut}) {
        EXPECT_EQ(PaletteOf(faint, {256, true, algorithm, true, 128}), (std::vector<Entry>{{0, 0, 0, 0}}));
    }
}

// The ends run toward each other: of 0 1 2 3 4 5 with the even ones faint, 5 takes the place of 0 and 3 that of 2. What is
// merged depends on that order, so the same tree fed by hand in it gives the same palette, and in the plain order another.
TEST(AdaptivePaletteCreator, GathersOpaquePixelsFromBothEnds) {
    std::mt19937 random(8);
    std::vector<Entry> pixels;
    std::vector<Entry> kept;
    for (int i = 0; i < 600; ++i) {
        const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
        pixels.push_back({byte(), byte(), byte(), static_cast<std::uint8_t>(i % 2 == 0 ? 10 : 200)});
    }
    for (int i = 0; i < 300; ++i) {
        const int taken = i % 2 == 0 ? 599 - i : i; // even places get the odd ones from the end
        kept.push_back(pixels[static_cast<std::size_t>(taken)]);
    }
    const auto byHand = [](const std::vector<Entry>& colors) {
        HexadecimalTreeQuantizer quantizer;
        quantizer.Open(8, true, 19);
        for (const Entry& color : colors) {
            quantizer.AddColor(255, color[2], color[1], color[0]);
        }
        std::unique_ptr<ColorMap> map;
        quantizer.GetPalette(map);
        std::vector<Entry> entries = Entries(*map);
        entries.insert(entries.begin(), Entry{});
        return entries;
    };
    const std::vector<Entry> palette = PaletteOf(RowOf(pixels), {20, true, Octree, true, 128});
    EXPECT_EQ(palette, byHand(kept));
    std::erase_if(pixels, [](const Entry& pixel) { return pixel[3] < 128; });
    EXPECT_NE(palette, byHand(pixels));
}

TEST(AdaptivePaletteCreator, ChecksItsSettingsAndReportsRows) {
    const BitmapData row = RowOf({{1, 2, 3, 255}, {4, 5, 6, 255}, {7, 8, 9, 255}});
    EXPECT_THROW(PaletteOf(row, {7, true, Octree, false, 0}), ArgumentOutOfRangeException);
    EXPECT_EQ(PaletteOf(row, {0, false, Octree, false, 0}).size(), 2U) << "the count is at least 2";
    EXPECT_THROW(PaletteOf(row, {7, false, static_cast<ColorQuantizationAlgorithm>(2), false, 0}), ArgumentException);
    EXPECT_THROW(PaletteOf(BitmapData(), {}), ArgumentException);
    Testing::EventsProbe events;
    AdaptivePaletteCreator creator;
    creator.SetEvents(&events);
    ColorMap map;
    creator.GetPalette(BitmapData(3, 5, PixelFormat::Format24bppRgb), map);
    EXPECT_EQ(events.Announced(), 5);
    EXPECT_EQ(events.Steps(), 5);
}

// --- As part of a conversion

std::unique_ptr<BitmapData> Convert(ColorSpaceManager& manager, const BitmapData& source, PixelFormat format) {
    std::unique_ptr<BitmapData> result;
    manager.SetDitheringType(DitheringType::None);
    manager.TransformBitmapData(source, format, result);
    return result;
}

TEST(AdaptiveDestination, KeepsPicturesOfFewColors) {
    std::vector<Entry> pixels;
    for (std::uint32_t i = 0; i < 200; ++i) {
        pixels.push_back({static_cast<std::uint8_t>(i * 91), static_cast<std::uint8_t>(i), 7, 255});
    }
    ColorSpaceManager manager;
    manager.SetColorQuantizationAlgorithm(Octree);
    manager.SetCreateColorMapWithAlpha(false);
    const auto indexed = Convert(manager, RowOf(pixels), PixelFormat::Format8bppIndexed);
    EXPECT_EQ(indexed->GetColorMapRef()->GetEntryCount(), 200U);
    const auto back = Convert(manager, *indexed, PixelFormat::Format32bppArgb);
    EXPECT_EQ(std::memcmp(back->GetScanlineRef(0), pixels.data(), 800), 0);
    // A count above what the format can tell is cut to that.
    manager.SetColorQuantizationAlgorithm(Cut);
    manager.SetColorMapEntryCount(200);
    EXPECT_EQ(Convert(manager, RowOf(pixels), PixelFormat::Format4bppIndexed)->GetColorMapRef()->GetEntryCount(), 16U);
}

/// A raster of random bytes; an indexed one has few colours with alpha.
BitmapData RandomRaster(PixelFormat format, std::mt19937& random) {
    BitmapData raster(61, 17, format);
    for (std::uint32_t y = 0; y < 17; ++y) {
        for (std::uint32_t x = 0; x < raster.GetRowSize(); ++x) {
            raster.GetScanlineRef(y)[x] = static_cast<std::uint8_t>(random());
        }
    }
    if (PixelFormatIsIndexed(format)) {
        ColorMap map(1U << PixelFormatSize(format), PixelFormat::Format32bppArgb);
        for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
            const auto color = static_cast<std::uint32_t>(random());
            map.SetEntryArgb(i, reinterpret_cast<const std::uint8_t*>(&color));
        }
        raster.SetColorMap(map);
    }
    return raster;
}

/// Every index of `indexed` must tell an entry nearest to the pixel of `argb`, and the one before it where that is nearest,
/// too. `threshold` 0 stands for none.
void ExpectNearest(const BitmapData& argb, const BitmapData& indexed, std::uint8_t threshold) {
    const ColorMap& map = *indexed.GetColorMapRef();
    const std::vector<Entry> entries = Entries(map);
    const auto transparent = std::ranges::find(entries, std::uint8_t{0}, [](const Entry& entry) { return entry[3]; });
    std::uint8_t last = 0;
    std::vector<std::uint8_t> indices(argb.GetWidth());
    for (std::uint32_t y = 0; y < argb.GetHeight(); ++y) {
        UnpackIndices(indexed.GetScanlineRef(y), PixelFormatSize(indexed.GetPixelFormat()), indices.size(),
                      indices.data());
        for (std::uint32_t x = 0; x < argb.GetWidth(); ++x) {
            Entry pixel;
            std::memcpy(pixel.data(), argb.GetScanlineRef(y) + 4 * std::size_t{x}, 4);
            if (threshold != 0 && transparent != entries.end()) {
                pixel = pixel[3] < threshold ? *transparent : Entry{pixel[0], pixel[1], pixel[2], 255};
            }
            const auto nearest = Reference::NearestEntries(pixel.data(), map);
            ASSERT_EQ(std::ranges::count(nearest, indices[x]), 1) << x << ", " << y;
            if (std::ranges::count(nearest, last) != 0) {
                ASSERT_EQ(indices[x], last) << x << ", " << y;
            }
            last = indices[x];
        }
    }
}

// From every format to both depths, by every algorithm, with each treatment of alpha: entries within the limit, and the
// nearest one for every pixel.
TEST(AdaptiveDestination, HasThePaletteOfEverySource) {
    std::mt19937 random(9);
    for (const PixelFormat format : AllPixelFormats()) {
        if (format == PixelFormat::Format64bppPArgb) {
            continue; // refused by every conversion
        }
        const BitmapData source = RandomRaster(format, random);
        ColorSpaceManager plain;
        const auto argb = Convert(plain, source, PixelFormat::Format32bppArgb);
        for (int variant = 0; variant < 12; ++variant) {
            const auto destination = variant < 6 ? PixelFormat::Format4bppIndexed : PixelFormat::Format8bppIndexed;
            const bool withAlpha = variant % 3 != 0;
            const bool useThreshold = variant % 3 == 2;
            ColorSpaceManager manager;
            manager.SetColorQuantizationAlgorithm(variant % 2 == 0 ? Octree : Cut);
            manager.SetCreateColorMapWithAlpha(withAlpha);
            manager.SetUsePaletteAlphaThreshold(useThreshold);
            manager.SetPaletteAlphaThreshold(100);
            const auto indexed = Convert(manager, source, destination);
            const ColorMap& map = *indexed->GetColorMapRef();
            SCOPED_TRACE(testing::Message() << std::hex << ToWord(format) << ", variant " << variant);
            ASSERT_LE(map.GetEntryCount(), 1U << PixelFormatSize(destination));
            ASSERT_EQ(map.GetPixelFormat(), withAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
            if (useThreshold) {
                ASSERT_EQ(Entries(map)[0], Entry{});
            }
            ExpectNearest(*argb, *indexed, useThreshold ? 100 : 0);
        }
    }
}

} // namespace
} // namespace ImagingFramework
