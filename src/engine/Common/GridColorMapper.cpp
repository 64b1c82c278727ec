#include "Common/GridColorMapper.h"

#include "Common/ColorMap.h"
#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <limits>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t MaximumGridEntries = 1024;

} // namespace

bool GridColorMapper::IsApplicable(const ColorMap& map) {
    if (map.IsEmpty() || map.GetEntryCount() > MaximumGridEntries) {
        return false;
    }
    for (std::uint32_t i = 1; i < map.GetEntryCount(); ++i) {
        if (map.GetAlpha(i) != map.GetAlpha(0)) {
            return false;
        }
    }
    return true;
}

void GridColorMapper::Reset() noexcept {
    ColorMapper::Reset();
    m_cells.clear();
    m_candidates.clear();
}

void GridColorMapper::SetColorMap(const ColorMap& map) {
    if (!IsApplicable(map)) {
        throw ArgumentException("map");
    }
    ColorMapper::SetColorMap(map);
    m_uintEntryCount = map.GetEntryCount();
    m_cells.resize(std::size_t{1} << (3 * CellBits));
    m_scratch.resize(m_uintEntryCount);
    BuildAxisBounds();
}

void GridColorMapper::BuildAxisBounds() {
    const auto& points = m_pTree->GetPoints();
    m_nearBounds.resize(std::size_t{3} * CellsPerAxis * m_uintEntryCount);
    m_farBounds.resize(m_nearBounds.size());
    std::size_t out = 0;
    for (std::size_t axis = 1; axis <= 3; ++axis) {
        for (std::uint32_t cell = 0; cell < CellsPerAxis; ++cell) {
            const auto low = static_cast<std::int32_t>(cell * CellSize);
            const std::int32_t high = low + static_cast<std::int32_t>(CellSize) - 1;
            for (std::uint32_t i = 0; i < m_uintEntryCount; ++i, ++out) {
                const std::int32_t value = points[i][axis];
                const std::int32_t near = std::max({low - value, 0, value - high});
                const std::int32_t far = std::max(value - low, high - value);
                m_nearBounds[out] = ColorDistanceWeights[axis] * static_cast<std::uint32_t>(near * near);
                m_farBounds[out] = ColorDistanceWeights[axis] * static_cast<std::uint32_t>(far * far);
            }
        }
    }
}

/// Lists every entry that is not farther from the nearest corner of the cell than some entry is from its farthest: a
/// superset of the nearest entries of all colours in it, those that tie included.
void GridColorMapper::FillCell(Cell& cell, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    const std::size_t n = m_uintEntryCount;
    const std::size_t rows[3] = {red * n, (CellsPerAxis + green) * n, (2 * CellsPerAxis + blue) * n};
    std::uint32_t bound = std::numeric_limits<std::uint32_t>::max();
    for (std::size_t i = 0; i < n; ++i) {
        bound = std::min(bound, m_farBounds[rows[0] + i] + m_farBounds[rows[1] + i] + m_farBounds[rows[2] + i]);
        m_scratch[i] = m_nearBounds[rows[0] + i] + m_nearBounds[rows[1] + i] + m_nearBounds[rows[2] + i];
    }
    cell.First = static_cast<std::uint32_t>(m_candidates.size());
    const auto& points = m_pTree->GetPoints();
    for (std::size_t i = 0; i < n; ++i) {
        if (m_scratch[i] <= bound) {
            m_candidates.push_back({static_cast<std::int16_t>(points[i][1]), static_cast<std::int16_t>(points[i][2]),
                                    static_cast<std::int16_t>(points[i][3]), static_cast<std::uint16_t>(i)});
        }
    }
    cell.Count = static_cast<std::uint32_t>(m_candidates.size()) - cell.First;
}

std::uint32_t GridColorMapper::Find(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    RequireMap();
    const std::uint32_t r = red / CellSize;
    const std::uint32_t g = green / CellSize;
    const std::uint32_t b = blue / CellSize;
    Cell& cell = m_cells[((r << CellBits) + g) * CellsPerAxis + b];
    if (cell.Count == 0) {
        FillCell(cell, r, g, b);
    }
    const Candidate* const candidates = m_candidates.data() + cell.First;
    const std::uint32_t last = m_pTree->GetLastFound();
    std::uint32_t best = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t index = 0;
    bool unique = true;
    bool lastTies = false;
    for (std::uint32_t i = 0; i < cell.Count; ++i) {
        const Candidate& candidate = candidates[i];
        const std::int32_t dr = red - candidate.Red;
        const std::int32_t dg = green - candidate.Green;
        const std::int32_t db = blue - candidate.Blue;
        const auto distance = static_cast<std::uint32_t>(30 * dr * dr + 59 * dg * dg + 11 * db * db);
        if (distance < best) {
            best = distance;
            index = candidate.Index;
            unique = true;
            lastTies = candidate.Index == last;
        } else if (distance == best) {
            unique = false;
            lastTies = lastTies || candidate.Index == last;
        }
    }
    if (lastTies) {
        return last;
    }
    if (!unique) {
        return m_pTree->Find({alpha, red, green, blue});
    }
    m_pTree->SetLastFound(index);
    return index;
}

std::int32_t GridColorMapper::GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return static_cast<std::int32_t>(Find(255, red, green, blue));
}

void GridColorMapper::MapPixels(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const pixel = pPixels + 4 * i;
        pIndices[i] =
            static_cast<std::uint8_t>(std::min<std::uint32_t>(Find(pixel[3], pixel[2], pixel[1], pixel[0]), 255));
    }
}

} // namespace ImagingFramework
