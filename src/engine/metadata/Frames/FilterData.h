#pragma once

#include "Common/ColorMap.h"
#include "Common/PixelFormat.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// What a producer tells its consumers about the image, before the first scanline.
struct FilterData {
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
    double VerticalResolution = 0.0;   ///< dots per inch
    double HorizontalResolution = 0.0; ///< dots per inch
    PixelFormat Format = PixelFormat::FormatUnknown;
    std::shared_ptr<const ColorMap> Palette; ///< null for a format without a palette
    std::uint32_t FrameIndex = 0;
    std::vector<std::uint8_t> Profile; ///< ICC profile, empty without one
};

} // namespace ImagingFramework
