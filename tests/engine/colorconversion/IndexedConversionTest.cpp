#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/IndexedLinks.h"
#include "colorconversion/PackedIndices.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/MemoryWriter.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace ImagingFramework {
namespace {

using Entry = std::vector<std::uint8_t>;

Entry EntryAt(const ColorMap& map, std::uint32_t index) {
    Entry entry(4);
    map.GetEntryArgb(index, entry.data());
    return entry;
}

ColorMap MapOf(const std::vector<Entry>& entries, PixelFormat format) {
    ColorMap map(static_cast<std::uint32_t>(entries.size()), format);
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
        map.SetEntryArgb(i, entries[i].data());
    }
    return map;
}

/// A row of grays.
BitmapData GrayRow(const std::vector<std::uint8_t>& grays) {
    BitmapData raster(static_cast<std::uint32_t>(grays.size()), 1, PixelFormat::Format8bppGrayScale);
    std::copy(grays.begin(), grays.end(), raster.GetPixelsRef());
    return raster;
}

std::vector<int> Indices(const BitmapData& raster) {
    std::vector<std::uint8_t> bytes(raster.GetWidth());
    UnpackIndices(raster.GetScanlineRef(0), PixelFormatSize(raster.GetPixelFormat()), bytes.size(), bytes.data());
    return {bytes.begin(), bytes.end()};
}

