#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Copies `count` bits. Both runs may begin anywhere, the most significant bit of a byte first; the bits around the
/// destination stay. Only bytes that hold bits of the runs are touched.
void CopyBits(const std::uint8_t* source, std::uint64_t sourceBit, std::uint8_t* destination,
              std::uint64_t destinationBit, std::uint64_t count);

} // namespace ImagingFramework
