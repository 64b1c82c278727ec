#include "EachInstructionSet.h"
#include "Throws.h"
#include "colorconversion/IndexedErrorDiffusion.h"
#include "colorconversion/IndexedLinks.h"
#include "colorconversion/IndexedNoiseDithering.h"
#include "colorconversion/IndexedOrderedDithering.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Indices = std::vector<int>;

ColorMap MapOf(const std::vector<Bytes>& entries) {
    ColorMap map(static_cast<std::uint32_t>(entries.size()), PixelFormat::Format32bppArgb);
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
        map.SetEntryArgb(i, entries[i].data());
    }
    return map;
}

Bytes Gray(int value, int alpha = 255) {
    const auto gray = static_cast<std::uint8_t>(value);
    return {gray, gray, gray, static_cast<std::uint8_t>(alpha)};
}

/// The grays from `first` to `last`.
ColorMap Grays(int first, int last) {
    std::vector<Bytes> entries;
    for (int value = first; value <= last; ++value) {
        entries.push_back(Gray(value));
    }
    return MapOf(entries);
}

Bytes Row(const std::vector<Bytes>& pixels) {
    Bytes row;
    for (const Bytes& pixel : pixels) {
        row.insert(row.end(), pixel.begin(), pixel.end());
    }
    return row;
}

/// Dithers rows of pixels, one after the other.
std::vector<Indices> Dither(DitheringType type, std::uint32_t intensity, ColorMap& map, const std::vector<Bytes>& rows) {
    const auto dithering = CreateDithering(PixelFormat::Format32bppArgb, PixelFormat::Format8bppIndexed, type);
    const std::size_t width = rows[0].size() / 4;
    dithering->Open(static_cast<std::uint32_t>(width), intensity, &map);
    std::vector<Indices> result;
    for (const Bytes& row : rows) {
        Bytes indices(width);
        dithering->ApplyDithering(row.data(), indices.data());
        result.emplace_back(indices.begin(), indices.end());
    }
    return result;
}

/// The same where all pixels are of one color.
std::vector<Indices> DitherFlat(DitheringType type, ColorMap& map, const Bytes& pixel, std::size_t width,
                                std::size_t height, std::uint32_t intensity = 100) {
    return Dither(type, intensity, map, std::vector<Bytes>(height, Row(std::vector<Bytes>(width, pixel))));
}

// --- Error diffusion

// One pixel of 110 on black, in a palette of the grays up to 50: it keeps an error of 60, of which 60 w / 2^shift, cut,
// arrives where the weight is w; those values are entries, so nothing spreads farther.
TEST(ErrorDiffusion, SpreadsAnErrorByItsKernel) {
    const struct {
        DitheringType Type;
        std::vector<Indices> Expected;
    } cases[] = {
        {DitheringType::Original, {{0, 0, 0, 50, 18, 0, 0}, {0, 0, 0, 41, 0, 0, 0}}},
        {DitheringType::FloydSteinberg, {{0, 0, 0, 50, 26, 0, 0}, {0, 0, 11, 18, 3, 0, 0}}},
        {DitheringType::Fan, {{0, 0, 0, 50, 26, 0, 0}, {0, 3, 11, 18, 0, 0, 0}}},
        {DitheringType::Jarvis, {{0, 0, 0, 50, 8, 6, 0}, {0, 3, 6, 8, 6, 3, 0}, {0, 1, 3, 6, 3, 1, 0}}},
        {DitheringType::Stucki, {{0, 0, 0, 50, 12, 5, 0}, {0, 2, 5, 11, 5, 2, 0}, {0, 1, 2, 5, 2, 1, 0}}},
        {DitheringType::Sierra, {{0, 0, 0, 50, 9, 5, 0}, {0, 3, 7, 9, 7, 3, 0}, {0, 0, 3, 5, 3, 0, 0}}},
        {DitheringType::Burkes, {{0, 0, 0, 50, 15, 7, 0}, {0, 3, 7, 15, 7, 3, 0}}},
        {DitheringType::Stephenson,
         {{0, 0, 0, 50, 0, 9, 0}, {3, 0, 7, 0, 9, 0, 5}, {0, 3, 0, 7, 0, 3, 0}, {1, 0, 3, 0, 3, 0, 1}}},
    };
    ColorMap map = Grays(0, 50);
    for (const auto& [type, expected] : cases) {
        SCOPED_TRACE(static_cast<int>(type));
        std::vector<Bytes> rows(6, Row(std::vector<Bytes>(7, Gray(0))));
        rows[0] = Row({Gray(0), Gray(0), Gray(0), Gray(110), Gray(0), Gray(0), Gray(0)});
        auto picture = expected;
        picture.resize(6, Indices(7, 0));
        EXPECT_EQ(Dither(type, 100, map, rows), picture);
        const DiffusionKernel& kernel = *FindDiffusionKernel(type);
        EXPECT_EQ(std::accumulate(&kernel.Weights[0][0], &kernel.Weights[0][0] + sizeof kernel.Weights, 0U),
                  1U << kernel.Shift);
    }
    // A negative error is cut downwards: -60 * 7 / 16 is -26.25. Half of it, -30, comes out of the intensity.
    ColorMap bright = Grays(60, 100);
    const std::vector<Bytes> dark = {Row({Gray(100), Gray(0), Gray(100)}), Row({Gray(100), Gray(100), Gray(100)})};
    EXPECT_EQ(Dither(DitheringType::FloydSteinberg, 100, bright, dark),
              (std::vector<Indices>{{40, 0, 40 - 27}, {40 - 12, 40 - 19, 40 - 4}}));
    EXPECT_EQ(Dither(DitheringType::FloydSteinberg, 50, bright, dark),
              (std::vector<Indices>{{40, 0, 40 - 14}, {40 - 6, 40 - 10, 40 - 2}}));
}

