#include "colorconversion/DiffusionKernel.h"

#include <algorithm>
#include <iterator>

namespace ImagingFramework {

namespace {

// Some differ from the kernels that usually go by these names; these are meant.
constexpr DiffusionKernel Kernels[] = {
    {DitheringType::Original, 3, 2, 4,
     {{0, 0, 5},
      {0, 11, 0}}},
    {DitheringType::FloydSteinberg, 3, 2, 4,
     {{0, 0, 7},
      {3, 5, 1}}},
    {DitheringType::Fan, 5, 2, 4,
     {{0, 0, 0, 7, 0},
      {1, 3, 5, 0, 0}}},
    {DitheringType::Jarvis, 5, 3, 7,
     {{0, 0, 0, 19, 13},
      {8, 13, 19, 13, 8},
      {3, 8, 13, 8, 3}}},
    {DitheringType::Stucki, 5, 3, 7,
     {{0, 0, 0, 26, 12},
      {6, 12, 24, 12, 6},
      {3, 6, 12, 6, 3}}},
    {DitheringType::Sierra, 5, 3, 5,
     {{0, 0, 0, 5, 3},
      {2, 4, 5, 4, 2},
      {0, 2, 3, 2, 0}}},
    {DitheringType::Burkes, 5, 2, 5,
     {{0, 0, 0, 8, 4},
      {2, 4, 8, 4, 2}}},
    {DitheringType::Stephenson, 7, 4, 8,
     {{0, 0, 0, 0, 0, 42, 0},
      {15, 0, 33, 0, 39, 0, 22},
      {0, 15, 0, 33, 0, 15, 0},
      {6, 0, 15, 0, 15, 0, 6}}},
};

} // namespace

const DiffusionKernel* FindDiffusionKernel(DitheringType type) {
    const auto* const found = std::ranges::find(Kernels, type, &DiffusionKernel::Type);
    return found != std::end(Kernels) ? found : nullptr;
}

} // namespace ImagingFramework
