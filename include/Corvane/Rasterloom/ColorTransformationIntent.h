#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// How colours that the destination cannot show are brought into its gamut.
enum class ColorTransformationIntent : std::uint32_t {
    Saturation = 1,
    RelativeColorimetric = 2,
    Perceptual = 4,
    AbsoluteColorimetric = 8,
    RelativeColorimetricBpc = 16, ///< with black point compensation
};

} // namespace Corvane::Rasterloom
