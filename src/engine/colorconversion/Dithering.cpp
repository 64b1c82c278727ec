#include "colorconversion/Dithering.h"

#include "colorconversion/IndexedErrorDiffusion.h"
#include "colorconversion/IndexedNoiseDithering.h"
#include "colorconversion/IndexedOrderedDithering.h"

#include <algorithm>

namespace ImagingFramework {

void Dithering::Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) {
    if (uintScanlineWidth == 0) {
        throw ArgumentException("uintScanlineWidth", "the value must be > 0");
    }
    m_uintScanlineWidth = uintScanlineWidth;
    m_intIntensity = static_cast<std::int32_t>(std::min(intensity, 100U));
    m_pPalette = palette;
    m_uintRow = 0;
}

void Dithering::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    if (pSrcScanline == nullptr) {
        throw ArgumentNullPointerException("pSrcScanline");
    }
    if (pDestScanline == nullptr) {
        throw ArgumentNullPointerException("pDestScanline");
    }
    m_pSrcScanline = pSrcScanline;
    m_pDestScanline = pDestScanline;
}

void Dithering::CheckType(DitheringType first, DitheringType last) const {
    if (m_enType < first || m_enType > last) {
        throw ArgumentException("dithering type", "the dithering type specified is not supported");
    }
}

void Dithering::RequirePalette() const {
    if (m_pPalette == nullptr || m_pPalette->IsEmpty()) {
        throw PaletteException();
    }
}

std::unique_ptr<Dithering> CreateDithering(PixelFormat sourceFormat, PixelFormat destinationFormat,
                                           DitheringType type) {
    if (sourceFormat != PixelFormat::Format32bppArgb || !PixelFormatIsIndexed(destinationFormat)) {
        throw UnsupportedPixelFormatException();
    }
    if (type < DitheringType::Original || type > DitheringType::Noise) {
        throw ArgumentException("enDitheringType");
    }
    if (type == DitheringType::Noise) {
        return std::make_unique<IndexedNoiseDithering>(type);
    }
    if (type >= DitheringType::OrderedBayer2) {
        return std::make_unique<IndexedOrderedDithering>(type);
    }
    return std::make_unique<IndexedErrorDiffusion>(type);
}

} // namespace ImagingFramework
