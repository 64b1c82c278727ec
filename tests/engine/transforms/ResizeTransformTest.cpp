#include "transforms/ResizeTransform.h"

#include "Common/EngineModule.h"
#include "EachInstructionSet.h"
#include "EventsProbe.h"
#include "PixelValue.h"
#include "ResizeReference.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;
using Testing::NoiseRaster;
using Testing::PixelAt;
using Testing::ReferenceResize;
using Testing::SamePixels;
using enum InterpolationMode;
using Bytes = std::vector<std::uint8_t>;

BitmapData GrayRow(const Bytes& samples, bool vertical = false) {
    const auto count = static_cast<std::uint32_t>(samples.size());
    BitmapData raster(vertical ? 1 : count, vertical ? count : 1, PixelFormat::Format8bppGrayScale);
    for (std::uint32_t i = 0; i < count; ++i) {
        raster.GetScanlineRef(vertical ? i : 0)[vertical ? 0 : i] = samples[i];
    }
    return raster;
}

std::unique_ptr<BitmapData> Resize(const BitmapData& source, std::uint32_t width, std::uint32_t height,
                                   InterpolationMode mode, const RegionRect* crop = nullptr,
                                   IInternalEvents* events = nullptr, std::int32_t timeout = -1) {
    ResizeTransform transform;
    transform.SetEvents(events);
    transform.SetTimeout(timeout);
    transform.SetWidth(width);
    transform.SetHeight(height);
    transform.SetInterpolationMode(mode);
    transform.SetCropRectangleRef(crop);
    transform.SetProcessorCount(4); // where more than one thread is allowed
    std::unique_ptr<BitmapData> result;
    try {
        transform.ApplyTransform(&source, nullptr, result);
    } catch (...) {
        EXPECT_EQ(result, nullptr);
        throw;
    }
    return result;
}

/// One row, and the same numbers standing, resized to `count`.
void ExpectLine(const Bytes& source, InterpolationMode mode, const Bytes& expected) {
    const auto count = static_cast<std::uint32_t>(expected.size());
    for (const bool vertical : {false, true}) {
        const auto result = Resize(GrayRow(source, vertical), vertical ? 1 : count, vertical ? count : 1, mode);
        Bytes line;
        for (std::uint32_t i = 0; i < count; ++i) {
            line.push_back(result->GetScanlineRef(vertical ? i : 0)[vertical ? 0 : i]);
        }
        EXPECT_EQ(line, expected) << "mode " << static_cast<int>(mode) << " vertical " << vertical;
    }
}

TEST(ResizeTransform, GivesTheNumbersOfEachFamily) {
    ExpectLine({10, 20, 30}, NearestNeighbour, {10, 10, 20, 30});
    ExpectLine({0, 255}, Bilinear, {0, 84, 169, 254});
    const Bytes four{0, 100, 200, 50};
    ExpectLine(four, TriangleFilter, {0, 50, 100, 150, 200, 125, 50, 50});
    ExpectLine(four, MitchellFilter, {5, 46, 100, 158, 186, 128, 58, 44});
    ExpectLine(four, BoxFilter, {0, 0, 100, 100, 200, 200, 50, 50});
    const Bytes eight{0, 100, 200, 50, 0, 255, 255, 10};
    ExpectLine(eight, BoxFilter, {0, 150, 25, 255});
    ExpectLine(eight, TriangleFilter, {25, 137, 76, 193});
    const Bytes step{0, 0, 0, 0, 255, 255, 255, 255};
    ExpectLine(step, Lanczos3Filter, {0, 0, 0, 5, 6, 0, 0, 58, 197, 255, 255, 249, 250, 255, 255, 255});
    ExpectLine(step, Lanczos3Filter, {0, 22, 233, 255});
}

