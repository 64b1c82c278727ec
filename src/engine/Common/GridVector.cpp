#include "Common/GridVector.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Common/GridVector.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Common/GridSearch-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::GridVector::HWY_NAMESPACE {

#if RASTERLOOM_PLAIN_TARGET

bool MapRun(GridColorMapper&, const std::uint8_t*, std::size_t, std::uint8_t*) { return false; }

#else

bool MapRun(GridColorMapper& grid, const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices) {
    GridSearch search(grid);
    for (std::size_t i = 0; i < count; ++i) {
        pIndices[i] = static_cast<std::uint8_t>(search.Find(LoadPixel(pPixels + 4 * i)));
    }
    return true;
}

#endif

} // namespace ImagingFramework::GridVector::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework::GridVector {

HWY_EXPORT(MapRun);

bool MapPixels(GridColorMapper& grid, const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices) {
    return HWY_DYNAMIC_DISPATCH(MapRun)(grid, pPixels, count, pIndices);
}

} // namespace ImagingFramework::GridVector
#endif
