#pragma once

#include "Common/PixelFormat.h"

#include <cstdint>

namespace ImagingFramework {

/// The one place that decides whether the size of a frame from a file is acceptable: both sides above 0, and a raster of it
/// can exist (its scanline and its bytes fit in 32 bits).
bool IsAcceptableFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format) noexcept;
/// Fails with `MediaCorruptedException` where the size is not acceptable.
void CheckFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format);

} // namespace ImagingFramework
