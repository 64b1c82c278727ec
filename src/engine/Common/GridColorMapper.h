#pragma once

#include "Common/KDTreeColorMapper.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// Answers as `KDTreeColorMapper` does, in sequence and with the same ties, many times faster.
///
/// The colours are cut into cells, finest in green, which weighs most. A cell lists, from its first use on, the entries
/// that can be nearest to any of its colours, which are rarely more than four. A unique nearest entry is the answer; of
/// several that tie the one found last stays the answer, and when it is none of them the tree decides, whose order of
/// visits does not depend on where it starts. Cells with very many candidates are left to the tree as well. Once the
/// lists have grown large, as they do with noise, neighbouring cells share them.
///
/// It shares the tree's memory of the answer before, so both may be asked in turn. Takes 0.5 to 2 MiB for most
/// pictures, 2 MiB more where the entries differ in alpha, and 12 MiB at most.
class GridColorMapper : public ColorMapper {
public:
    static constexpr std::size_t BlockSize = 4;

    /// Candidates side by side. With weights w, the square distance of a colour q from an entry p is
    /// w q q + (w p p - 2 w p q), of which the first term is the same for all entries. A block holds -2 w p, as pairs of
    /// words, and 256 w p p + index: the sum of products, times 256, plus the constant orders entries by distance first
    /// and brings the index along. It lies within 120 * 255^2 * 256, which is below 2^31, on either side of zero.
    struct alignas(64) Block {
        std::array<std::int32_t, BlockSize> BlueGreen{};
        std::array<std::int32_t, BlockSize> RedAlpha{};
        std::array<std::int32_t, BlockSize> Constants{}; ///< above all sums where there is no entry
        std::array<std::uint16_t, BlockSize> Entries{};
    };

    /// What the vector loops read. Good until `Find` is called.
    struct View {
        const std::uint32_t* Cells; ///< first block << 8 | number of blocks; without blocks, `Find` must be asked
        const Block* Blocks;
        const std::int32_t* Entries; ///< blue, green, red, alpha of each entry
        std::uint32_t AlphaMask;     ///< for `CellIndex`
    };

    /// True for a map of up to 1024 entries.
    static bool IsApplicable(const ColorMap& map);

    /// `pTree` must be built over the map that `SetColorMap` gets.
    explicit GridColorMapper(std::shared_ptr<KDTreeColorMapper::Search> pTree) : m_pTree(std::move(pTree)) {}

    /// Fails with `ArgumentException` ("map") for a map that the grid cannot serve.
    void SetColorMap(const ColorMap& map) override;
    void Reset() noexcept override;
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    /// The indices of `count` pixels of `Format32bppArgb`, cut to 255, one byte each.
    void MapPixels(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices);
    /// One pixel of `Format32bppArgb`, alpha in the top byte.
    std::uint32_t Find(std::uint32_t pixel);

    /// Whether every index fits the constants of the blocks, so that the vector loops can work.
    bool HasByteIndices() const noexcept { return m_representatives.size() <= 256; }
    View GetView() const noexcept { return {m_cells.data(), m_blocks.data(), m_entries.data(), m_uintAlphaMask}; }
    std::uint32_t GetLastFound() const noexcept { return m_pTree->GetLastFound(); }
    void SetLastFound(std::uint32_t index) noexcept { m_pTree->SetLastFound(index); }

    /// The cell of a pixel. `alphaMask` is 0 where all entries have one alpha, which then does not matter, else 15.
    static constexpr std::uint32_t CellIndex(std::uint32_t pixel, std::uint32_t alphaMask) {
        return ((pixel >> 28 & alphaMask) << 15) | (pixel >> 19 & 31) << 10 | (pixel >> 10 & 63) << 4 |
               (pixel >> 4 & 15);
    }

private:
    /// By axis: alpha, red, green, blue, as in the points of the tree.
    static constexpr std::array<std::uint32_t, 4> CellBits = {4, 5, 6, 4};

    struct Range {
        std::int32_t Low;
        std::int32_t High;
    };
    using Box = std::array<Range, 4>;

    struct Candidate {
        std::uint32_t Distance; ///< from the middle of the cell
        std::uint16_t Entry;
    };

    /// The smallest and the largest weighted square distance along an axis, by cell and unique entry.
    struct AxisBounds {
        std::vector<std::uint32_t> Near;
        std::vector<std::uint32_t> Far;
    };

    void FindDuplicates();
    bool IsCut(std::size_t axis) const;
    Range CellRange(std::size_t axis, std::uint32_t coordinate) const;
    std::uint32_t CellCount(std::size_t axis) const;
    void SetLevel(std::uint32_t level);
    void BuildAxisBounds();
    std::uint32_t FillCell(std::uint32_t cell);
    void StoreCells(const std::array<std::uint32_t, 4>& coordinates, std::uint32_t word);
    void ListCandidates(const std::array<std::uint32_t, 4>& coordinates, const Box& box);
    void DropBeaten(const Box& box);
    bool IsBeaten(std::uint32_t entry, std::uint32_t by, const Box& box) const;
    std::uint32_t WriteBlocks();
    Block MakeBlock(const std::uint16_t* entries, std::size_t count) const;

    std::shared_ptr<KDTreeColorMapper::Search> m_pTree;
    std::uint32_t m_uintAlphaMask = 0;
    std::uint32_t m_uintLevel = 0; ///< a list is made for 2^level cells on each axis
    std::vector<std::uint16_t> m_representatives; ///< by entry: the first one of its colour
    std::vector<std::uint16_t> m_uniques;         ///< the entries that are the first ones of their colours
    std::vector<std::uint8_t> m_hasDuplicates;    ///< by entry
    std::vector<std::int32_t> m_entries;
    std::array<AxisBounds, 4> m_bounds;
    std::vector<std::uint32_t> m_nearest; ///< by unique entry, while a cell is filled
    std::vector<Candidate> m_candidates;  ///< of the cell that is being filled
    std::vector<std::uint32_t> m_cells;
    std::vector<Block> m_blocks;
};

} // namespace ImagingFramework
