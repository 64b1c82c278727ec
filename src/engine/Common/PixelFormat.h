#pragma once

#include "ErrorHandling/Exceptions.h"

#include <cstdint>
#include <span>

namespace ImagingFramework {

/// A pixel format is a word whose bits tell what a pixel is: bits 0-7 an ordinal, 8-15 the bits per pixel, 16-22 the flags
/// of `PixelFormatFlag`, 24-28 the colour space. Channels stand in memory little end first: blue, green, red, alpha;
/// black, yellow, magenta, cyan, alpha; gray, alpha.
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
    Format32bppRgb = 0x01422009,
    Format32bppArgb = 0x0166200A,
    Format32bppPArgb = 0x014E200B, ///< engine only
    Format48bppRgb = 0x0110300C,
    Format64bppArgb = 0x0134400D,
    Format64bppPArgb = 0x011C400E, ///< engine only
    Format32bppCmyk = 0x1400200F,
    Format8bppGrayScale = 0x12000810,
    Format16bppAGrayScale = 0x12041011,
    Format32bppAGrayScale = 0x12142012,
    Format64bppCmyk = 0x14104013,
    Format40bppAcmyk = 0x14042814,
    Format80bppAcmyk = 0x14145015,
};

enum class PixelFormatFlag : std::uint32_t {
    Indexed = 0x00010000,
    Gdi = 0x00020000,
    Alpha = 0x00040000,
    Premultiplied = 0x00080000,
    Extended = 0x00100000, ///< 16 bits per channel
    Canonical = 0x00200000,
    ByteRgb = 0x00400000, ///< one byte per channel in blue, green, red order
};

enum class ColorSpace : std::uint32_t { Unknown = 0, Rgb = 0x01000000, GrayScale = 0x12000000, Cmyk = 0x14000000 };

/// A channel by name. `Alpha` is not an index; `TranslateColorChannel` turns it into one.
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

constexpr std::uint32_t ToWord(PixelFormat format) { return static_cast<std::uint32_t>(format); }

constexpr bool HasFlag(PixelFormat format, PixelFormatFlag flag) {
    return (ToWord(format) & static_cast<std::uint32_t>(flag)) != 0;
}

/// Bits per pixel.
constexpr std::uint32_t PixelFormatSize(PixelFormat format) { return (ToWord(format) >> 8) & 0xFFU; }
constexpr bool PixelFormatHasAlpha(PixelFormat format) { return HasFlag(format, PixelFormatFlag::Alpha); }
constexpr bool PixelFormatIsIndexed(PixelFormat format) { return HasFlag(format, PixelFormatFlag::Indexed); }
constexpr bool PixelFormatIsExtended(PixelFormat format) { return HasFlag(format, PixelFormatFlag::Extended); }
constexpr bool PixelFormatIsInSpace(PixelFormat format, ColorSpace space) {
    return (ToWord(format) & static_cast<std::uint32_t>(space)) == static_cast<std::uint32_t>(space);
}
constexpr bool PixelFormatIsRgb(PixelFormat format) { return PixelFormatIsInSpace(format, ColorSpace::Rgb); }
constexpr bool PixelFormatIsCmyk(PixelFormat format) { return PixelFormatIsInSpace(format, ColorSpace::Cmyk); }
constexpr bool PixelFormatIsGrayscale(PixelFormat format) { return PixelFormatIsInSpace(format, ColorSpace::GrayScale); }
/// The three packed formats, whose channels do not stand on bytes.
constexpr bool PixelFormatIsPacked16(PixelFormat format) {
    return format == PixelFormat::Format16bppRgb555 || format == PixelFormat::Format16bppRgb565 ||
           format == PixelFormat::Format16bppArgb1555;
}
/// Not indexed, whole bytes, and none of the packed ones: every channel is a byte or a 16-bit word of its own.
constexpr bool PixelFormatIsWholeChannel(PixelFormat format) {
    return !PixelFormatIsIndexed(format) && PixelFormatSize(format) != 0 && PixelFormatSize(format) % 8 == 0 &&
           !PixelFormatIsPacked16(format);
}

/// Channels of a known format; fails with `UnsupportedPixelFormatException` for any other word. `Format32bppRgb` has 3.
std::uint32_t PixelFormatChannelCount(PixelFormat format);
std::uint32_t PixelFormatColorChannelCount(PixelFormat format);
/// `Unknown` for 0; fails with `UnsupportedPixelFormatException` for a word in no space.
ColorSpace PixelFormatColorSpace(PixelFormat format);
/// The format of the same space and depth with alpha; the word itself if it has alpha. Indexed formats count as RGB.
PixelFormat PixelFormatAddAlpha(PixelFormat format);
PixelFormat PixelFormatDiscardAlpha(PixelFormat format);
/// Fails with `ArgumentException` for a format without alpha.
std::uint32_t PixelFormatAlphaChannelIndex(PixelFormat format);
std::int32_t TranslateColorChannel(ColorChannel channel, ColorSpace space);
std::int32_t TranslateColorChannel(ColorChannel channel, PixelFormat format);

/// Bytes of a scanline of `width` pixels, rounded up to `alignment` (a power of two). Fails with `OverflowException` when
/// the product of width and bits exceeds 0x7FFFFFFF8. Below that the arithmetic is of 32 bits and wraps: whoever allocates
/// by it compares with `CalculateStride64`.
std::uint32_t CalculateStride(std::uint32_t width, std::uint32_t bitsPerPixel, std::uint32_t alignment);
std::uint32_t CalculateStride(std::uint32_t width, PixelFormat format, std::uint32_t alignment);
/// The true stride.
constexpr std::uint64_t CalculateStride64(std::uint32_t width, std::uint32_t bitsPerPixel, std::uint32_t alignment) {
    const std::uint64_t bytes = (std::uint64_t{width} * bitsPerPixel + 7) >> 3;
    return (bytes + alignment - 1) & ~std::uint64_t{alignment - 1};
}
/// `CalculateStride`, failing with `OverflowException` where it would have wrapped.
std::uint32_t CheckedStride(std::uint32_t width, PixelFormat format, std::uint32_t alignment);

/// Every format a raster can have, the engine-only ones included, in ordinal order.
std::span<const PixelFormat> AllPixelFormats();

} // namespace ImagingFramework
