#include "Common/GridColorMapper.h"

#include "Common/ColorMap.h"
#include "Common/GridVector.h"
#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <limits>
#include <span>
#include <unordered_map>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t MaximumGridEntries = 1024;

/// A longer list is no faster than the tree, one by one or with vectors.
constexpr std::size_t MaximumCandidates = 64;
constexpr std::size_t MaximumVectorCandidates = 256;
/// All lists together, in blocks. Cells that are met when it is reached are left to the tree.
constexpr std::size_t MaximumBlocks = std::size_t{1} << 17;
/// When the lists have grown so far, two cells on each axis get one list.
constexpr std::size_t BlocksBeforePairs = MaximumBlocks / 8;

constexpr std::uint32_t CellUnknown = 0;
constexpr std::uint32_t CellOfTree = 1 << 8; ///< no blocks either
constexpr std::uint16_t NoEntry = 0xFFFF;

/// So many of the entries next to the middle of a cell are tried on the others.
constexpr std::size_t Contenders = 8;

constexpr std::uint32_t Square(std::int32_t value) { return static_cast<std::uint32_t>(value * value); }

/// Two words side by side, the first one low.
constexpr std::int32_t PairOf(std::int32_t first, std::int32_t second) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(first) & 0xFFFFU) |
                                     static_cast<std::uint32_t>(second) << 16);
}

} // namespace

bool GridColorMapper::IsApplicable(const ColorMap& map) {
    return !map.IsEmpty() && map.GetEntryCount() <= MaximumGridEntries;
}

void GridColorMapper::Reset() noexcept {
    ColorMapper::Reset();
    m_cells.clear();
    m_blocks.clear();
}

void GridColorMapper::SetColorMap(const ColorMap& map) {
    if (!IsApplicable(map)) {
        throw ArgumentException("map");
    }
    ColorMapper::SetColorMap(map);
    const auto& points = m_pTree->GetPoints();
    const bool hasOneAlpha = std::ranges::all_of(points, [&](const auto& point) { return point[0] == points[0][0]; });
    m_uintAlphaMask = hasOneAlpha ? 0 : (1U << CellBits[0]) - 1;
    m_entries.clear();
    for (const auto& point : points) {
        m_entries.insert(m_entries.end(), {point[3], point[2], point[1], point[0]});
    }
    FindDuplicates();
    m_blocks.clear();
    SetLevel(0);
    m_cells.assign(std::size_t{CellCount(0)} << (CellBits[1] + CellBits[2] + CellBits[3]), CellUnknown);
}

void GridColorMapper::FindDuplicates() {
    const auto& points = m_pTree->GetPoints();
    m_representatives.resize(points.size());
    m_hasDuplicates.assign(points.size(), 0);
    m_uniques.clear();
    std::unordered_map<std::uint32_t, std::uint16_t> firsts;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& p = points[i];
        const auto color = static_cast<std::uint32_t>(p[0]) << 24 | static_cast<std::uint32_t>(p[1]) << 16 |
                           static_cast<std::uint32_t>(p[2]) << 8 | static_cast<std::uint32_t>(p[3]);
        const auto [first, isNew] = firsts.emplace(color, static_cast<std::uint16_t>(i));
        m_representatives[i] = first->second;
        if (isNew) {
            m_uniques.push_back(first->second);
        } else {
            m_hasDuplicates[first->second] = 1;
        }
    }
}

// --- Cells

bool GridColorMapper::IsCut(std::size_t axis) const { return axis != 0 || m_uintAlphaMask != 0; }

std::uint32_t GridColorMapper::CellCount(std::size_t axis) const {
    return IsCut(axis) ? 1U << (CellBits[axis] - m_uintLevel) : 1U;
}

/// The values of a cell along an axis. Where all entries have one alpha, it stands for all alphas: they are equally far
/// from every entry.
GridColorMapper::Range GridColorMapper::CellRange(std::size_t axis, std::uint32_t coordinate) const {
    if (!IsCut(axis)) {
        const std::int32_t alpha = m_pTree->GetPoints()[0][0];
        return {alpha, alpha};
    }
    const std::uint32_t bits = 8 - CellBits[axis] + m_uintLevel;
    const auto low = static_cast<std::int32_t>(coordinate << bits);
    return {low, low + (1 << bits) - 1};
}

/// Lists made from now on are for 2^level cells on each axis.
void GridColorMapper::SetLevel(std::uint32_t level) {
    m_uintLevel = level;
    BuildAxisBounds();
}

