#pragma once

#include "Common/BitmapData.h"
#include "Common/IndexWalker.h"
#include "Common/PixelWalker.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

// A slow conversion of single pixels, written from the formulas, for tests to compare with.

namespace ImagingFramework::Reference {

/// A pixel of a working format: colours in memory order, and alpha.
struct Pixel {
    ColorSpace Space = ColorSpace::Rgb;
    bool Is16 = false;
    std::array<std::uint32_t, 4> Colors{};
    std::uint32_t Alpha = 0;
};

struct Settings {
    std::uint32_t Alpha = 65535; ///< for sources without it
    const ColorMap* SourceMap = nullptr;
};

inline std::uint32_t ColorCount(ColorSpace space) {
    return space == ColorSpace::Rgb ? 3U : (space == ColorSpace::Cmyk ? 4U : 1U);
}

inline std::uint32_t ReadIndex(const BitmapData& raster, std::uint32_t x, std::uint32_t y) {
    const std::uint32_t bits = PixelFormatSize(raster.GetPixelFormat());
    const std::uint32_t bit = x * bits;
    return (raster.GetScanlineRef(y)[bit / 8] >> (8 - bits - bit % 8)) & ((1U << bits) - 1);
}

inline Pixel ReadPacked(std::uint32_t p, PixelFormat format, std::uint32_t alpha) {
    const bool is565 = format == PixelFormat::Format16bppRgb565;
    Pixel pixel;
    pixel.Colors = {(p % 32) * 8, (p / 32 % 32) * 8, (p / 1024 % 32) * 8, 0};
    if (is565) {
        // Six bits of green of which the lowest is dropped.
        pixel.Colors[1] = (p / 64 % 32) * 8;
        pixel.Colors[2] = (p / 2048) * 8;
    }
    pixel.Alpha = alpha;
    if (format == PixelFormat::Format16bppArgb1555) {
        pixel.Alpha = p >= 32768 ? 255 : 0;
    }
    return pixel;
}

inline Pixel Read(const BitmapData& raster, std::uint32_t x, std::uint32_t y, const Settings& settings) {
    const PixelFormat format = raster.GetPixelFormat();
    Pixel pixel;
    pixel.Is16 = PixelFormatIsExtended(format);
    const std::uint32_t alpha = pixel.Is16 ? settings.Alpha : settings.Alpha / 256;
    if (PixelFormatIsIndexed(format)) {
        std::uint8_t entry[4];
        settings.SourceMap->GetEntryArgb(ReadIndex(raster, x, y), entry);
        pixel.Colors = {entry[0], entry[1], entry[2], 0};
        pixel.Alpha = settings.SourceMap->GetPixelFormat() == PixelFormat::Format32bppArgb ? entry[3] : alpha;
        return pixel;
    }
    if (PixelFormatIsPacked16(format)) {
        const std::uint8_t* const row = raster.GetScanlineRef(y);
        return ReadPacked(row[2 * x] + 256U * row[2 * x + 1], format, alpha);
    }
    const RegionRect region{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), static_cast<std::int32_t>(x),
                            static_cast<std::int32_t>(y)};
    PixelWalker<std::uint32_t, std::uint32_t> walker(raster, &region, false);
    pixel.Space = PixelFormatColorSpace(format);
    for (std::uint32_t i = 0; i < ColorCount(pixel.Space); ++i) {
        pixel.Colors[i] = walker.GetChannel();
        walker.NextChannel();
    }
    pixel.Alpha = PixelFormatHasAlpha(format) ? walker.GetAlpha() : alpha;
    if (format == PixelFormat::Format32bppPArgb) {
        const double factor = pixel.Alpha == 0 ? 0.0 : 255.0 / pixel.Alpha;
        for (std::uint32_t i = 0; i < 3; ++i) {
            pixel.Colors[i] = static_cast<std::uint32_t>(std::min(255.0, pixel.Colors[i] * factor));
        }
    }
    return pixel;
}

inline std::uint32_t Gray(const std::array<std::uint32_t, 4>& colors) {
    return (30 * colors[0] + 59 * colors[1] + 11 * colors[2]) / 100;
}

