#include "colorconversion/ColorQuantizer.h"

#include <algorithm>

namespace ImagingFramework {

void ColorQuantizer::Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) {
    if (bits < 1 || bits > 8) {
        throw ArgumentException("bits");
    }
    const std::uint32_t limit = 1U << bits;
    m_uintBits = bits;
    m_bWithAlpha = withAlpha;
    m_uintMaximumEntryCount = maxColors == 0 ? limit : std::min(maxColors, limit);
}

void ColorQuantizer::AddColor(std::uint8_t, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    AddColor(red, green, blue);
}

void ColorQuantizer::AddColorsArgb(const std::uint8_t* pPixels, std::size_t count) {
    if (pPixels == nullptr) {
        throw ArgumentNullPointerException("pPixels");
    }
    for (const std::uint8_t* const end = pPixels + 4 * count; pPixels != end; pPixels += 4) {
        AddColor(pPixels[3], pPixels[2], pPixels[1], pPixels[0]);
    }
}

void ColorQuantizer::AddColorsRgb(const std::uint8_t* pPixels, std::size_t count) {
    if (pPixels == nullptr) {
        throw ArgumentNullPointerException("pPixels");
    }
    for (const std::uint8_t* const end = pPixels + 4 * count; pPixels != end; pPixels += 4) {
        AddColor(pPixels[2], pPixels[1], pPixels[0]);
    }
}

PixelFormat ColorQuantizer::GetPaletteFormat() const {
    return m_bWithAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb;
}

void ColorQuantizer::FillPalette() {
    m_palette.Create(m_uintMaximumEntryCount, GetPaletteFormat());
    if (m_bWithAlpha) {
        for (std::uint32_t i = 0; i < m_uintMaximumEntryCount; ++i) {
            m_palette.SetAlpha(i, 255);
        }
    }
    m_uintFilledEntryCount = 0;
}

void ColorQuantizer::GetPalette(std::unique_ptr<ColorMap>& colorMap) {
    FillPalette();
    if (!colorMap) {
        colorMap = std::make_unique<ColorMap>();
    }
    colorMap->Create(m_uintFilledEntryCount, GetPaletteFormat());
    for (std::uint32_t i = 0; i < m_uintFilledEntryCount; ++i) {
        std::uint8_t entry[4];
        m_palette.GetEntryArgb(i, entry);
        colorMap->SetEntryArgb(i, entry);
    }
}

std::uint8_t ColorQuantizer::Mean(std::uint64_t sum, std::uint64_t count) {
    if (count == 0 || sum / count > 255) {
        throw OverflowException();
    }
    return static_cast<std::uint8_t>(sum / count);
}

} // namespace ImagingFramework