TEST(FixedPalettes, HaveTheirEntries) {
    struct Case {
        ColorMapType Type;
        std::uint32_t Count;
        std::vector<std::pair<std::uint32_t, Entry>> Entries;
    };
    const Case cases[] = {
        {ColorMapType::WebSafe,
         216,
         {{0, {255, 255, 255, 255}},
          {1, {255, 255, 204, 255}},
          {6, {255, 204, 255, 255}},
          {43, {204, 204, 204, 255}}, // 36 + 6 + 1: one step down in each byte
          {215, {0, 0, 0, 255}}}},
        // The cube, ten levels of each byte and of all, and black.
        {ColorMapType::Mac,
         256,
         {{214, {0, 0, 51, 255}},
          {215, {0xEE, 0, 0, 255}},
          {226, {0, 0xDD, 0, 255}},
          {244, {0, 0, 0x11, 255}},
          {245, {0xEE, 0xEE, 0xEE, 255}},
          {255, {0, 0, 0, 255}}}},
        // Red and blue stand exchanged.
        {ColorMapType::Windows,
         256,
         {{1, {0x80, 0, 0, 255}}, {9, {0xA6, 0xCA, 0xF0, 255}}, {112, {0xAA, 0x1F, 0, 255}}, {249, {0xFF, 0, 0, 255}}}},
        {ColorMapType::GrayScale, 256, {{77, {77, 77, 77, 255}}}},
        {ColorMapType::Bicolor, 2, {{0, {0, 0, 0, 255}}, {1, {255, 255, 255, 255}}}},
    };
    ColorMap map;
    for (const Case& c : cases) {
        for (const bool withAlpha : {false, true}) {
            ColorSpaceManager::FillPalette(map, c.Type, withAlpha);
            EXPECT_EQ(map.GetPixelFormat(), withAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
            EXPECT_EQ(map.GetEntryCount(), c.Count);
            for (const auto& [index, entry] : c.Entries) {
                EXPECT_EQ(EntryAt(map, index), entry) << static_cast<int>(c.Type) << " " << index;
            }
        }
    }
    // Sums of the three bytes over the 256 entries, added up from the printed table by a separate script.
    ColorSpaceManager::FillPalette(map, ColorMapType::Windows, false);
    std::uint32_t sums[3] = {};
    for (std::uint32_t i = 0; i < 256; ++i) {
        for (std::size_t byte = 0; byte < 3; ++byte) {
            sums[byte] += EntryAt(map, i)[byte];
        }
    }
    EXPECT_EQ(sums[0], 34458U);
    EXPECT_EQ(sums[1], 34177U);
    EXPECT_EQ(sums[2], 33351U);
    for (const ColorMapType none : {ColorMapType::Adaptive, ColorMapType::Custom}) {
        EXPECT_THROW(ColorSpaceManager::FillPalette(map, none, true), ArgumentException);
    }
}

// The fast packing equals the bit streams, at any width, and leaves the bits behind the last index alone.
TEST(PackedIndices, EqualTheBitStreams) {
    std::mt19937 random(3);
    std::vector<std::uint8_t> bytes(64);
    for (std::uint32_t bits = 1; bits <= 8; ++bits) {
        for (std::size_t count : {0U, 1U, 2U, 3U, 7U, 8U, 9U, 31U, 64U}) {
            std::ranges::generate(bytes, [&] { return static_cast<std::uint8_t>(random()); });
            std::vector<std::uint8_t> indices(count);
            UnpackIndices(bytes.data(), bits, count, indices.data());
            MemoryReader reader(bytes.data(), bytes.size());
            for (std::size_t i = 0; i < count; ++i) {
                std::uint32_t expected = 0;
                for (std::uint32_t bit = 0; bit < bits; ++bit) {
                    expected = expected * 2 + (reader.ReadBit() ? 1U : 0U);
                }
                ASSERT_EQ(indices[i], expected) << bits << " bits, index " << i << " of " << count;
            }
            std::vector<std::uint8_t> packed(64, 0xA5);
            std::vector<std::uint8_t> written(64, 0xA5);
            PackIndices(indices.data(), bits, count, packed.data());
            MemoryWriter writer(written.data(), written.size());
            for (const std::uint8_t index : indices) {
                for (std::uint32_t bit = bits; bit-- > 0;) {
                    writer.WriteBit(((index >> bit) & 1) != 0);
                }
            }
            ASSERT_EQ(packed, written) << bits << " bits, " << count;
        }
    }
}

TEST(IndexedLinks, CheckEveryIndexAgainstTheMap) {
    const ColorMap map = MapOf({{1, 2, 3, 4}, {5, 6, 7, 8}}, PixelFormat::Format32bppArgb);
    IndexedToArgb32Link link;
    std::uint8_t out[16];
    const std::uint8_t good[4] = {0, 1, 1, 0};
    link.SetPixelCount(4);
    EXPECT_THROW(link.ApplyScanlineTransform(good, out), PaletteException);
    link.SetSrcColorMap(&map);
    link.ApplyScanlineTransform(good, out);
    EXPECT_EQ(out[7], 8);
    EXPECT_EQ(out[12], 1);
    const std::uint8_t bad[4] = {0, 1, 2, 0};
    const auto expectCorrupted = [](IColorTransformLink& run, const std::uint8_t* source, std::uint8_t* destination) {
        try {
            run.ApplyScanlineTransform(source, destination);
            ADD_FAILURE();
        } catch (const ArgumentException& failure) {
            EXPECT_EQ(failure.GetExceptionStringRef(),
                      "Argument has an unappropriate value (bitmap). (Source bitmap is corrupted.).");
        }
    };
    expectCorrupted(link, bad, out);
    // Indices behind the run do not count; those of 4 bits inside it do.
    link.SetPixelCount(2);
    EXPECT_NO_THROW(link.ApplyScanlineTransform(bad, out));
    const std::uint8_t packed[1] = {0x12};
    link.SetSrcBitsPerPixel(4);
    expectCorrupted(link, packed, out);
    link.SetSrcBitsPerPixel(1);
    EXPECT_NO_THROW(link.ApplyScanlineTransform(packed, out));
    ColorMap target = MapOf({{9, 9, 9, 255}}, PixelFormat::Format24bppRgb);
    IndexedToIndexed translate;
    translate.SetPixelCount(4);
    translate.SetSrcColorMap(&map);
    EXPECT_THROW(translate.ApplyScanlineTransform(good, out), PaletteException);
    translate.SetDstColorMap(&target);
    expectCorrupted(translate, bad, out);
}

TEST(IndexedLinks, TranslateFromMapToMap) {
    const ColorMap from = MapOf({{0, 0, 0, 0}, {250, 250, 250, 0}, {0, 0, 250, 0}}, PixelFormat::Format32bppArgb);
    ColorMap to = MapOf({{0, 0, 255, 255}, {255, 255, 255, 255}, {0, 0, 0, 255}}, PixelFormat::Format24bppRgb);
    IndexedToIndexed link;
    link.SetPixelCount(3);
    link.SetSrcBitsPerPixel(8);
    link.SetDstBitsPerPixel(4);
    link.SetSrcColorMap(&from);
    link.SetDstColorMap(&to);
    const std::uint8_t source[3] = {0, 1, 2};
    std::uint8_t out[4] = {};
    link.ApplyScanlineTransform(source, out);
    EXPECT_EQ(out[0], 0x21);
    EXPECT_EQ(out[1], 0x00);
    // Another map discards the table.
    ColorMap other = MapOf({{255, 255, 255, 255}, {0, 0, 0, 255}}, PixelFormat::Format24bppRgb);
    link.SetDstColorMap(&other);
    link.ApplyScanlineTransform(source, out);
    EXPECT_EQ(out[0], 0x10);
    MemPtr<std::uint8_t> buffer;
    EXPECT_NO_THROW(link.AllocOutBuffer(&buffer));
    EXPECT_TRUE(buffer);
}

TEST(IndexedLinks, CutAlphaAtTheThreshold) {
    ColorMap map = MapOf({{0, 0, 0, 255}, {200, 200, 200, 0}, {255, 255, 255, 255}}, PixelFormat::Format32bppArgb);
    Argb32ToIndexedLink link;
    link.SetPixelCount(3);
    link.SetPaletteAlphaThreshold(128);
    link.SetUsePaletteAlphaThreshold(true);
    std::uint8_t out[3] = {};
    const std::uint8_t source[12] = {0, 0, 0, 127, 250, 250, 250, 128, 200, 200, 200, 255};
    EXPECT_THROW(link.ApplyScanlineTransform(source, out), PaletteException);
    link.SetDstColorMap(&map);
    link.ApplyScanlineTransform(source, out);
    EXPECT_EQ((std::vector<int>{out[0], out[1], out[2]}), (std::vector<int>{1, 2, 2}));
    // Without the threshold the alpha takes part in the search: 20 * 55^2 is less than 100 * 55^2.
    link.SetUsePaletteAlphaThreshold(false);
    const std::uint8_t faint[12] = {200, 200, 200, 0, 200, 200, 200, 55, 0, 0, 0, 255};
    link.ApplyScanlineTransform(faint, out);
    EXPECT_EQ((std::vector<int>{out[0], out[1], out[2]}), (std::vector<int>{1, 1, 0}));
    // With it, but with no transparent entry, the alpha goes into the search as it is.
    map.SetAlpha(1, 1);
    link.SetUsePaletteAlphaThreshold(true);
    link.ApplyScanlineTransform(faint, out);
    EXPECT_EQ((std::vector<int>{out[0], out[1], out[2]}), (std::vector<int>{1, 1, 0}));
}

TEST(IndexedDestination, OneBitIsAlwaysBlackAndWhite) {
    ColorSpaceManager manager;
    manager.SetDitheringType(DitheringType::None);
    std::unique_ptr<BitmapData> result;
    for (const ColorMapType type : {ColorMapType::Adaptive, ColorMapType::Custom, ColorMapType::Windows}) {
        manager.SetColorMapType(type);
        manager.TransformBitmapData(GrayRow({0, 100, 200, 255}), PixelFormat::Format1bppIndexed, result);
        EXPECT_EQ(Indices(*result), (std::vector<int>{0, 0, 1, 1}));
        EXPECT_EQ(result->GetColorMapRef()->GetEntryCount(), 2U);
        EXPECT_EQ(result->GetColorMapRef()->GetPixelFormat(), PixelFormat::Format32bppArgb);
    }
}

// Of the 300 grays and doubles of a custom map the 256 most used stay; here, of 6 the 3 most used.
TEST(IndexedDestination, SelectsTheMostUsedEntries) {
    ColorSpaceManager manager;
    manager.SetDitheringType(DitheringType::None);
    manager.SetColorMapType(ColorMapType::Custom);
    const auto gray = [](int value) { return Entry(4, static_cast<std::uint8_t>(value)); };
    manager.SetCustomColorMap(
        MapOf({gray(0), gray(50), gray(100), gray(150), gray(200), gray(250)}, PixelFormat::Format24bppRgb));
    manager.SetColorMapEntryCount(3);
    std::unique_ptr<BitmapData> result;
    // Hits by entry: 1, 0, 2, 1, 0, 3. The exchanges: i = 0: 2 and 3 come up in turn, leaving 3 0 1 1 0 2 over the entries
    // 5 1 0 3 4 2; i = 1: 1 (entry 0) then 2 (entry 2) come up, leaving 3 2 0 1 0 1 over 5 2 1 3 4 0; i = 2: entry 3.
    manager.TransformBitmapData(GrayRow({0, 100, 101, 150, 250, 251, 252}), PixelFormat::Format8bppIndexed, result);
    const ColorMap& map = *result->GetColorMapRef();
    ASSERT_EQ(map.GetEntryCount(), 3U);
    EXPECT_EQ(EntryAt(map, 0)[0], 250);
    EXPECT_EQ(EntryAt(map, 1)[0], 100);
    EXPECT_EQ(EntryAt(map, 2)[0], 150);
    EXPECT_EQ(map.GetPixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(Indices(*result), (std::vector<int>{1, 1, 1, 2, 0, 0, 0}));
    // The whole map is used when it fits, as it is.
    manager.SetColorMapEntryCount(6);
    manager.TransformBitmapData(GrayRow({250, 0}), PixelFormat::Format8bppIndexed, result);
    EXPECT_TRUE(*result->GetColorMapRef() == manager.GetCustomColorMapRef());
    EXPECT_EQ(Indices(*result), (std::vector<int>{5, 0}));
}

TEST(IndexedDestination, TakesCustomMapsOfMoreThan256Entries) {
    ColorMap map(300, PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < 300; ++i) {
        const std::uint8_t entry[3] = {static_cast<std::uint8_t>(i % 256), static_cast<std::uint8_t>(i / 256 * 255), 0};
        map.SetEntryRgb(i, entry);
    }
    ColorSpaceManager manager;
    manager.SetDitheringType(DitheringType::None);
    manager.SetColorMapType(ColorMapType::Custom);
    manager.SetCustomColorMap(map);
    BitmapData source(4, 1, PixelFormat::Format24bppRgb);
    const std::uint8_t pixels[12] = {40, 255, 0, 40, 255, 0, 7, 0, 0, 43, 255, 0};
    std::copy_n(pixels, 12, source.GetPixelsRef());
    std::unique_ptr<BitmapData> result;
    manager.TransformBitmapData(source, PixelFormat::Format8bppIndexed, result);
    ASSERT_EQ(result->GetColorMapRef()->GetEntryCount(), 256U);
    EXPECT_EQ(EntryAt(*result->GetColorMapRef(), 0), (Entry{40, 255, 0, 255})); // entry 296, hit twice
    for (std::uint32_t x = 0; x < 4; ++x) {
        const auto index = static_cast<std::uint32_t>(Indices(*result)[x]);
        EXPECT_EQ(EntryAt(*result->GetColorMapRef(), index), (Entry{pixels[3 * x], pixels[3 * x + 1], 0, 255}));
    }
}

TEST(IndexedDestination, CountsHitsOnBlendedRows) {
    ColorSpaceManager manager;
    manager.SetDitheringType(DitheringType::None);
    manager.SetColorMapType(ColorMapType::GrayScale);
    manager.SetColorMapEntryCount(1);
    manager.SetBlendWithBackground(true);
    manager.SetBackgroundColor({0x4000, 0x4000, 0x4000, 0, 0});
    BitmapData source(3, 1, PixelFormat::Format32bppArgb); // all transparent: all background
    std::unique_ptr<BitmapData> result;
    manager.TransformBitmapData(source, PixelFormat::Format4bppIndexed, result);
    ASSERT_EQ(result->GetColorMapRef()->GetEntryCount(), 1U);
    EXPECT_EQ(EntryAt(*result->GetColorMapRef(), 0), (Entry{0x40, 0x40, 0x40, 255}));
}

// What dithers by default: gray 100 becomes black and hands 100 on; 100 + 43 = 143 is white.
TEST(IndexedDestination, DithersByDefault) {
    ColorSpaceManager manager;
    std::unique_ptr<BitmapData> result;
    manager.SetColorMapType(ColorMapType::Bicolor);
    manager.TransformBitmapData(GrayRow({100, 100, 100}), PixelFormat::Format8bppIndexed, result);
    EXPECT_EQ(Indices(*result), (std::vector<int>{0, 1, 0}));
    manager.SetDitheringIntensity(0.25);
    manager.TransformBitmapData(GrayRow({100, 100, 100}), PixelFormat::Format8bppIndexed, result);
    EXPECT_EQ(Indices(*result), (std::vector<int>{0, 0, 0}));
}

} // namespace
} // namespace ImagingFramework