inline void CmykToRgb(Pixel& pixel) {
    const double maximum = pixel.Is16 ? 65535.0 : 255.0;
    const double k = pixel.Colors[0] / maximum;
    std::array<std::uint32_t, 4> colors{};
    for (std::uint32_t i = 0; i < 3; ++i) {
        const double ink = pixel.Colors[i + 1] / maximum;
        const double color = 1.0 - std::min(1.0, ink * (1.0 - k) + k);
        colors[i] = static_cast<std::uint32_t>(color * maximum);
    }
    pixel.Colors = colors;
    pixel.Space = ColorSpace::Rgb;
}

inline void ChangeSpace(Pixel& pixel, ColorSpace space) {
    const std::uint32_t maximum = pixel.Is16 ? 65535 : 255;
    if (pixel.Space == space) {
        return;
    }
    if (pixel.Space == ColorSpace::Cmyk) {
        CmykToRgb(pixel);
    }
    if (pixel.Space == ColorSpace::GrayScale && space == ColorSpace::Cmyk) {
        pixel.Colors = {maximum - pixel.Colors[0], 0, 0, 0};
    } else if (pixel.Space == ColorSpace::GrayScale && space == ColorSpace::Rgb) {
        pixel.Colors = {pixel.Colors[0], pixel.Colors[0], pixel.Colors[0], 0};
    } else if (pixel.Space == ColorSpace::Rgb && space == ColorSpace::GrayScale) {
        pixel.Colors = {Gray(pixel.Colors), 0, 0, 0};
    } else if (pixel.Space == ColorSpace::Rgb && space == ColorSpace::Cmyk) {
        const std::uint32_t y = maximum - pixel.Colors[0];
        const std::uint32_t m = maximum - pixel.Colors[1];
        const std::uint32_t c = maximum - pixel.Colors[2];
        const std::uint32_t k = std::min({c, m, y});
        pixel.Colors = {k, y - k, m - k, c - k};
    }
    pixel.Space = space;
}

inline void ChangeDepth(Pixel& pixel, bool to16) {
    if (pixel.Is16 == to16) {
        return;
    }
    for (std::uint32_t& color : pixel.Colors) {
        color = to16 ? color * 256 : color / 256;
    }
    pixel.Alpha = to16 ? pixel.Alpha * 256 : pixel.Alpha / 256;
    pixel.Is16 = to16;
}

/// The bytes of a pixel of a format that is not indexed and not packed.
inline std::vector<std::uint8_t> Write(Pixel pixel, PixelFormat format) {
    ChangeSpace(pixel, PixelFormatColorSpace(format));
    ChangeDepth(pixel, PixelFormatIsExtended(format));
    if (format == PixelFormat::Format32bppPArgb) {
        for (std::uint32_t i = 0; i < 3; ++i) {
            pixel.Colors[i] = static_cast<std::uint32_t>(pixel.Colors[i] * (pixel.Alpha / 255.0));
        }
    }
    std::vector<std::uint8_t> bytes(PixelFormatSize(format) / 8);
    PixelWalker<std::uint32_t, std::uint32_t> walker(bytes.data(), format, 1, 1,
                                                     static_cast<std::uint32_t>(bytes.size()), false);
    for (std::uint32_t i = 0; i < ColorCount(pixel.Space); ++i) {
        walker.SetChannelUInt(pixel.Colors[i]);
        walker.NextChannel();
    }
    walker.SetAlphaInt(static_cast<std::int32_t>(pixel.Alpha));
    return bytes;
}

/// The weighted square distance of a pixel of `Format32bppArgb` and an entry.
inline std::uint32_t Distance(const std::uint8_t* pixel, const ColorMap& map, std::uint32_t index) {
    std::uint8_t entry[4];
    map.GetEntryArgb(index, entry);
    constexpr std::int32_t weights[4] = {11, 59, 30, 20}; // blue, green, red, alpha
    std::int32_t sum = 0;
    for (int i = 0; i < 4; ++i) {
        sum += weights[i] * (pixel[i] - entry[i]) * (pixel[i] - entry[i]);
    }
    return static_cast<std::uint32_t>(sum);
}

/// All entries at the smallest distance.
inline std::vector<std::uint32_t> NearestEntries(const std::uint8_t* pixel, const ColorMap& map) {
    std::vector<std::uint32_t> nearest;
    std::uint32_t best = UINT32_MAX;
    for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
        const std::uint32_t distance = Distance(pixel, map, i);
        if (distance < best) {
            best = distance;
            nearest.clear();
        }
        if (distance == best) {
            nearest.push_back(i);
        }
    }
    return nearest;
}

} // namespace ImagingFramework::Reference
