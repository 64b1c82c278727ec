#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Turns a line of `width` indices of 2 bits into one of 4 bits, in place; the values stay. The line has (width + 1) /
/// 2 bytes.
void WidenIndices(std::uint8_t* pLine, std::uint32_t width) noexcept;

} // namespace ImagingFramework
