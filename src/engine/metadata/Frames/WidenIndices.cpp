#include "metadata/Frames/WidenIndices.h"

#include <cstddef>

namespace ImagingFramework {

void WidenIndices(std::uint8_t* pLine, std::uint32_t width) noexcept {
    const auto pair = [](std::uint32_t twoIndices) {
        return static_cast<std::uint8_t>((twoIndices & 0xC) << 2 | (twoIndices & 0x3));
    };
    for (std::size_t i = (std::size_t{width} + 1) / 2; i-- > 0;) {
        const std::uint32_t byte = pLine[i / 2];
        pLine[i] = pair(i % 2 == 0 ? byte >> 4 : byte & 0xF);
    }
}

} // namespace ImagingFramework