TEST(ErrorDiffusion, LosesWhatFallsBesideThePicture) {
    ColorMap map = MapOf({Gray(0), Gray(255)});
    // One column of 100: 100 keeps 100; 100 + 500 >> 4 is 131, keeps -124; 100 + -620 >> 4 is 61; 100 + 305 >> 4 is 119;
    // 100 + 595 >> 4 is 137.
    EXPECT_EQ(DitherFlat(DitheringType::FloydSteinberg, map, Gray(100), 1, 5),
              (std::vector<Indices>{{0}, {1}, {0}, {0}, {1}}));
}

// Alpha is carried like a colour: 128 keeps -127, then 128 - 56 = 72, 128 + 31 = 159, 128 - 42 = 86.
TEST(ErrorDiffusion, CarriesAlpha) {
    ColorMap map = MapOf({Gray(0, 255), Gray(0, 0)});
    EXPECT_EQ(DitherFlat(DitheringType::FloydSteinberg, map, Gray(0, 128), 4, 1), (std::vector<Indices>{{0, 1, 0, 1}}));
}

/// Error diffusion as it is told, pixel by pixel, over a sheet of errors of the whole picture.
std::vector<Indices> DiffuseSlowly(DitheringType type, int intensity, const ColorMap& map, const std::vector<Bytes>& rows) {
    const DiffusionKernel& kernel = *FindDiffusionKernel(type);
    const auto width = static_cast<int>(rows[0].size() / 4);
    const auto height = static_cast<int>(rows.size());
    KDTreeColorMapper tree;
    tree.SetColorMap(map);
    std::vector<std::vector<std::array<int, 4>>> errors(rows.size(), std::vector<std::array<int, 4>>(rows[0].size() / 4));
    std::vector<Indices> result(rows.size());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int wanted[4];
            for (int c = 0; c < 4; ++c) {
                const double given = std::floor(errors[y][x][c] / static_cast<double>(1 << kernel.Shift));
                wanted[c] = std::clamp(static_cast<int>(given) + rows[y][4 * x + c], 0, 255);
            }
            const auto byte = [&](int c) { return static_cast<std::uint8_t>(wanted[c]); };
            const std::uint32_t index = tree.GetNearestColorIndex(byte(3), byte(2), byte(1), byte(0));
            result[y].push_back(static_cast<int>(std::min(index, 255U)));
            std::uint8_t entry[4];
            map.GetEntryArgb(index, entry);
            for (int r = 0; r < static_cast<int>(kernel.Height) && y + r < height; ++r) {
                for (int column = 0; column < static_cast<int>(kernel.Width); ++column) {
                    const int target = x + column - static_cast<int>(kernel.Width) / 2;
                    for (int c = 0; c < 4 && target >= 0 && target < width; ++c) {
                        errors[y + r][target][c] += kernel.Weights[r][column] * ((wanted[c] - entry[c]) * intensity / 100);
                    }
                }
            }
        }
    }
    return result;
}

