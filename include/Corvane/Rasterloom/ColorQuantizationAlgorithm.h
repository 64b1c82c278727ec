#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// How an adaptive palette is found.
enum class ColorQuantizationAlgorithm : std::int32_t {
    Octree = 0,    ///< a tree over the bits of the colours, reduced as it grows; over alpha as well where alpha counts
    MedianCut = 1, ///< boxes of colours, cut along their longest sides
};

} // namespace Corvane::Rasterloom
