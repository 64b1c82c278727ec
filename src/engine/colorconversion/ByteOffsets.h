#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// Adds an offset of -510 to 510 to each byte, cut to 0 to 255. In 16 bits, which is what the compiler makes vectors of.
inline void OffsetBytes(const std::uint8_t* source, const std::int16_t* offsets, std::size_t count,
                        std::uint8_t* result) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto value = static_cast<std::int16_t>(source[i] + offsets[i]);
        result[i] = static_cast<std::uint8_t>(std::clamp<std::int16_t>(value, 0, 255));
    }
}

} // namespace ImagingFramework