// Every kernel with every instruction set, on pictures that are wide enough for the grid to be made in the middle, with
// palettes full of duplicates and ties, of one alpha, of many, and of more entries than a byte counts.
TEST(ErrorDiffusion, AgreesWithTheSlowWay) {
    std::mt19937 random(7);
    const auto randomMap = [&](std::uint32_t count, std::uint32_t step, bool withAlpha) {
        ColorMap map(count, withAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
        for (std::uint32_t i = 0; i < count; ++i) {
            std::uint8_t entry[4];
            std::ranges::generate(entry, [&] { return static_cast<std::uint8_t>(random() % 256 / step * step); });
            map.SetEntryArgb(i, entry);
        }
        return map;
    };
    const ColorMap maps[] = {randomMap(2, 1, false),   randomMap(16, 1, false), randomMap(256, 51, false),
                             randomMap(200, 1, false), randomMap(64, 85, true), randomMap(256, 1, true),
                             randomMap(300, 1, false)};
    for (const std::size_t width : {1U, 3U, 61U}) {
        std::vector<Bytes> rows(width == 61 ? 24 : 700, Bytes(width * 4));
        for (std::size_t y = 0; y < rows.size(); ++y) {
            for (std::size_t i = 0; i < width * 4; ++i) {
                rows[y][i] = static_cast<std::uint8_t>((i % 4 + 1) * (i / 4 + 2 * y) + random() % 8);
            }
        }
        for (int type = 1; type <= 8; ++type) {
            for (std::size_t number = 0; number < std::size(maps); ++number) {
                const int intensity = number % 2 == 0 ? 100 : 37;
                const auto kind = static_cast<DitheringType>(type);
                const auto expected = DiffuseSlowly(kind, intensity, maps[number], rows);
                Testing::ForEachInstructionSet([&] {
                    ColorMap map = maps[number];
                    EXPECT_EQ(Dither(kind, static_cast<std::uint32_t>(intensity), map, rows), expected)
                        << "type " << type << ", palette " << number << ", width " << width;
                });
            }
        }
    }
}

// --- Ordered dithering and noise

class RawMatrix final : public OrderedDithering {
public:
    explicit RawMatrix(DitheringType type) : OrderedDithering(type) { Open(1, 100, nullptr); }
    void InitializeOrderedMatrix() override {}
    void ApplyDithering(const std::uint8_t*, std::uint8_t*) override {}
    std::int32_t At(std::size_t row, std::size_t column) const { return m_matrix[row][column]; }
    std::uint32_t Size() const { return m_uintSize; }
};

TEST(OrderedDithering, HasItsMatrices) {
    const int bayer[16] = {10, 6, 9, 5, 2, 14, 1, 13, 8, 4, 11, 7, 0, 12, 3, 15};
    const int spiral[16] = {15, 4, 5, 6, 14, 8, 1, 2, 13, 7, 3, 0, 12, 6, 2, 1};
    const RawMatrix bayer2(DitheringType::OrderedBayer2);
    const RawMatrix spiral2(DitheringType::OrderedSpiral2);
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(bayer2.At(i / 4, i % 4), bayer[i]);
        EXPECT_EQ(spiral2.At(i / 4, i % 4), spiral[i]);
    }
    const RawMatrix bayer4(DitheringType::OrderedBayer4);
    std::vector<int> seen;
    for (std::size_t i = 0; i < 256; ++i) {
        seen.push_back(bayer4.At(i / 16, i % 16));
    }
    EXPECT_EQ(seen[0], 170); // 2, 10, 42, 170
    EXPECT_EQ(seen[255], 255);
    std::ranges::sort(seen);
    EXPECT_EQ(seen.front() + seen.back(), 255);
    EXPECT_EQ(std::ranges::adjacent_find(seen), seen.end());
    EXPECT_EQ(RawMatrix(DitheringType::OrderedBayer3).Size(), 8U);
    EXPECT_EQ(RawMatrix(DitheringType::OrderedSpiral4).At(0, 0), 255);
    const RawMatrix spiral3(DitheringType::OrderedSpiral3);
    // Down to 56, along to 49 (overwritten later), up to 42, back to 36; then the square of 7 from 48.
    EXPECT_EQ(spiral3.At(7, 0), 56);
    EXPECT_EQ(spiral3.At(0, 7), 42);
    EXPECT_EQ(spiral3.At(0, 1), 36);
    EXPECT_EQ(spiral3.At(1, 1), 48);
}