// Anisotropic4 of 4 to 2: ratio 3, step 1.5, samples at 0, 1, 3 and 4 (the last one clamped to 3).
TEST(ResizeTransform, AnisotropicTakesMeansOfPointSamples) {
    ExpectLine({10, 20, 30, 41}, Anisotropic4, {15, 41});
    // 7 to 3 by threes: ratio 3, step 1: 0 1 2, 3 4 5, 6 6 6.
    ExpectLine({1, 2, 4, 8, 16, 32, 64}, Anisotropic9, {2, 18, 64});
    const BitmapData clear(2, 2, PixelFormat::Format32bppArgb);
    BitmapData coloured = clear;
    for (std::uint32_t y = 0; y < 2; ++y) {
        const std::uint8_t pixels[] = {9, 9, 9, 0, 9, 9, 9, 0};
        std::memcpy(coloured.GetScanlineRef(y), pixels, 8);
    }
    EXPECT_TRUE(SamePixels(*Resize(coloured, 1, 1, Anisotropic4), BitmapData(1, 1, PixelFormat::Format32bppArgb)));
}

TEST(ResizeTransform, TransparentPixelsLendNoColour) {
    BitmapData source(2, 1, PixelFormat::Format32bppArgb);
    const std::uint8_t pixels[] = {200, 100, 50, 255, 7, 7, 7, 0};
    std::memcpy(source.GetScanlineRef(0), pixels, 8);
    for (const InterpolationMode mode : {Bilinear, TriangleFilter, Lanczos3Filter, Trilinear}) {
        const auto result = Resize(source, 4, 1, mode);
        for (std::uint32_t x = 0; x < 4; ++x) {
            const std::uint8_t* const pixel = result->GetScanlineRef(0) + 4 * x;
            EXPECT_TRUE(pixel[3] == 0 ? pixel[0] == 0 && pixel[1] == 0
                                      : pixel[0] == 200 && pixel[1] == 100 && pixel[2] == 50)
                << static_cast<int>(mode) << " at " << x;
        }
    }
    // Bilinear alpha: 255, 255 * 43691 >> 16, 255 * 21846 >> 16, 255 * 1 >> 16.
    const auto result = Resize(source, 4, 1, Bilinear);
    EXPECT_EQ(result->GetScanlineRef(0)[7], 170);
    EXPECT_EQ(result->GetScanlineRef(0)[11], 85);
    EXPECT_EQ(result->GetScanlineRef(0)[15], 0);
}

TEST(ResizeTransform, TinySourcesAndTargetsWork) {
    // Sources of one pixel have no taps and are copied; those of two have one.
    ExpectLine({77}, Lanczos3Filter, {77, 77, 77});
    ExpectLine({10, 200}, Lanczos3Filter, {10, 10, 200, 200});
    ExpectLine({10, 200, 30}, Bilinear, {10});
    for (int mode = 3; mode <= 14; ++mode) {
        const BitmapData dot = NoiseRaster(1, 1, PixelFormat::Format48bppRgb, 5);
        const auto result = Resize(dot, 3, 2, static_cast<InterpolationMode>(mode));
        for (std::uint32_t i = 0; i < 36; ++i) {
            EXPECT_EQ(result->GetScanlineRef(i / 18)[i % 18], dot.GetScanlineRef(0)[i % 6]) << mode;
        }
    }
}

const PixelFormat WholeFormats[] = {
    PixelFormat::Format24bppRgb,        PixelFormat::Format32bppRgb,      PixelFormat::Format32bppArgb,
    PixelFormat::Format32bppPArgb,      PixelFormat::Format48bppRgb,      PixelFormat::Format64bppArgb,
    PixelFormat::Format32bppCmyk,       PixelFormat::Format8bppGrayScale, PixelFormat::Format16bppGrayScale,
    PixelFormat::Format16bppAGrayScale, PixelFormat::Format64bppCmyk,     PixelFormat::Format32bppAGrayScale,
    PixelFormat::Format40bppAcmyk,      PixelFormat::Format80bppAcmyk,    PixelFormat::Format64bppPArgb,
};

struct SizeCase {
    std::uint32_t FromWidth, FromHeight, ToWidth, ToHeight;
};

// Odd widths leave tails behind every vector; tall and wide cases take the two passes through all of their shapes.
const SizeCase Sizes[] = {{61, 47, 23, 11}, {37, 29, 83, 67}, {53, 5, 7, 31}, {3, 71, 41, 4}, {131, 40, 19, 9}, {2, 2, 5, 3}};

