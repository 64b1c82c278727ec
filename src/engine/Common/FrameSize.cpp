#include "Common/FrameSize.h"

#include <algorithm>
#include <atomic>
#include <fmt/format.h>
#include <limits>

namespace ImagingFramework {

namespace {

/// No raster has more, and no scanline.
constexpr std::uint64_t LargestRaster = std::numeric_limits<std::uint32_t>::max();

std::atomic<std::uint64_t> s_uintMaximumFramePixels{0};
std::atomic<std::uint64_t> s_uintMaximumFrameBytes{0};
std::atomic<std::uint64_t> s_uintMaximumFrameCount{0};

/// Whether `a` times `b` is above `limit`; `b` is not 0.
constexpr bool Exceeds(std::uint64_t a, std::uint64_t b, std::uint64_t limit) { return a > limit / b; }

/// Whether the raster of a frame takes more bytes than `limit`, which is at most `LargestRaster`.
bool TakesMoreThan(std::uint64_t limit, std::uint64_t width, std::uint64_t height, PixelFormat format) noexcept {
    if (width > LargestRaster || height > LargestRaster) {
        return true;
    }
    const std::uint64_t stride = CalculateStride64(static_cast<std::uint32_t>(width), PixelFormatSize(format), 4);
    return Exceeds(stride, height, limit);
}

} // namespace

std::uint64_t GetMaximumFramePixels() noexcept { return s_uintMaximumFramePixels; }
void SetMaximumFramePixels(std::uint64_t value) noexcept { s_uintMaximumFramePixels = value; }
std::uint64_t GetMaximumFrameBytes() noexcept { return s_uintMaximumFrameBytes; }
void SetMaximumFrameBytes(std::uint64_t value) noexcept { s_uintMaximumFrameBytes = value; }
std::uint64_t GetMaximumFrameCount() noexcept { return s_uintMaximumFrameCount; }
void SetMaximumFrameCount(std::uint64_t value) noexcept { s_uintMaximumFrameCount = value; }

void CheckFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format) {
    if (width == 0 || height == 0) {
        throw MediaCorruptedException();
    }
    const std::uint64_t pixels = GetMaximumFramePixels();
    if (pixels != 0 && Exceeds(width, height, pixels)) {
        throw MediaCorruptedException(
            fmt::format("The frame of {} x {} pixels is larger than the limit of {} pixels.", width, height, pixels));
    }
    const std::uint64_t allowed = GetMaximumFrameBytes();
    const std::uint64_t bytes = allowed == 0 ? LargestRaster : std::min(allowed, LargestRaster);
    if (TakesMoreThan(bytes, width, height, format)) {
        throw MediaCorruptedException(
            fmt::format("The frame of {} x {} pixels with {} bits each is larger than the limit of {} bytes.", width,
                        height, PixelFormatSize(format), bytes));
    }
}

void CheckFrameCount(std::uint64_t count) {
    const std::uint64_t limit = GetMaximumFrameCount();
    if (limit != 0 && count > limit) {
        throw MediaCorruptedException(fmt::format("The file has more frames ({}) than the limit of {}.", count, limit));
    }
}

} // namespace ImagingFramework
