#include "transforms/RegionCopy.h"

#include "transforms/BitRun.h"

namespace ImagingFramework {

void CopyRegion(const BitmapData& source, std::uint32_t left, std::uint32_t top, BitmapData& destination) {
    const std::uint64_t bitsPerPixel = PixelFormatSize(source.GetPixelFormat());
    for (std::uint32_t y = 0; y < destination.GetHeight(); ++y) {
        CopyBits(source.GetScanlineRef(top + y), left * bitsPerPixel, destination.GetScanlineRef(y), 0,
                 destination.GetWidth() * bitsPerPixel);
    }
}

} // namespace ImagingFramework
