#include "colorconversion/ColorBox.h"

#include <algorithm>

namespace ImagingFramework {

ColorBox::ColorBox(std::span<ColorRecord> records, std::span<const ColorRecord> measured) : m_records(records) {
    if (measured.empty()) {
        return;
    }
    m_minimum = m_maximum = measured.front();
    for (const ColorRecord& record : measured) {
        for (std::size_t channel = 0; channel < record.size(); ++channel) {
            m_minimum[channel] = std::min(m_minimum[channel], record[channel]);
            m_maximum[channel] = std::max(m_maximum[channel], record[channel]);
        }
    }
}

bool ColorBox::CanSplit() const noexcept { return m_maximum[0] >= 1 && m_minimum != m_maximum; }

std::array<std::uint32_t, 4> ColorBox::GetSpreads() const noexcept {
    const std::uint32_t alpha = (m_minimum[0] + m_maximum[0] + 1U) / 2;
    std::array<std::uint32_t, 4> spreads{(m_maximum[0] - std::uint32_t{m_minimum[0]}) * 256};
    for (std::size_t channel = 1; channel < spreads.size(); ++channel) {
        spreads[channel] = (m_maximum[channel] - std::uint32_t{m_minimum[channel]}) * alpha * 256 / 255;
    }
    return spreads;
}

std::uint32_t ColorBox::GetScore() const noexcept {
    std::uint32_t score = 0;
    for (const std::uint32_t spread : GetSpreads()) {
        score += spread * spread;
    }
    return score;
}

ColorBox ColorBox::Split() {
    const std::array<std::uint32_t, 4> spreads = GetSpreads();
    // The first among equals: alpha, red, green, blue.
    const auto axis = static_cast<std::size_t>(std::ranges::max_element(spreads) - spreads.begin());
    const int middle = (m_minimum[axis] + m_maximum[axis]) / 2;
    const auto upper =
        std::ranges::partition(m_records, [=](const ColorRecord& record) { return record[axis] <= middle; });
    const std::span<ColorRecord> lower(m_records.begin(), upper.begin());
    *this = ColorBox(lower);
    return ColorBox(upper);
}

} // namespace ImagingFramework