TEST(ResizeTransform, EveryFamilyEqualsItsFormulaInEveryFormat) {
    std::uint32_t seed = 1;
    for (const PixelFormat format : WholeFormats) {
        for (const SizeCase& size : Sizes) {
            const BitmapData source = NoiseRaster(size.FromWidth, size.FromHeight, format, ++seed);
            for (int mode = 4; mode <= 14; ++mode) {
                const auto filter = static_cast<InterpolationMode>(mode);
                const auto result = Resize(source, size.ToWidth, size.ToHeight, filter);
                ASSERT_TRUE(SamePixels(*result, ReferenceResize(source, size.ToWidth, size.ToHeight, filter)))
                    << std::hex << ToWord(format) << std::dec << " mode " << mode << " from " << size.FromWidth << "x"
                    << size.FromHeight << " to " << size.ToWidth << "x" << size.ToHeight;
            }
        }
    }
}

/// Pictures whose filtered samples lie on rounding boundaries, or beyond the range, far more often than noise does.
BitmapData HardRaster(std::uint32_t width, std::uint32_t height, PixelFormat format, int kind) {
    BitmapData raster = NoiseRaster(width, height, format, 3);
    const std::uint32_t pixelSize = PixelFormatSize(format) / 8;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            const std::uint32_t x = i / pixelSize;
            std::uint8_t& byte = raster.GetScanlineRef(y)[i];
            const std::uint32_t kinds[] = {
                201,                                               // flat
                (x + y) % 2 == 0 ? 255U : 0U,                      // checks
                100 + (x / 3 + y / 2) % 2,                         // neighbours that differ by one
                byte & 1U,                                         // a barely visible picture
                i % pixelSize == pixelSize - 1 ? byte & 3U : byte, // colours of every kind with hardly any alpha
                (x / 5) % 2 == 0 ? 255U : 0U};                     // stripes of opposite ends
            byte = static_cast<std::uint8_t>(kinds[kind]);
        }
    }
    return raster;
}

TEST(ResizeTransform, FastLanczosKeepsEveryRoundingOfTheCanonicalSum) {
    for (const PixelFormat format : {PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb, PixelFormat::Format16bppAGrayScale,
                                     PixelFormat::Format8bppGrayScale, PixelFormat::Format48bppRgb}) {
        for (int kind = 0; kind < 6; ++kind) {
            const BitmapData source = HardRaster(97, 75, format, kind);
            for (const auto& [width, height] : {std::pair{33U, 25U}, std::pair{19U, 15U}, std::pair{193U, 149U}}) {
                ASSERT_TRUE(SamePixels(*Resize(source, width, height, Lanczos3Filter),
                                       ReferenceResize(source, width, height, Lanczos3Filter)))
                    << std::hex << ToWord(format) << std::dec << " kind " << kind << " width " << width;
            }
        }
    }
}

// Wide enough for whole chunks of every vector loop, with odd ends behind them; every layout goes through all of its lanes.
TEST(ResizeTransform, EveryInstructionSetGivesTheFormulas) {
    struct Case {
        BitmapData Source;
        InterpolationMode Mode;
        SizeCase Size;
        BitmapData Expected;
    };
    const SizeCase sizes[] = {{331, 43, 149, 21}, {45, 19, 203, 37}};
    std::vector<Case> cases;
    for (const PixelFormat format : WholeFormats) {
        for (const SizeCase& size : sizes) {
            const BitmapData source = NoiseRaster(size.FromWidth, size.FromHeight, format, 31);
            for (const InterpolationMode mode : {Bilinear, Trilinear, Lanczos3Filter, BoxFilter, MitchellFilter}) {
                cases.push_back({source, mode, size, ReferenceResize(source, size.ToWidth, size.ToHeight, mode)});
            }
        }
    }
    Testing::ForEachInstructionSet([&] {
        for (const Case& c : cases) {
            EXPECT_TRUE(SamePixels(*Resize(c.Source, c.Size.ToWidth, c.Size.ToHeight, c.Mode), c.Expected))
                << std::hex << ToWord(c.Source.GetPixelFormat()) << " mode " << static_cast<int>(c.Mode);
        }
    });
}