// Thresholds of two entries: ((m + 5) * 255 / 16) & 255, which are 239 175 223 159 / 111 46 95 30 / 207 143 255 191 /
// 79 14 127 62; gray 128 weighs (100 * 128 + 20 * 255) / 120 = 149.
TEST(OrderedDithering, ChoosesBetweenTwoEntries) {
    ColorMap map = MapOf({Gray(0), Gray(255)});
    EXPECT_EQ(DitherFlat(DitheringType::OrderedBayer2, map, Gray(128), 5, 5),
              (std::vector<Indices>{{0, 0, 0, 0, 0}, {1, 1, 1, 1, 1}, {0, 1, 0, 0, 0}, {1, 1, 1, 1, 1}, {0, 0, 0, 0, 0}}));
    EXPECT_EQ(DitherFlat(DitheringType::OrderedBayer2, map, Gray(255), 4, 4),
              std::vector<Indices>(4, Indices{1, 1, 1, 1}));
    // Spiral2: (20, 9, 10, 11) * 255 / 16 is 318 & 255 = 62, 143, 159, 175. White stands first in this palette.
    ColorMap reversed = MapOf({Gray(255), Gray(0)});
    EXPECT_EQ(DitherFlat(DitheringType::OrderedSpiral2, reversed, Gray(128), 4, 1), (std::vector<Indices>{{0, 0, 1, 1}}));
    // Bytes by their place: (30 * 200 + 20 * 255) / 120 is 92 for blue, 59 gives 140, 11 gives 60; alpha alone 42.
    const Bytes colors = Row({{200, 0, 0, 255}, {0, 200, 0, 255}, {0, 0, 200, 255}, {0, 0, 0, 255}});
    EXPECT_EQ(Dither(DitheringType::OrderedBayer2, 100, map, {colors, colors}),
              (std::vector<Indices>{{0, 0, 0, 0}, {0, 1, 0, 1}}));
    ColorMap one = MapOf({Gray(99)});
    EXPECT_EQ(DitherFlat(DitheringType::OrderedBayer3, one, Gray(255), 3, 1), (std::vector<Indices>{{0, 0, 0}}));
}

// Grays 0, 100, 200 are 230 apart on average; thresholds (m - 8) * 230 / 16 are 28 -28 14 -43 / -86 86 -100 71, cut toward
// zero. From 60 they lead to 88 32 74 17 / 0 146 0 131. At half intensity they are 14 -14 7 -21 / -43 43 -50 35.
TEST(OrderedDithering, ShiftsPixelsForMoreEntries) {
    ColorMap map = MapOf({Gray(0), Gray(100), Gray(200)});
    EXPECT_EQ(DitherFlat(DitheringType::OrderedBayer2, map, Gray(60), 4, 2),
              (std::vector<Indices>{{1, 0, 1, 0}, {0, 1, 0, 1}}));
    EXPECT_EQ(DitherFlat(DitheringType::OrderedBayer2, map, Gray(110), 4, 2, 50),
              (std::vector<Indices>{{1, 1, 1, 1}, {1, 2, 1, 1}}));
}

