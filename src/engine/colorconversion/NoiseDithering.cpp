#include "colorconversion/NoiseDithering.h"

namespace ImagingFramework {

void NoiseDithering::Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) {
    Dithering::Open(uintScanlineWidth, intensity, palette);
    CheckType(DitheringType::Noise, DitheringType::Noise);
    m_random = RandomNumbers(Seed);
}

} // namespace ImagingFramework
