#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// How the entries of an adaptive palette are found.
enum class ColorQuantizationAlgorithm : std::uint32_t { Octree = 0, MedianCut = 1 };

} // namespace Corvane::Rasterloom