// The first draws of the generator are 16838, 5758, 10113, 17515, 31051, 5627, 23010, 7419: noise of 3, -84, -49, 8, 114,
// -85, 51, -71 on gray 128.
TEST(NoiseDithering, AddsTheNoiseOfItsGenerator) {
    ColorMap map = MapOf({Gray(0), Gray(255)});
    const Indices expected = {1, 0, 0, 1, 1, 0, 1, 0};
    EXPECT_EQ(DitherFlat(DitheringType::Noise, map, Gray(128), 8, 1)[0], expected);
    EXPECT_EQ(DitherFlat(DitheringType::Noise, map, Gray(128), 4, 2),
              (std::vector<Indices>{{1, 0, 0, 1}, {1, 0, 1, 0}}));
    // A tenth: 0, -8, -4, 0, 11, -8, 5, -7.
    EXPECT_EQ(DitherFlat(DitheringType::Noise, map, Gray(170), 8, 1, 10)[0], Indices(8, 1));
}

// --- Failures and the link

TEST(Dithering, NamesWhatIsWrong) {
    const auto create = [](PixelFormat from, PixelFormat to, int type) {
        return CreateDithering(from, to, static_cast<DitheringType>(type));
    };
    const auto argb = PixelFormat::Format32bppArgb;
    const auto indexed = PixelFormat::Format4bppIndexed;
    EXPECT_THROW(create(PixelFormat::Format24bppRgb, indexed, 1), UnsupportedPixelFormatException);
    EXPECT_THROW(create(argb, argb, 1), UnsupportedPixelFormatException);
    ExpectThrown<ArgumentException>("enDitheringType", [&] { create(argb, indexed, 0); });
    EXPECT_THROW(create(argb, indexed, 16), ArgumentException);
    std::uint8_t bytes[4] = {};
    for (int type = 1; type <= 15; ++type) {
        const auto dithering = create(argb, indexed, type);
        if (type <= 8) {
            ExpectThrown<NotInitializedException>("Dithering", [&] { dithering->ApplyDithering(bytes, bytes); });
        }
        ExpectThrown<ArgumentException>("the value must be > 0", [&] { dithering->Open(0, 1, nullptr); });
        dithering->Open(1, 100, nullptr);
        EXPECT_THROW(dithering->ApplyDithering(nullptr, bytes), ArgumentNullPointerException);
        EXPECT_THROW(dithering->ApplyDithering(bytes, nullptr), ArgumentNullPointerException);
        ExpectThrown<PaletteException>("not presented", [&] { dithering->ApplyDithering(bytes, bytes); });
    }
    const auto expectForeign = [](Dithering&& dithering) {
        ExpectThrown<ArgumentException>("the dithering type specified is not supported",
                                        [&] { dithering.Open(1, 1, nullptr); });
    };
    expectForeign(IndexedErrorDiffusion(DitheringType::Noise));
    expectForeign(IndexedOrderedDithering(DitheringType::Stephenson));
    expectForeign(IndexedNoiseDithering(DitheringType::OrderedSpiral4));
}

// Gray 100 keeps 100; the pixel below the threshold becomes the transparent entry plus 43 and passes 43 on; then
// 100 + 18 = 118 is black, and 100 + 51 = 151 white. The row below gets (0 .. 3) * 3, 5, 1 of these.
TEST(Argb32ToIndexedLink, DithersBehindTheAlphaThreshold) {
    ColorMap map = MapOf({Gray(0), Gray(255), Gray(0, 0)});
    Argb32ToIndexedLink link;
    link.SetPixelCount(4);
    link.SetDstBitsPerPixel(4);
    link.SetDstColorMap(&map);
    link.SetPaletteAlphaThreshold(128);
    link.SetUsePaletteAlphaThreshold(true);
    link.SetDitheringType(DitheringType::FloydSteinberg);
    const Bytes row = Row({Gray(100, 200), Gray(77, 127), Gray(100, 128), Gray(100)});
    Bytes out(2);
    link.ApplyScanlineTransform(row.data(), out.data());
    EXPECT_EQ(out, (Bytes{0x02, 0x01}));
    // A setting that changes begins anew; here with a wider row, which needs more room for errors.
    link.SetPixelCount(8);
    link.SetDstBitsPerPixel(8);
    out.resize(8);
    const Bytes wide = Row({Gray(100), Gray(77, 127), Gray(100), Gray(100), Gray(0), Gray(0), Gray(0), Gray(0, 0)});
    link.ApplyScanlineTransform(wide.data(), out.data());
    EXPECT_EQ(out, (Bytes{0, 2, 0, 1, 0, 0, 0, 2}));
}

} // namespace
} // namespace ImagingFramework
