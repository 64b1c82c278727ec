#pragma once

#include "Common/PixelFormat.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Composes scanlines with alpha over a background colour and drops the alpha.
class AlphaBlend {
public:
    using Channels = std::array<std::uint16_t, 5>;

    /// Blends nothing.
    AlphaBlend() = default;
    /// Blends when `source` has alpha and `destination` has none. The background is five channels in memory order;
    /// formats of 8 bits take their high bytes. Fails with `UnsupportedPixelFormatException` for a format in no known
    /// space.
    AlphaBlend(PixelFormat source, PixelFormat destination, const Channels& background);

    bool IsActive() const noexcept { return m_uintColorCount != 0; }
    /// What `Apply` takes: the source format where its channels stand on bytes and are plain; otherwise the source must
    /// be expanded to this format first.
    PixelFormat GetInputFormat() const noexcept { return m_inputFormat; }
    /// The source format when nothing is blended, else the format without alpha.
    PixelFormat GetBlendedFormat() const noexcept { return m_blendedFormat; }
    void Apply(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const;

private:
    template <class Sample, std::uint32_t Colors>
    void Blend(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const;
    template <class Sample>
    void BlendSamples(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t pixelCount) const;

    PixelFormat m_inputFormat = PixelFormat::FormatUnknown;
    PixelFormat m_blendedFormat = PixelFormat::FormatUnknown;
    std::uint32_t m_uintColorCount = 0;
    std::array<std::uint16_t, 4> m_colors{};
};

} // namespace ImagingFramework
