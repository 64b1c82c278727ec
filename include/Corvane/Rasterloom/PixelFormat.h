#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// What a pixel is. Bits 0-7 are an ordinal, 8-15 the bits per pixel; 16 to 22 tell indexed, GDI-drawable, alpha,
/// premultiplied, extended (16 bits per channel), canonical, plain byte RGB; 24 to 28 the colour space. Channels stand
/// in memory little end first: blue, green, red, alpha; black, yellow, magenta, cyan, alpha; gray, alpha.
enum class PixelFormat : std::uint32_t {
    FormatUnknown = 0x00000000,
    Format1bppIndexed = 0x01030101,
    Format4bppIndexed = 0x01030402,
    Format8bppIndexed = 0x01030803,
    Format16bppGrayScale = 0x12101004,
    Format16bppRgb555 = 0x01021005,
    Format16bppRgb565 = 0x01021006,
    Format16bppArgb1555 = 0x01061007,
    Format24bppRgb = 0x01421808,
    Format32bppRgb = 0x01422009, ///< the fourth byte is unused: three channels, no alpha
    Format32bppArgb = 0x0166200A,
    Format48bppRgb = 0x0110300C,
    Format64bppArgb = 0x0134400D,
    Format32bppCmyk = 0x1400200F,
    Format8bppGrayScale = 0x12000810,
    Format16bppAGrayScale = 0x12041011,
    Format32bppAGrayScale = 0x12142012,
    Format64bppCmyk = 0x14104013,
    Format40bppAcmyk = 0x14042814,
    Format80bppAcmyk = 0x14145015,
};

/// The bits of a `PixelFormat` that tell its colour space.
enum class ColorSpace : std::uint32_t { Unknown = 0, Rgb = 0x01000000, GrayScale = 0x12000000, Cmyk = 0x14000000 };

/// A channel by name: its position in memory, except for `Alpha`, which stands last.
enum class ColorChannel : std::int32_t {
    Alpha = -1,
    Blue = 0,
    Green = 1,
    Red = 2,
    Black = 0,
    Yellow = 1,
    Magenta = 2,
    Cyan = 3,
    Gray = 0,
};

} // namespace Corvane::Rasterloom
