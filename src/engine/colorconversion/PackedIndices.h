#pragma once

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// `count` indices of `bits` (1 to 8) each, the first in the top bits of a byte, to one byte each.
void UnpackIndices(const std::uint8_t* source, std::uint32_t bits, std::size_t count, std::uint8_t* destination);
/// The reverse. Of an index its low bits are stored; bits of the last byte behind the last index keep their value.
void PackIndices(const std::uint8_t* source, std::uint32_t bits, std::size_t count, std::uint8_t* destination);

} // namespace ImagingFramework