TEST(ResizeTransform, ReadsNothingBesideItsSourceAndWritesNothingBesideItsRows) {
    for (const PixelFormat format : WholeFormats) {
        const BitmapData host = NoiseRaster(90, 60, format, 21);
        BitmapData part;
        part.AttachPartially(host, {11, 9, 74, 52});
        const BitmapData compact(part);
        for (int mode = 3; mode <= 14; ++mode) {
            const auto filter = static_cast<InterpolationMode>(mode);
            const auto result = Resize(part, 17, 13, filter);
            ASSERT_TRUE(SamePixels(*result, *Resize(compact, 17, 13, filter))) << mode;
            for (std::uint32_t y = 0; y < 13; ++y) {
                for (std::uint32_t i = result->GetRowSize(); i < result->GetStride(); ++i) {
                    ASSERT_EQ(result->GetScanlineRef(y)[i], 0) << mode;
                }
            }
        }
    }
}

TEST(ResizeTransform, NearestCopiesWholePixelsInEveryFormat) {
    for (const PixelFormat format : AllPixelFormats()) {
        const BitmapData source = NoiseRaster(21, 9, format, 4);
        for (const auto& [width, height] : {std::pair{13U, 5U}, std::pair{50U, 20U}}) {
            const auto result = Resize(source, width, height, NearestNeighbour);
            const auto ratioX = static_cast<std::uint64_t>(20.0 / (width - 1) * 65536.0 + 0.5);
            const auto ratioY = static_cast<std::uint64_t>(8.0 / (height - 1) * 65536.0 + 0.5);
            for (std::uint32_t y = 0; y < height; ++y) {
                for (std::uint32_t x = 0; x < width; ++x) {
                    const std::uint64_t sx = std::min<std::uint64_t>((x * ratioX) >> 16, 20);
                    const auto sy = static_cast<std::uint32_t>(std::min<std::uint64_t>((y * ratioY) >> 16, 8));
                    ASSERT_EQ(PixelAt(*result, x, y), PixelAt(source, sx, sy)) << std::hex << ToWord(format);
                }
            }
        }
    }
}

TEST(ResizeTransform, PalettesResolveToTheirColours) {
    for (const PixelFormat format :
         {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed}) {
        for (const PixelFormat palette : {PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb}) {
            const BitmapData source = NoiseRaster(43, 37, format, 9, palette);
            for (const SizeCase& size : {SizeCase{0, 0, 11, 7}, SizeCase{0, 0, 90, 80}, SizeCase{0, 0, 3, 90}}) {
                const auto result = Resize(source, size.ToWidth, size.ToHeight, HighQuality);
                EXPECT_EQ(result->GetPixelFormat(), palette);
                EXPECT_EQ(result->GetColorMapRef(), nullptr);
                EXPECT_TRUE(SamePixels(*result, ReferenceResize(source, size.ToWidth, size.ToHeight, ScaleToGray)));
                EXPECT_TRUE(SamePixels(*result, *Resize(source, size.ToWidth, size.ToHeight, MediumQuality)));
            }
            const auto nearest = Resize(source, 11, 7, LowQuality);
            EXPECT_EQ(nearest->GetPixelFormat(), format);
            EXPECT_EQ(*nearest->GetColorMapRef(), *source.GetColorMapRef());
        }
    }
}

// 1 to 3 black and white pixels: 3 to 1 has ratio 4 (denominator 0.5), so 4 samples at round((q - 1.5) * 1): 0 0 1 2.
TEST(ResizeTransform, ScaleToGrayAveragesItsWindow) {
    BitmapData source(3, 1, PixelFormat::Format1bppIndexed);
    source.GetScanlineRef(0)[0] = 0b10100000;
    ColorMap map(2, PixelFormat::Format24bppRgb);
    const std::uint8_t white[] = {255, 255, 255};
    map.SetEntryRgb(1, white);
    source.SetColorMap(map);
    // White at 0 (twice) and 2, black at 1: 765 / 4.
    EXPECT_EQ(Resize(source, 1, 1, ScaleToGray)->GetScanlineRef(0)[0], 255 * 3 * 3 / 12);
}