void GridColorMapper::BuildAxisBounds() {
    const auto& points = m_pTree->GetPoints();
    for (std::size_t axis = 0; axis < 4; ++axis) {
        AxisBounds& bounds = m_bounds[axis];
        bounds.Near.clear();
        bounds.Far.clear();
        for (std::uint32_t cell = 0; cell < CellCount(axis); ++cell) {
            const Range range = CellRange(axis, cell);
            for (const std::uint16_t entry : m_uniques) {
                const std::int32_t value = points[entry][axis];
                const std::int32_t near = std::max({range.Low - value, 0, value - range.High});
                const std::int32_t far = std::max(value - range.Low, range.High - value);
                bounds.Near.push_back(ColorDistanceWeights[axis] * Square(near));
                bounds.Far.push_back(ColorDistanceWeights[axis] * Square(far));
            }
        }
    }
    m_nearest.resize(m_uniques.size());
}

/// Lists every entry that is not farther from the nearest point of the cell than some entry is from its farthest: a
/// superset of the nearest entries of all colours in it, those that tie included; those next to the middle first.
void GridColorMapper::ListCandidates(const std::array<std::uint32_t, 4>& coordinates, const Box& box) {
    const std::size_t n = m_uniques.size();
    const std::uint32_t* near[4];
    const std::uint32_t* far[4];
    for (std::size_t axis = 0; axis < 4; ++axis) {
        near[axis] = m_bounds[axis].Near.data() + coordinates[axis] * n;
        far[axis] = m_bounds[axis].Far.data() + coordinates[axis] * n;
    }
    std::uint32_t bound = std::numeric_limits<std::uint32_t>::max();
    for (std::size_t i = 0; i < n; ++i) {
        bound = std::min(bound, far[0][i] + far[1][i] + far[2][i] + far[3][i]);
        m_nearest[i] = near[0][i] + near[1][i] + near[2][i] + near[3][i];
    }
    KDTreeColorMapper::Search::Point middle;
    for (std::size_t axis = 0; axis < 4; ++axis) {
        middle[axis] = (box[axis].Low + box[axis].High) / 2;
    }
    m_candidates.clear();
    for (std::size_t i = 0; i < n; ++i) {
        if (m_nearest[i] <= bound) {
            m_candidates.push_back({m_pTree->Distance(middle, m_uniques[i]), m_uniques[i]});
        }
    }
    std::ranges::sort(m_candidates, {}, &Candidate::Distance);
}

/// Whether every colour of the box is farther from `entry` than from `by`. The difference of both distances is linear
/// in the colour, so that its largest value lies in a corner.
bool GridColorMapper::IsBeaten(std::uint32_t entry, std::uint32_t by, const Box& box) const {
    const auto& loser = m_pTree->GetPoints()[entry];
    const auto& winner = m_pTree->GetPoints()[by];
    std::int32_t largest = 0;
    for (std::size_t axis = 0; axis < 4; ++axis) {
        const std::int32_t step = winner[axis] - loser[axis];
        const std::int32_t worst = step > 0 ? box[axis].Low : box[axis].High;
        largest += static_cast<std::int32_t>(ColorDistanceWeights[axis]) * step *
                   (winner[axis] + loser[axis] - 2 * worst);
    }
    return largest < 0;
}

/// Takes entries off the list that cannot be nearest anywhere in the box, not even in a tie.
void GridColorMapper::DropBeaten(const Box& box) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_candidates.size(); ++i) {
        const Candidate candidate = m_candidates[i];
        const auto end = m_candidates.begin() + static_cast<std::ptrdiff_t>(std::min(kept, Contenders));
        const bool isBeaten = std::any_of(m_candidates.begin(), end, [&](const Candidate& contender) {
            return IsBeaten(candidate.Entry, contender.Entry, box);
        });
        if (!isBeaten) {
            m_candidates[kept++] = candidate;
        }
    }
    m_candidates.resize(kept);
}

std::uint32_t GridColorMapper::FillCell(std::uint32_t cell) {
    if (m_uintLevel == 0 && m_blocks.size() >= BlocksBeforePairs) {
        SetLevel(1);
    }
    std::array<std::uint32_t, 4> coordinates;
    Box box;
    std::uint32_t rest = cell;
    for (std::size_t axis = 4; axis-- > 0;) {
        coordinates[axis] = (rest & ((1U << CellBits[axis]) - 1)) >> m_uintLevel;
        rest >>= CellBits[axis];
        box[axis] = CellRange(axis, coordinates[axis]);
    }
    ListCandidates(coordinates, box);
    DropBeaten(box);
    StoreCells(coordinates, WriteBlocks());
    return m_cells[cell];
}

/// Gives the word to all cells of the box that have none yet.
void GridColorMapper::StoreCells(const std::array<std::uint32_t, 4>& coordinates, std::uint32_t word) {
    const std::uint32_t mask = (1U << m_uintLevel) - 1;
    const std::uint32_t count = 1U << (IsCut(0) ? 4 : 3) * m_uintLevel;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t cell = 0;
        for (std::uint32_t axis = 0; axis < 4; ++axis) {
            const std::uint32_t inner = i >> (3 - axis) * m_uintLevel & mask;
            cell = cell << CellBits[axis] | coordinates[axis] << m_uintLevel | inner;
        }
        if (m_cells[cell] == CellUnknown) {
            m_cells[cell] = word;
        }
    }
}

