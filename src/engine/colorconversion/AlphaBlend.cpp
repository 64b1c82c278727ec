#include "colorconversion/AlphaBlend.h"

#include "colorconversion/SampleAccess.h"

#include <limits>

namespace ImagingFramework {

AlphaBlend::AlphaBlend(PixelFormat source, PixelFormat destination, const Channels& background)
    : m_inputFormat(source), m_blendedFormat(source) {
    if (!PixelFormatHasAlpha(source) || PixelFormatHasAlpha(destination)) {
        return;
    }
    // Packed channels cannot be blended where they stand, and premultiplied ones carry their alpha already.
    if (PixelFormatIsPacked16(source) || HasFlag(source, PixelFormatFlag::Premultiplied)) {
        m_inputFormat = PixelFormat::Format32bppArgb;
    }
    m_blendedFormat = PixelFormatDiscardAlpha(source);
    m_uintColorCount = PixelFormatColorChannelCount(m_inputFormat);
    const std::uint32_t shift = PixelFormatIsExtended(source) ? 0 : 8;
    for (std::uint32_t i = 0; i < m_uintColorCount; ++i) {
        m_colors[i] = static_cast<std::uint16_t>(background[i] >> shift);
    }
}

template <class Sample, std::uint32_t Colors>
void AlphaBlend::Blend(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const {
    // The largest sum is the square of the maximum, which 32 bits hold without a sign.
    constexpr std::uint32_t maximum = std::numeric_limits<Sample>::max();
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const std::uint32_t alpha = LoadSample<Sample>(source, i * (Colors + 1) + Colors);
        for (std::size_t c = 0; c < Colors; ++c) {
            const std::uint32_t color = LoadSample<Sample>(source, i * (Colors + 1) + c);
            StoreSample(destination, i * Colors + c,
                        static_cast<Sample>((color * alpha + m_colors[c] * (maximum - alpha)) / maximum));
        }
    }
}

template <class Sample>
void AlphaBlend::BlendSamples(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const {
    switch (m_uintColorCount) {
    case 1:
        return Blend<Sample, 1>(source, destination, pixelCount);
    case 3:
        return Blend<Sample, 3>(source, destination, pixelCount);
    default:
        return Blend<Sample, 4>(source, destination, pixelCount);
    }
}

void AlphaBlend::Apply(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const {
    if (PixelFormatIsExtended(m_inputFormat)) {
        BlendSamples<std::uint16_t>(source, destination, pixelCount);
    } else {
        BlendSamples<std::uint8_t>(source, destination, pixelCount);
    }
}

} // namespace ImagingFramework