TEST(ResizeTransform, CroppingEqualsCroppingTheWholeResult) {
    const RegionRect crop{5, 3, 20, 16};
    for (const PixelFormat format : {PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb, PixelFormat::Format80bppAcmyk,
                                     PixelFormat::Format4bppIndexed, PixelFormat::Format1bppIndexed}) {
        for (const SizeCase& size : {SizeCase{61, 47, 23, 19}, SizeCase{11, 9, 40, 30}, SizeCase{30, 20, 30, 20}}) {
            const BitmapData source = NoiseRaster(size.FromWidth, size.FromHeight, format, 8);
            for (int mode = 3; mode <= 15; ++mode) {
                const auto filter = static_cast<InterpolationMode>(mode);
                const bool indexed = PixelFormatIsIndexed(format);
                if (filter == Trilinear || (indexed && filter != NearestNeighbour && filter != ScaleToGray) ||
                    (!indexed && filter == ScaleToGray)) {
                    continue;
                }
                const auto whole = Resize(source, size.ToWidth, size.ToHeight, filter);
                const auto part = Resize(source, size.ToWidth, size.ToHeight, filter, &crop);
                ASSERT_EQ(part->GetWidth(), 16U);
                ASSERT_EQ(part->GetHeight(), 14U);
                for (std::uint32_t y = 0; y < 14; ++y) {
                    for (std::uint32_t x = 0; x < 16; ++x) {
                        ASSERT_EQ(PixelAt(*part, x, y), PixelAt(*whole, x + 5, y + 3)) << "mode " << mode << " row " << y;
                    }
                }
            }
        }
    }
}

TEST(ResizeTransform, ASourceOfTheNewSizeIsCopiedWithAllItHas) {
    BitmapData source = NoiseRaster(9, 5, PixelFormat::Format8bppIndexed, 2);
    source.SetHorizontalResolution(300);
    for (const InterpolationMode mode : {HighQuality, Bilinear, NearestNeighbour}) {
        EventsProbe events;
        const auto result = Resize(source, 9, 5, mode, nullptr, &events);
        EXPECT_TRUE(SamePixels(*result, source));
        EXPECT_EQ(*result->GetColorMapRef(), *source.GetColorMapRef());
        EXPECT_DOUBLE_EQ(result->GetHorizontalResolution(), 300.0);
        EXPECT_EQ(events.Steps(), events.Announced());
    }
}

std::string FailureOf(const BitmapData& source, std::uint32_t width, std::uint32_t height, InterpolationMode mode,
                      const RegionRect* crop = nullptr, ExceptionType* type = nullptr) {
    try {
        Resize(source, width, height, mode, crop);
    } catch (const Exception& e) {
        if (type != nullptr) {
            *type = e.GetExceptionType();
        }
        return e.what();
    }
    return {};
}

TEST(ResizeTransform, EachFormatTakesItsModesAndRefusesTheOthers) {
    const std::string unsupported = "Argument has an unappropriate value (InterpolationMode). (Specified interpolation "
                                    "mode is not supported.).";
    const std::string unsupportedForFormat = "Argument has an unappropriate value (InterpolationMode). (Specified "
                                             "interpolation mode is not supported for the image's pixel format.).";
    for (const PixelFormat format : AllPixelFormats()) {
        const BitmapData source = NoiseRaster(6, 6, format, 3);
        for (int mode = 0; mode <= 15; ++mode) {
            const bool restricted = PixelFormatIsIndexed(format) || PixelFormatIsPacked16(format);
            std::string expected;
            if (mode == 15 && !PixelFormatIsIndexed(format)) {
                expected = unsupportedForFormat;
            } else if (restricted && mode > 3 && mode != 15) {
                expected = unsupported;
            }
            EXPECT_EQ(FailureOf(source, 4, 4, static_cast<InterpolationMode>(mode)), expected)
                << std::hex << ToWord(format) << " mode " << mode;
        }
    }
}

