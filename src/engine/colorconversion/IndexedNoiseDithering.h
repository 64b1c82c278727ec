#pragma once

#include "colorconversion/NoiseDithering.h"

#include <vector>

namespace ImagingFramework {

/// The entries of a palette that are nearest to the pixels with noise added, the same to all channels of a pixel.
class IndexedNoiseDithering final : public NoiseDithering {
public:
    explicit IndexedNoiseDithering(DitheringType type) : NoiseDithering(type) {}
    void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) override;

private:
    std::vector<std::int16_t> m_offsets; ///< the noise of a row, by byte
    std::vector<std::uint8_t> m_moved;   ///< the pixels of a row with the noise added
};

} // namespace ImagingFramework
