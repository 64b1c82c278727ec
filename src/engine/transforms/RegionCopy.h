#pragma once

#include "Common/BitmapData.h"

#include <cstdint>

namespace ImagingFramework {

/// Fills `destination` with the pixels of `source` from (`left`, `top`) on; formats must be equal and the region must lie
/// inside. Pixels of 1 and 4 bits may begin inside a byte.
void CopyRegion(const BitmapData& source, std::uint32_t left, std::uint32_t top, BitmapData& destination);

} // namespace ImagingFramework
