#pragma once

#include "metadata/Streams/IStream.h"

#include <cstdint>

namespace ImagingFramework {

/// The largest position of a reader or writer, in bits; with it every sum of positions and bit counts fits 64 bits.
inline constexpr std::uint64_t MaxPositionInBits = 0x7FFFFFFFFFFFFFFFU;

/// Where a seek leads to, in bits from the beginning. `position` and `size` are bits. Fails with `ArgumentException`
/// ("nOffset") for a negative offset from begin or end and for a target before the beginning, with
/// `OutOfRangeException` for one beyond `MaxPositionInBits`.
std::uint64_t ComputeSeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits, std::uint64_t position,
                                std::uint64_t size);

} // namespace ImagingFramework
