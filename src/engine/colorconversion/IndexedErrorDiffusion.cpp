#include "colorconversion/IndexedErrorDiffusion.h"

#include "ErrorHandling/Exceptions.h"
#include "colorconversion/DiffusionVector.h"

#include <algorithm>

namespace ImagingFramework {

void IndexedErrorDiffusion::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    ErrorDiffusion::ApplyDithering(pSrcScanline, pDestScanline);
    RequirePalette();
    if (!DiffuseByGrid()) {
        DiffusePlainly();
    }
    NextRow();
}

/// False, with nothing done, for palettes that are too large and as long as they have been asked little.
bool IndexedErrorDiffusion::DiffuseByGrid() {
    GridColorMapper* const grid = m_pPalette->GetGrid(m_uintScanlineWidth);
    if (grid == nullptr || !grid->HasByteIndices()) {
        return false;
    }
    const DiffusionVector::Run run{m_pSrcScanline, m_pDestScanline, m_uintScanlineWidth, GetRows(),
                                   m_taps,         m_uintShift,     m_intIntensity};
    return DiffusionVector::DiffuseRow(run, *grid);
}

void IndexedErrorDiffusion::DiffusePlainly() {
    const auto& rows = GetRows();
    for (std::size_t x = 0; x < m_uintScanlineWidth; ++x) {
        const ArgbError& given = rows[0][x];
        std::uint8_t wanted[4];
        for (std::size_t c = 0; c < 4; ++c) {
            const std::int32_t value = (given.Channels[c] >> m_uintShift) + m_pSrcScanline[4 * x + c];
            wanted[c] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
        }
        const std::uint32_t index = m_pPalette->FindNearestEntryIndex(wanted[3], wanted[2], wanted[1], wanted[0]);
        m_pDestScanline[x] = static_cast<std::uint8_t>(std::min(index, 255U));
        std::uint8_t entry[4];
        m_pPalette->GetEntryArgb(index, entry);
        ArgbError error;
        for (std::size_t c = 0; c < 4; ++c) {
            error.Channels[c] = (wanted[c] - entry[c]) * m_intIntensity / 100;
        }
        for (const DiffusionTap& tap : m_taps) {
            ArgbError& target = *(rows[tap.Row] + static_cast<std::ptrdiff_t>(x) + tap.Column);
            for (std::size_t c = 0; c < 4; ++c) {
                target.Channels[c] += tap.Weight * error.Channels[c];
            }
        }
    }
}

} // namespace ImagingFramework
