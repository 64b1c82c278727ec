#pragma once

#include <Corvane/Rasterloom/Bitmap.h>

#include <cstdint>

namespace Corvane::Rasterloom {

constexpr std::uint32_t RampAt(std::uint32_t x, std::uint32_t y) { return 0xFF000007U | (x * 10) << 16 | y << 8; }

/// Makes pixel (x, y) of an RGB bitmap (10 x, y, 7).
inline Bitmap& Ramp(Bitmap& bitmap) {
    for (std::int32_t x = 0; x < bitmap.get_Width(); ++x) {
        for (std::int32_t y = 0; y < bitmap.get_Height(); ++y) {
            bitmap.SetPixel(x, y, Color::FromRgb(static_cast<std::uint8_t>(x * 10), static_cast<std::uint8_t>(y), 7));
        }
    }
    return bitmap;
}

} // namespace Corvane::Rasterloom
