#include "metadata/Frames/PaletteIndexMap.h"

#include <algorithm>

namespace ImagingFramework {

PaletteIndexMap::PaletteIndexMap(std::uint32_t bits, std::uint32_t entryCount) : m_bNeeded(entryCount < 1U << bits) {
    const std::uint32_t mask = (1U << bits) - 1;
    for (std::uint32_t byte = 0; byte < m_table.size(); ++byte) {
        std::uint32_t mapped = 0;
        for (std::uint32_t shift = 0; shift < 8; shift += bits) {
            const std::uint32_t index = (byte >> shift) & mask;
            mapped |= (index < entryCount ? index : 0) << shift;
        }
        m_table[byte] = static_cast<std::uint8_t>(mapped);
    }
}

void PaletteIndexMap::Apply(const std::uint8_t* pSource, std::uint8_t* pTarget, std::size_t size) const noexcept {
    if (m_bNeeded) {
        std::transform(pSource, pSource + size, pTarget, [this](std::uint8_t byte) { return m_table[byte]; });
    } else if (pSource != pTarget) {
        std::copy(pSource, pSource + size, pTarget);
    }
}

} // namespace ImagingFramework