TEST(ResizeTransform, RefusesWhatItCannotDo) {
    const BitmapData source = NoiseRaster(6, 6, PixelFormat::Format24bppRgb, 3);
    const RegionRect part{0, 0, 3, 2};
    ExceptionType type{};
    EXPECT_NE(FailureOf(source, 4, 4, Trilinear, &part).find("ResizeAndCrop not supports trilinear interpolation mode."),
              std::string::npos);
    const RegionRect whole{0, 0, 3, 3};
    EXPECT_EQ(FailureOf(source, 4, 4, Trilinear, &whole), "");
    for (const RegionRect bad : {RegionRect{-1, 0, 2, 2}, RegionRect{0, 0, 4, 2}, RegionRect{3, 0, 2, 2}, RegionRect{0, 3, 2, 2}}) {
        EXPECT_EQ(FailureOf(source, 4, 4, Bilinear, &bad, &type),
                  "Argument 'CropRectangle' is out of range (Coordinates of all points of crop rect must be inside "
                  "source image.).");
        EXPECT_EQ(type, ExceptionType::ArgumentOutOfRangeException);
    }
    EXPECT_NE(FailureOf(source, 4, 21846, Anisotropic9, nullptr, &type), "");
    EXPECT_EQ(type, ExceptionType::OverflowException);
    EXPECT_EQ(FailureOf(source, 4, 21845, Anisotropic9), "");
    for (const InterpolationMode mode : {NearestNeighbour, Bilinear, Lanczos3Filter, BoxFilter}) {
        EXPECT_NE(FailureOf(source, 60000, 60000, mode, nullptr, &type), "");
        EXPECT_EQ(type, ExceptionType::OverflowException);
    }
    BitmapData bare = NoiseRaster(6, 6, PixelFormat::Format8bppIndexed, 3);
    bare.SetColorMapRef(nullptr);
    EXPECT_NE(FailureOf(bare, 4, 4, ScaleToGray, nullptr, &type), "");
    EXPECT_EQ(type, ExceptionType::UnexpectedException);
    ResizeTransform transform;
    EXPECT_THROW(transform.SetWidth(0), ArgumentOutOfRangeException);
    EXPECT_THROW(transform.SetHeight(0), ArgumentOutOfRangeException);
    EXPECT_THROW(transform.SetInterpolationMode(static_cast<InterpolationMode>(16)), ArgumentOutOfRangeException);
    std::unique_ptr<BitmapData> slot;
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, slot), ArgumentOutOfRangeException);
    transform.SetWidth(3);
    transform.SetHeight(3);
    const RegionRect region{0, 0, 4, 5};
    try {
        transform.ApplyTransform(&source, &region, slot);
        FAIL();
    } catch (const ArgumentException& e) {
        EXPECT_STREQ(e.what(), "Argument has an unappropriate value (source rectangle). (Argument must be NULL or equal "
                               "to image's dimensions ).");
    }
    EXPECT_EQ(slot, nullptr);
}

TEST(ResizeTransform, ExtremeRatiosStayExactAndSmall) {
    // A tall window over a wide target: the ring would exceed both rasters many times over.
    const BitmapData tall = NoiseRaster(3, 3000, PixelFormat::Format8bppGrayScale, 6);
    for (const InterpolationMode mode : {Lanczos3Filter, TriangleFilter}) {
        EXPECT_TRUE(SamePixels(*Resize(tall, 5000, 2, mode), ReferenceResize(tall, 5000, 2, mode)));
    }
    // Positions beyond 32 bits in 16.16.
    const BitmapData wide = NoiseRaster(200000, 1, PixelFormat::Format8bppGrayScale, 7);
    EXPECT_EQ(Resize(wide, 2, 1, NearestNeighbour)->GetScanlineRef(0)[1], wide.GetScanlineRef(0)[199999]);
    EXPECT_EQ(Resize(wide, 2, 1, Bilinear)->GetScanlineRef(0)[1], wide.GetScanlineRef(0)[199999]);
}

// Pixel 21845 of a row by threes reads entries 65535 to 65537 of the offsets, and the next one begins again at entry 2.
TEST(ResizeTransform, VeryWideAnisotropicRowsRepeatTheirBeginning) {
    const BitmapData source = GrayRow({0, 90, 90});
    const auto result = Resize(source, 30000, 1, Anisotropic9);
    EXPECT_EQ(result->GetScanlineRef(0)[29999], 0);
    const auto four = Resize(source, 40000, 1, Anisotropic4);
    EXPECT_EQ(four->GetScanlineRef(0)[39999], 0);
    EXPECT_EQ(Resize(source, 20000, 1, Anisotropic9)->GetScanlineRef(0)[19999], 90);
}

