#pragma once

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// Turns pixels between the file's order (cyan, magenta, yellow, black) and the raster's, which is the reverse, and inverts
/// the samples where the file holds what remains of each ink. Source and destination may be the same.
inline void ConvertJpegInks(const std::uint8_t* pSource, std::uint8_t* pDestination, std::size_t count, bool invert) noexcept {
    const auto mask = static_cast<std::uint8_t>(invert ? 0xFF : 0);
    for (std::size_t i = 0; i < count; ++i, pSource += 4, pDestination += 4) {
        const std::uint8_t inks[4] = {pSource[3], pSource[2], pSource[1], pSource[0]};
        for (std::size_t c = 0; c < 4; ++c) {
            pDestination[c] = inks[c] ^ mask;
        }
    }
}

} // namespace ImagingFramework
