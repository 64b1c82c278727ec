#pragma once

#include "Common/KDTreeColorMapper.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Answers as `KDTreeColorMapper` does, in sequence and with the same ties, several times faster; for maps whose
/// entries all have one alpha.
///
/// The colour cube is cut into 32 x 32 x 32 cells. A cell lists, from its first use on, the entries that can be nearest
/// to any of its colours. A unique nearest entry is the answer; of several that tie the one found last stays the
/// answer, and when it is none of them the tree decides, whose order of visits does not depend on where it starts.
///
/// It shares the tree's memory of the answer before, so both may be asked in turn. About 0.6 MiB for 256 entries.
class GridColorMapper : public ColorMapper {
public:
    /// True for a map of entries of one alpha, up to 1024 of them.
    static bool IsApplicable(const ColorMap& map);

    /// `pTree` must be built over the map that `SetColorMap` gets.
    explicit GridColorMapper(std::shared_ptr<KDTreeColorMapper::Search> pTree) : m_pTree(std::move(pTree)) {}

    /// Fails with `ArgumentException` ("map") for a map that the grid cannot serve.
    void SetColorMap(const ColorMap& map) override;
    void Reset() noexcept override;
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    /// The indices of `count` pixels of `Format32bppArgb`, cut to 255, one byte each.
    void MapPixels(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices);
    /// One pixel. `alpha` matters in ties only as far as the tree is asked; all entries have the same one.
    std::uint32_t Find(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

private:
    static constexpr std::uint32_t CellBits = 5;
    static constexpr std::uint32_t CellsPerAxis = 1U << CellBits;
    static constexpr std::uint32_t CellSize = 256 / CellsPerAxis;

    struct Cell {
        std::uint32_t First = 0;
        std::uint32_t Count = 0; ///< 0 until the cell is filled
    };
    struct Candidate {
        std::int16_t Red;
        std::int16_t Green;
        std::int16_t Blue;
        std::uint16_t Index;
    };

    void BuildAxisBounds();
    void FillCell(Cell& cell, std::uint32_t red, std::uint32_t green, std::uint32_t blue);

    std::shared_ptr<KDTreeColorMapper::Search> m_pTree;
    std::uint32_t m_uintEntryCount = 0;
    /// By axis (red, green, blue), cell and entry: the smallest and the largest weighted square distance along the
    /// axis.
    std::vector<std::uint32_t> m_nearBounds;
    std::vector<std::uint32_t> m_farBounds;
    std::vector<std::uint32_t> m_scratch;
    std::vector<Cell> m_cells;
    std::vector<Candidate> m_candidates;
};

} // namespace ImagingFramework
