#include "Throws.h"
#include "TreeOracle.h"
#include "colorconversion/HexadecimalTreeQuantizer.h"
#include "colorconversion/MedianCutQuantizer.h"
#include "colorconversion/OctreeColorQuantizer.h"

#include <gtest/gtest.h>
#include <random>

namespace ImagingFramework {
namespace {

using Testing::TreeOracle;
/// Alpha, red, green, blue.
using Color = TreeOracle::Color;
using Colors = std::vector<Color>;

Colors PaletteOf(ColorQuantizer& quantizer) {
    std::unique_ptr<ColorMap> map;
    quantizer.GetPalette(map);
    Colors colors;
    for (std::uint32_t i = 0; i < map->GetEntryCount(); ++i) {
        std::uint8_t entry[4];
        map->GetEntryArgb(i, entry);
        colors.push_back({entry[3], entry[2], entry[1], entry[0]});
    }
    return colors;
}

Colors Quantize(ColorQuantizer& quantizer, bool withAlpha, std::uint32_t limit, const Colors& colors) {
    quantizer.Open(8, withAlpha, limit);
    for (const auto& [alpha, red, green, blue] : colors) {
        quantizer.AddColor(alpha, red, green, blue);
    }
    return PaletteOf(quantizer);
}

Colors MedianCut(std::uint32_t limit, const Colors& colors, bool withAlpha = true) {
    MedianCutQuantizer quantizer;
    return Quantize(quantizer, withAlpha, limit, colors);
}

Color Rgb(int red, int green, int blue) {
    return {255, static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
}

/// Three kinds of pictures: noise, runs of few colours, and smooth ramps with grain.
Colors RandomColors(std::mt19937& random, int kind, std::size_t count) {
    Colors colors;
    for (std::size_t i = 0; i < count; ++i) {
        Color color;
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const auto noise = static_cast<std::uint32_t>(random());
            const std::uint32_t ramp = static_cast<std::uint32_t>(i * (channel + 1) / 8) + noise % 16;
            const std::uint32_t value = kind == 0 ? noise : (kind == 1 ? noise % 3 * 100 : ramp);
            color[channel] = static_cast<std::uint8_t>(value);
        }
        colors.insert(colors.end(), kind == 1 ? 1 + random() % 9 : 1, color);
    }
    return colors;
}

TEST(ColorQuantizer, ChecksItsArguments) {
    OctreeColorQuantizer quantizer;
    quantizer.Open(8, false, 3);
    quantizer.AddColor(1, 2, 3);
    EXPECT_THROW(quantizer.Open(0, false, 3), ArgumentException);
    EXPECT_THROW(quantizer.Open(9, false, 3), ArgumentException);
    EXPECT_EQ(PaletteOf(quantizer), (Colors{Rgb(1, 2, 3)})) << "a refused call changes nothing";
    EXPECT_THROW(quantizer.AddColorsArgb(nullptr, 1), ArgumentNullPointerException);
    HexadecimalTreeQuantizer tree;
    MedianCutQuantizer cut;
    for (ColorQuantizer* const other : {static_cast<ColorQuantizer*>(&tree), static_cast<ColorQuantizer*>(&cut)}) {
        ExpectThrown<Exception>("Method not implemented", [&] { other->GetNearestColorIndex(0, 0, 0); });
        EXPECT_TRUE(Quantize(*other, true, 256, {}).empty());
    }
}

// Black, white and almost black, two entries. The youngest node above the leaves is white's; it is merged first and gains
// nothing, then black's.
TEST(OctreeColorQuantizer, MergesTheYoungestFirst) {
    OctreeColorQuantizer quantizer;
    EXPECT_EQ(quantizer.GetNearestColorIndex(1, 2, 3), -1);
    EXPECT_EQ(Quantize(quantizer, false, 2, {Rgb(0, 0, 0), Rgb(255, 255, 255), Rgb(0, 0, 1)}),
              (Colors{Rgb(0, 0, 0), Rgb(255, 255, 255)})); // blue: 1 / 2
    EXPECT_EQ(quantizer.GetNearestColorIndex(0, 0, 1), 0);
    EXPECT_EQ(quantizer.GetNearestColorIndex(255, 255, 255), 1);
    EXPECT_EQ(quantizer.GetNearestColorIndex(254, 254, 255), 1) << "a leaf now";
    EXPECT_EQ(quantizer.GetNearestColorIndex(253, 255, 255), -1) << "beside it nothing was added";
    EXPECT_EQ(Quantize(quantizer, true, 0, {{9, 1, 2, 3}}), (Colors{Rgb(1, 2, 3)})) << "a new start; alpha is dropped";
}

/// The palettes of all three kinds of pictures with each limit.
void ExpectOracle(ColorQuantizer& quantizer, TreeOracle::Kind kind, std::initializer_list<std::uint32_t> limits) {
    const bool isOctree = kind == TreeOracle::Kind::Octree;
    std::mt19937 random(4);
    for (const std::uint32_t limit : limits) {
        for (int picture = 0; picture < 3; ++picture) {
            Colors colors = RandomColors(random, picture, 700);
            TreeOracle oracle(kind, isOctree ? 8 : 6, limit);
            for (Color& color : colors) {
                color[0] = isOctree ? 255 : color[0];
                oracle.Add(color);
            }
            ASSERT_EQ(Quantize(quantizer, !isOctree, limit, colors), oracle.Palette()) << limit << ", " << picture;
            for (const auto& [alpha, red, green, blue] : isOctree ? colors : Colors()) {
                ASSERT_GE(quantizer.GetNearestColorIndex(red, green, blue), 0);
            }
        }
    }
}

TEST(ColorQuantizer, TreesEqualTheOracle) {
    OctreeColorQuantizer octree;
    ExpectOracle(octree, TreeOracle::Kind::Octree, {1, 2, 7, 16, 100, 256});
    HexadecimalTreeQuantizer tree;
    ExpectOracle(tree, TreeOracle::Kind::SixteenWay, {2, 8, 9, 10, 100, 256});
}

// Half transparent white and opaque mid gray share a path in the colours, but not in alpha; the mean is of plain colours.
TEST(HexadecimalTreeQuantizer, GoesByPremultipliedColors) {
    HexadecimalTreeQuantizer quantizer;
    // 201 * 100 / 255 = 78 and 203 * 100 / 255 = 79 share their six top bits.
    EXPECT_EQ(Quantize(quantizer, true, 256, {{100, 201, 0, 0}, {100, 203, 0, 0}, {0, 10, 20, 30}, {1, 200, 90, 50}}),
              (Colors{{0, 105, 55, 40}, {100, 202, 0, 0}}));
    EXPECT_EQ(Quantize(quantizer, false, 256, {{100, 200, 0, 0}}), (Colors{{255, 200, 0, 0}}));
}

// The nine children that the root can have stay, however few entries are asked for.
TEST(HexadecimalTreeQuantizer, NeverMergesTheChildrenOfTheRoot) {
    Colors corners;
    for (int corner = 0; corner < 8; ++corner) {
        corners.push_back(Rgb(corner % 2 * 255, corner / 2 % 2 * 255, corner / 4 * 255));
    }
    HexadecimalTreeQuantizer quantizer;
    EXPECT_EQ(Quantize(quantizer, true, 7, corners), corners);
    Colors nine = corners;
    nine.insert(nine.begin(), {0, 0, 0, 0});
    EXPECT_EQ(Quantize(quantizer, true, 2, nine), nine);
    // Further colours find leaves: 255 and 1 become 128.
    nine.push_back(Rgb(255, 255, 1));
    EXPECT_EQ(Quantize(quantizer, true, 8, nine)[4], Rgb(255, 255, 0)); // blue: 1 / 2
}

// The record that came last has no say in how far the first box reaches.
TEST(MedianCutQuantizer, LeavesTheLastRecordOutOfTheFirstBox) {
    EXPECT_EQ(MedianCut(256, {Rgb(0, 0, 0), Rgb(255, 255, 255)}), (Colors{Rgb(127, 127, 127)}));
    EXPECT_EQ(MedianCut(256, {Rgb(0, 0, 0), Rgb(255, 255, 255), Rgb(255, 255, 255)}),
              (Colors{Rgb(0, 0, 0), Rgb(255, 255, 255)}));
    EXPECT_EQ(MedianCut(256, {Rgb(1, 2, 3)}), (Colors{Rgb(1, 2, 3)}));
}

// Of equal spreads alpha is cut before red, red before green.
TEST(MedianCutQuantizer, CutsTheLongestSideAndTheFirstOfEquals) {
    const Colors square{Rgb(0, 0, 0), Rgb(0, 200, 0), Rgb(200, 0, 0), Rgb(200, 200, 0), Rgb(200, 200, 0)};
    EXPECT_EQ(MedianCut(2, square), (Colors{Rgb(0, 100, 0), Rgb(200, 133, 0)}));
    const Colors tall{Rgb(0, 0, 0), Rgb(0, 201, 0), Rgb(200, 0, 0), Rgb(200, 201, 0), Rgb(200, 201, 0)};
    EXPECT_EQ(MedianCut(2, tall), (Colors{Rgb(100, 0, 0), Rgb(133, 201, 0)}));
    // A step of 1 in alpha counts 256; one in a colour, at alpha 255, 255 * 256 / 255.
    const Colors faint{{254, 10, 0, 0}, {255, 11, 0, 0}, {254, 11, 0, 0}, {254, 11, 0, 0}};
    EXPECT_EQ(MedianCut(2, faint), (Colors{{254, 10, 0, 0}, {255, 11, 0, 0}}));
    EXPECT_EQ(MedianCut(2, faint, false), (Colors{Rgb(10, 0, 0), Rgb(11, 0, 0)}));
    // Boxes that are all transparent are never cut.
    EXPECT_EQ(MedianCut(256, {{0, 0, 0, 0}, {0, 200, 0, 0}, {0, 100, 30, 0}}), (Colors{{0, 100, 10, 0}}));
}

// The fullest box is cut while there are fewer than half of the boxes, then the longest one.
TEST(MedianCutQuantizer, CutsByPopulationAndThenByScore) {
    Colors colors(10, Rgb(0, 0, 0));
    colors.insert(colors.end(), 10, Rgb(10, 0, 0));
    colors.insert(colors.end(), {Rgb(250, 0, 0), Rgb(250, 100, 0), Rgb(250, 100, 0)});
    EXPECT_EQ(MedianCut(2, colors), (Colors{Rgb(5, 0, 0), Rgb(250, 66, 0)}));
    EXPECT_EQ(MedianCut(3, colors), (Colors{Rgb(5, 0, 0), Rgb(250, 0, 0), Rgb(250, 100, 0)}));
    EXPECT_EQ(MedianCut(5, colors), (Colors{Rgb(0, 0, 0), Rgb(250, 0, 0), Rgb(10, 0, 0), Rgb(250, 100, 0)}));
}

// Twice the square of 182 * 256 is 46661632 beyond 32 bits, less than the square of 30 * 256.
TEST(MedianCutQuantizer, WrapsItsScores) {
    const Colors colors{Rgb(0, 0, 0),     Rgb(182, 182, 0), Rgb(182, 182, 0), Rgb(182, 182, 0),
                        Rgb(0, 0, 225),   Rgb(0, 0, 255),   Rgb(0, 0, 255)};
    EXPECT_EQ(MedianCut(3, colors), (Colors{Rgb(136, 136, 0), Rgb(0, 0, 225), Rgb(0, 0, 255)}));
}

// One box over the sample shows its mean. Of 65536 colours it is exact; of more its sigma is below 0.4.
TEST(MedianCutQuantizer, SamplesManyColorsEvenly) {
    const auto meanOf = [](std::uint64_t seed, std::size_t zeros, std::size_t others) {
        MedianCutQuantizer quantizer(seed);
        quantizer.Open(8, false, 1);
        for (std::size_t i = 0; i < zeros; ++i) {
            quantizer.AddColor(0, 0, 0);
        }
        for (std::size_t i = 0; i < others; ++i) {
            quantizer.AddColor(200, 200, 200);
        }
        const Colors palette = PaletteOf(quantizer);
        EXPECT_EQ(PaletteOf(quantizer), palette) << "asking again changes nothing";
        return static_cast<int>(palette.at(0)[1]);
    };
    EXPECT_EQ(meanOf(1, 32768, 32768), 100);
    EXPECT_EQ(meanOf(1, 1, 65536), 199);
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        EXPECT_NEAR(meanOf(seed, 500000, 500000), 100, 2);
        EXPECT_NEAR(meanOf(seed, 50000, 150000), 150, 2);
    }
    std::mt19937 random(6);
    const Colors colors = RandomColors(random, 0, 70000);
    MedianCutQuantizer first(1);
    MedianCutQuantizer second(2);
    const Colors palette = Quantize(first, true, 256, colors);
    EXPECT_EQ(palette.size(), 256U);
    EXPECT_NE(Quantize(second, true, 256, colors), palette);
    EXPECT_EQ(Quantize(first, true, 256, colors), palette) << "a seed gives the same palette again";
}

} // namespace
} // namespace ImagingFramework
