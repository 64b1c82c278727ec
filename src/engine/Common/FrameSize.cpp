#include "Common/FrameSize.h"

#include <limits>

namespace ImagingFramework {

bool IsAcceptableFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format) noexcept {
    constexpr std::uint64_t maximum = std::numeric_limits<std::uint32_t>::max();
    if (width == 0 || height == 0 || width > maximum || height > maximum) {
        return false;
    }
    const std::uint64_t stride = CalculateStride64(static_cast<std::uint32_t>(width), PixelFormatSize(format), 4);
    return stride <= maximum && stride <= maximum / height;
}

void CheckFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format) {
    if (!IsAcceptableFrameSize(width, height, format)) {
        throw MediaCorruptedException();
    }
}

} // namespace ImagingFramework
