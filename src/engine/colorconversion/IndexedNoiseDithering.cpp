#include "colorconversion/IndexedNoiseDithering.h"

#include "colorconversion/ByteOffsets.h"

#include <algorithm>

namespace ImagingFramework {

void IndexedNoiseDithering::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    Dithering::ApplyDithering(pSrcScanline, pDestScanline);
    RequirePalette();
    m_offsets.resize(std::size_t{m_uintScanlineWidth} * 4);
    m_moved.resize(m_offsets.size());
    for (std::size_t i = 0; i < m_offsets.size(); i += 4) {
        std::fill_n(m_offsets.data() + i, 4, static_cast<std::int16_t>(DrawNoise()));
    }
    OffsetBytes(pSrcScanline, m_offsets.data(), m_offsets.size(), m_moved.data());
    m_pPalette->FindNearestEntries(m_moved.data(), m_uintScanlineWidth, pDestScanline);
    ++m_uintRow;
}

} // namespace ImagingFramework
