#pragma once

#include "colorconversion/Dithering.h"
#include "metadata/Streams/RandomNumbers.h"

#include <cstdint>

namespace ImagingFramework {

/// Draws the noise of a noise dithering. Each picture gets the same sequence.
class NoiseDithering : public Dithering {
public:
    void Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) override;

protected:
    explicit NoiseDithering(DitheringType type) : Dithering(type) {}

    /// -128 to 128 at full intensity.
    std::int32_t DrawNoise() {
        const auto drawn = static_cast<std::int32_t>(m_random.Next() * 256 / RandomNumbers::Maximum);
        return (drawn - 128) * m_intIntensity / 100;
    }

private:
    static constexpr std::uint32_t Seed = 1;

    RandomNumbers m_random{Seed};
};

} // namespace ImagingFramework
