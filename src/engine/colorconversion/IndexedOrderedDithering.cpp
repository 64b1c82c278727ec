#include "colorconversion/IndexedOrderedDithering.h"

#include "colorconversion/ByteOffsets.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace ImagingFramework {

/// The Euclidean distance of four bytes, over all pairs of entries.
std::int32_t IndexedOrderedDithering::MeanEntryDistance() const {
    const std::uint32_t count = m_pPalette->GetEntryCount();
    double sum = 0.0;
    for (std::uint32_t i = 1; i < count; ++i) {
        std::uint8_t first[4];
        m_pPalette->GetEntryArgb(i, first);
        for (std::uint32_t j = 0; j < i; ++j) {
            std::uint8_t second[4];
            m_pPalette->GetEntryArgb(j, second);
            std::int32_t square = 0;
            for (std::size_t c = 0; c < 4; ++c) {
                square += (first[c] - second[c]) * (first[c] - second[c]);
            }
            sum += std::sqrt(static_cast<double>(square));
        }
    }
    const double pairs = static_cast<double>(count) * (count - 1) / 2.0;
    return TruncateToInt32(sum / pairs);
}

void IndexedOrderedDithering::InitializeOrderedMatrix() {
    const std::uint32_t entryCount = m_pPalette != nullptr ? m_pPalette->GetEntryCount() : 0;
    const std::int32_t distance = entryCount > 2 ? MeanEntryDistance() : 0;
    const auto cells = static_cast<std::int32_t>(m_uintSize * m_uintSize);
    for (std::uint32_t row = 0; row < m_uintSize; ++row) {
        for (std::uint32_t column = 0; column < m_uintSize; ++column) {
            std::int32_t& cell = m_matrix[row][column];
            // For two entries the scaled numbers wrap at 256, which puts the largest ones lowest. That is meant.
            const std::int32_t threshold =
                entryCount == 2 ? ((cell + 5) * 255 / cells) & 255 : (cell - cells / 2) * distance / cells;
            cell = threshold * m_intIntensity / 100;
        }
    }
}

void IndexedOrderedDithering::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    Dithering::ApplyDithering(pSrcScanline, pDestScanline);
    RequirePalette();
    switch (m_pPalette->GetEntryCount()) {
    case 1:
        std::memset(pDestScanline, 0, m_uintScanlineWidth);
        break;
    case 2:
        ChooseOfTwo();
        break;
    default:
        ChooseNearest();
    }
    ++m_uintRow;
}

/// The gray weighs the bytes by their place in memory, and alpha by 20.
void IndexedOrderedDithering::ChooseOfTwo() {
    const auto& thresholds = m_matrix[m_uintRow % m_uintSize];
    const std::uint32_t black = m_pPalette->FindNearestEntryIndex(0, 0, 0);
    for (std::size_t x = 0; x < m_uintScanlineWidth; ++x) {
        const std::uint8_t* const p = m_pSrcScanline + 4 * x;
        const std::int32_t gray = (30 * p[0] + 59 * p[1] + 11 * p[2] + 20 * p[3]) / 120;
        const bool isAbove = thresholds[x % m_uintSize] <= gray;
        m_pDestScanline[x] = static_cast<std::uint8_t>(isAbove ? (black + 1) & 1 : black);
    }
}

void IndexedOrderedDithering::ChooseNearest() {
    // The thresholds of a row, for all channels, as often as they fit: every size divides the largest.
    std::int16_t offsets[MaximumSize * 4];
    for (std::size_t i = 0; i < std::size(offsets); ++i) {
        offsets[i] = static_cast<std::int16_t>(m_matrix[m_uintRow % m_uintSize][i / 4 % m_uintSize]);
    }
    m_moved.resize(std::size_t{m_uintScanlineWidth} * 4);
    for (std::size_t i = 0; i < m_moved.size(); i += std::size(offsets)) {
        OffsetBytes(m_pSrcScanline + i, offsets, std::min(std::size(offsets), m_moved.size() - i), m_moved.data() + i);
    }
    m_pPalette->FindNearestEntries(m_moved.data(), m_uintScanlineWidth, m_pDestScanline);
}

} // namespace ImagingFramework