/// Stores the list and gives the word of its cell. An entry with duplicates stands in it twice, so that every search
/// that ends with it finds a tie.
std::uint32_t GridColorMapper::WriteBlocks() {
    const std::size_t maximum = HasByteIndices() ? MaximumVectorCandidates : MaximumCandidates;
    std::uint16_t entries[MaximumVectorCandidates];
    std::size_t count = 0;
    for (const Candidate& candidate : m_candidates) {
        const std::size_t times = m_hasDuplicates[candidate.Entry] + std::size_t{1};
        if (count + times > maximum) {
            return CellOfTree;
        }
        std::fill_n(entries + count, times, candidate.Entry);
        count += times;
    }
    const std::size_t first = m_blocks.size();
    const std::size_t blockCount = (count + BlockSize - 1) / BlockSize;
    if (first + blockCount > MaximumBlocks) {
        return CellOfTree;
    }
    for (std::size_t i = 0; i < count; i += BlockSize) {
        m_blocks.push_back(MakeBlock(entries + i, std::min(BlockSize, count - i)));
    }
    return static_cast<std::uint32_t>(first << 8 | blockCount);
}

GridColorMapper::Block GridColorMapper::MakeBlock(const std::uint16_t* entries, std::size_t count) const {
    Block block;
    block.Constants.fill(std::numeric_limits<std::int32_t>::max());
    block.Entries.fill(NoEntry);
    for (std::size_t i = 0; i < count; ++i) {
        const auto& point = m_pTree->GetPoints()[entries[i]];
        std::int32_t factors[4];
        std::int32_t constant = 0;
        for (std::size_t axis = 0; axis < 4; ++axis) {
            const auto weight = static_cast<std::int32_t>(ColorDistanceWeights[axis]);
            factors[axis] = -2 * weight * point[axis];
            constant += weight * point[axis] * point[axis];
        }
        block.BlueGreen[i] = PairOf(factors[3], factors[2]);
        block.RedAlpha[i] = PairOf(factors[1], factors[0]);
        block.Constants[i] = constant * 256 + (entries[i] & 255);
        block.Entries[i] = entries[i];
    }
    return block;
}

// --- Searches

std::uint32_t GridColorMapper::Find(std::uint32_t pixel) {
    RequireMap();
    const std::uint32_t index = CellIndex(pixel, m_uintAlphaMask);
    std::uint32_t cell = m_cells[index];
    if (cell == CellUnknown) {
        cell = FillCell(index);
    }
    const KDTreeColorMapper::Search::Point query = {
        static_cast<std::int32_t>(pixel >> 24), static_cast<std::int32_t>(pixel >> 16 & 255),
        static_cast<std::int32_t>(pixel >> 8 & 255), static_cast<std::int32_t>(pixel & 255)};
    if (cell == CellOfTree) {
        return m_pTree->Find(query);
    }
    const std::uint32_t lastOfColor = m_representatives[m_pTree->GetLastFound()];
    std::uint32_t best = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t found = 0;
    bool isUnique = true;
    bool lastTies = false;
    for (const Block& block : std::span(m_blocks).subspan(cell >> 8, cell & 255)) {
        for (std::size_t i = 0; i < BlockSize && block.Entries[i] != NoEntry; ++i) {
            const std::uint32_t distance = m_pTree->Distance(query, block.Entries[i]);
            if (distance > best) {
                continue;
            }
            isUnique = distance < best;
            lastTies = (lastTies && !isUnique) || block.Entries[i] == lastOfColor;
            found = block.Entries[i];
            best = distance;
        }
    }
    if (lastTies) {
        return m_pTree->GetLastFound();
    }
    if (!isUnique) {
        return m_pTree->Find(query);
    }
    m_pTree->SetLastFound(found);
    return found;
}

std::int32_t GridColorMapper::GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return static_cast<std::int32_t>(
        Find(0xFF000000U | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | std::uint32_t{blue}));
}

void GridColorMapper::MapPixels(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices) {
    RequireMap();
    if (HasByteIndices() && GridVector::MapPixels(*this, pPixels, count, pIndices)) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const p = pPixels + 4 * i;
        const std::uint32_t pixel = p[0] | std::uint32_t{p[1]} << 8 | std::uint32_t{p[2]} << 16 | std::uint32_t{p[3]} << 24;
        pIndices[i] = static_cast<std::uint8_t>(std::min<std::uint32_t>(Find(pixel), 255));
    }
}

} // namespace ImagingFramework
