#include "colorconversion/IndexedNoiseDithering.h"

#include "colorconversion/PixelOffset.h"

namespace ImagingFramework {

void IndexedNoiseDithering::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    Dithering::ApplyDithering(pSrcScanline, pDestScanline);
    RequirePalette();
    m_moved.resize(std::size_t{m_uintScanlineWidth} * 4);
    for (std::size_t x = 0; x < m_uintScanlineWidth; ++x) {
        OffsetPixel(pSrcScanline + 4 * x, DrawNoise(), m_moved.data() + 4 * x);
    }
    m_pPalette->FindNearestEntries(m_moved.data(), m_uintScanlineWidth, pDestScanline);
    ++m_uintRow;
}

} // namespace ImagingFramework
