#pragma once

#include "Common/Color.h"
#include "Common/PixelFormat.h"

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// Reverses the colour channels of `count` pixels in place. 24 and 48 bits: three channels; 32 and 64: all four; 40 and
/// 80: the first four, the fifth (alpha) stays; 1, 4, 8 and 16 bits: nothing to do. Any other size fails with
/// `UnsupportedPixelFormatException`. A null pointer or no pixels: nothing is done. `pPixels` needs no alignment.
void SwapChannelsInPixel(void* pPixels, std::size_t count, std::uint32_t bitsPerPixel);

/// Replaces the channels of `count` pixels by their complements, by the size of the format: 8, 24, 32, 48 and 64 bits:
/// all channels, alpha among them; 40 and 80 bits: the four colour channels. Any other size, 16 bits among them, fails
/// with `UnsupportedPixelFormatException`. A null pointer or no pixels: nothing is done.
void InvertChannelsInPixel(void* pPixels, std::size_t count, PixelFormat format);

/// Writes a colour as one pixel of `format`. An indexed pixel is the low byte of the first channel. A format with 16
/// bits per channel takes the channels as they are, any other the high byte of each channel. The packed 16-bit formats
/// get the high bytes of the first two channels: there is no packing. At most `PixelFormatSize(format) / 8` bytes (one
/// for an indexed format) are written; the unused byte of `Format32bppRgb` is left alone. Fails with
/// `ArgumentNullPointerException` for a null `pResult`, `UnsupportedPixelFormatException` for an unknown format.
void ConvertColorToFormat(const Color& color, PixelFormat format, void* pResult);

} // namespace ImagingFramework
