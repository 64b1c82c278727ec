#pragma once

#include "Common/PixelFormat.h"

#include <cstdint>

namespace ImagingFramework {

/// What the process accepts from files. 0 sets no limit, and is the value at first. Thread-safe; a change holds for what is
/// checked after it.
std::uint64_t GetMaximumFramePixels() noexcept;
void SetMaximumFramePixels(std::uint64_t value) noexcept;
/// Bytes of the frame's raster, which has scanlines of a multiple of 4 bytes.
std::uint64_t GetMaximumFrameBytes() noexcept;
void SetMaximumFrameBytes(std::uint64_t value) noexcept;
std::uint64_t GetMaximumFrameCount() noexcept;
void SetMaximumFrameCount(std::uint64_t value) noexcept;

/// The one place that decides whether the size of a frame from a file is acceptable: both sides are above 0, its scanline
/// and its bytes fit in 32 bits, so that a raster of it can exist, and it is within the limits of the process. Fails with
/// `MediaCorruptedException`, which tells the size and the limit.
void CheckFrameSize(std::uint64_t width, std::uint64_t height, PixelFormat format);
/// The same for the number of frames of a file. Whoever walks a list of frames asks as he counts.
void CheckFrameCount(std::uint64_t count);

} // namespace ImagingFramework
