#pragma once

#include <algorithm>
#include <cstdint>

namespace ImagingFramework {

/// Adds `offset` to each of the four channels of a pixel, cut to 0 to 255.
inline void OffsetPixel(const std::uint8_t* pPixel, std::int32_t offset, std::uint8_t* pResult) {
    for (int channel = 0; channel < 4; ++channel) {
        pResult[channel] = static_cast<std::uint8_t>(std::clamp(pPixel[channel] + offset, 0, 255));
    }
}

} // namespace ImagingFramework
