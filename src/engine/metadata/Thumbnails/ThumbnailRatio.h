#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Source pixels per step between thumbnail pixels; the first and the last pixel stay the first and the last.
inline double ThumbnailRatio(std::uint32_t imageSize, std::uint32_t thumbSize) {
    const double steps = thumbSize - 1.0 + (thumbSize == 1 ? 0.5 : 0.0);
    return (imageSize - 1.0) / steps;
}

} // namespace ImagingFramework
