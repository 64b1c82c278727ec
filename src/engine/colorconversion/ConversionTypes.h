#pragma once

#include <cstdint>

namespace ImagingFramework {

enum class ColorManagementEngine : std::uint32_t { None = 0, LittleCms = 1, AdobeCmm = 2 };

/// Rendering intents as bits.
enum class ColorTransformIntent : std::uint32_t {
    Saturation = 1,
    RelativeColorimetric = 2,
    Perceptual = 4,
    AbsoluteColorimetric = 8,
    RelativeColorimetricBpc = 16, ///< with black point compensation
};

enum class ColorQuantizationAlgorithm : std::uint32_t { Octree = 0, MedianCut = 1 };

/// Where the palette of an indexed destination comes from.
enum class ColorMapType : std::uint32_t {
    Adaptive = 0, ///< made from the picture
    Custom = 1,   ///< given by the caller
    WebSafe = 2,
    Windows = 3,
    Mac = 4,
    GrayScale = 5,
    Bicolor = 6,
};

} // namespace ImagingFramework