TEST(ResizeTransform, ProgressAddsUpToWhatWasAnnounced) {
    const BitmapData source = NoiseRaster(20, 31, PixelFormat::Format32bppArgb, 11);
    const auto announced = [&](InterpolationMode mode, std::uint32_t width, std::uint32_t height) {
        EventsProbe events;
        Resize(source, width, height, mode, nullptr, &events);
        EXPECT_EQ(events.Steps(), events.Announced()) << static_cast<int>(mode);
        return events.Announced();
    };
    EXPECT_EQ(announced(NearestNeighbour, 9, 12), 12);
    EXPECT_EQ(announced(Bilinear, 9, 12), 12);
    EXPECT_EQ(announced(Anisotropic9, 9, 12), 12);
    EXPECT_EQ(announced(Lanczos3Filter, 9, 12), 43);
    EXPECT_EQ(announced(Lanczos3Filter, 900, 2), 33);
    EXPECT_EQ(announced(BoxFilter, 9, 12), 43);
    // Reduction 31 / 12: levels of 16 and 8 rows.
    EXPECT_EQ(announced(Trilinear, 9, 12), 16 + 8 + 12);
}

TEST(ResizeTransform, AbortAtEveryStepLeavesNoDestination) {
    for (const PixelFormat format : {PixelFormat::Format24bppRgb, PixelFormat::Format8bppIndexed}) {
        const BitmapData source = NoiseRaster(13, 10, format, 12);
        for (int mode = 3; mode <= 15; ++mode) {
            const auto filter = static_cast<InterpolationMode>(mode);
            if (PixelFormatIsIndexed(format) ? filter != NearestNeighbour && filter != ScaleToGray : filter == ScaleToGray) {
                continue;
            }
            int step = 0;
            for (bool aborted = true; aborted; ++step) {
                ASSERT_LT(step, 60);
                EventsProbe events(step);
                try {
                    Resize(source, 7, 6, filter, nullptr, &events);
                    aborted = false;
                } catch (const AbortedException&) {
                }
            }
            EXPECT_GE(step, 6) << mode;
        }
    }
}

/// Sleeps in its first report, so that a short time limit has passed at the next one.
class SleepyEvents : public EventsProbe {
public:
    void OnProgress(std::int32_t step) override {
        EventsProbe::OnProgress(step);
        if (Reports() == 1) {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
    }
};

TEST(ResizeTransform, TimeLimitsEndTheRun) {
    const BitmapData source = NoiseRaster(40, 200, PixelFormat::Format24bppRgb, 12);
    for (const InterpolationMode mode : {NearestNeighbour, Bilinear, Trilinear, Lanczos3Filter, Anisotropic4, BellFilter}) {
        SleepyEvents events;
        EXPECT_THROW(Resize(source, 20, 190, mode, nullptr, &events, 10), TimeOutException);
    }
}

/// Allows the row-parallel loops while it lives.
struct ParallelLoops {
    ParallelLoops() { SetOmpSupport(1); }
    ~ParallelLoops() { SetOmpSupport(0); }
};

TEST(ResizeTransform, ThreadingGivesEqualResultsAndFullProgress) {
    for (const PixelFormat format : {PixelFormat::Format24bppRgb, PixelFormat::Format64bppArgb}) {
        const BitmapData source = NoiseRaster(70, 300, format, 13);
        for (const InterpolationMode mode : {Lanczos3Filter, Bilinear, Anisotropic4, Anisotropic9, BoxFilter, Trilinear}) {
            EventsProbe events;
            const auto alone = Resize(source, 33, 210, mode);
            const ParallelLoops parallel;
            const auto result = Resize(source, 33, 210, mode, nullptr, &events);
            EXPECT_TRUE(SamePixels(*result, *alone)) << static_cast<int>(mode);
            EXPECT_EQ(events.Steps(), events.Announced());
        }
    }
}

TEST(ResizeTransform, ThreadingStopsAllWorkersOnAbort) {
    const ParallelLoops parallel;
    const BitmapData source = NoiseRaster(40, 400, PixelFormat::Format24bppRgb, 14);
    for (const InterpolationMode mode : {Lanczos3Filter, Bilinear, Anisotropic4, Anisotropic9}) {
        EventsProbe events(0);
        EXPECT_THROW(Resize(source, 20, 300, mode, nullptr, &events), AbortedException);
    }
}

} // namespace
} // namespace ImagingFramework
