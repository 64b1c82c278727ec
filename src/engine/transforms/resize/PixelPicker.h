#pragma once

#include "Common/PixelFormat.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Writes the pixels of `source` at `columns`, which never fall, one behind the other. Packed indices begin at the top of
/// the first byte; the bits behind the last one stay.
using PixelPicker = void (*)(const std::uint8_t* source, std::uint8_t* destination,
                             const std::vector<std::uint32_t>& columns);

/// Fails with `UnsupportedPixelFormatException` for a pixel size that no format has.
PixelPicker ChoosePixelPicker(PixelFormat format);

} // namespace ImagingFramework
