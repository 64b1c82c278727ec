#pragma once

#include "Common/BitmapData.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ImagingFramework::Testing {

/// The bytes of a pixel, or its index alone in the first one.
using PixelValue = std::array<std::uint8_t, 10>;

/// The pixel at a place, whatever its format.
inline PixelValue PixelAt(const BitmapData& raster, std::uint64_t x, std::uint32_t y) {
    const std::uint32_t bits = PixelFormatSize(raster.GetPixelFormat());
    const std::uint8_t* const bytes = raster.GetScanlineRef(y) + x * bits / 8;
    PixelValue pixel{};
    if (bits >= 8) {
        std::copy_n(bytes, bits / 8, pixel.begin());
    } else {
        pixel[0] = static_cast<std::uint8_t>((*bytes >> (8 - bits - x * bits % 8)) & ((1U << bits) - 1));
    }
    return pixel;
}

/// Whether the bits and bytes behind the last pixel of a row are zero.
inline bool RowEndIsClear(const BitmapData& raster, std::uint32_t y) {
    const std::uint64_t used = std::uint64_t{raster.GetWidth()} * PixelFormatSize(raster.GetPixelFormat());
    const std::uint8_t* const row = raster.GetScanlineRef(y);
    const bool bits = used % 8 == 0 || (row[used / 8] & (0xFFU >> (used % 8))) == 0;
    return bits && std::all_of(row + (used + 7) / 8, row + raster.GetStride(), [](std::uint8_t byte) { return byte == 0; });
}

} // namespace ImagingFramework::Testing
