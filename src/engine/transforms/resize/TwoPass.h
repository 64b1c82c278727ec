#pragma once

#include "Common/Numeric.h"
#include "transforms/resize/Resamplers.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// The source positions that each destination position of an axis reads: `Count` from `First` on. `First` never falls.
struct AxisWindows {
    std::vector<std::uint32_t> First;
    std::vector<std::uint32_t> Count;
};

/// The arithmetic of a two-pass filter for one thread. Rows pass through in blocks that begin at multiples of `BlockRows`;
/// columns count destination pixels. What a filtered block looks like is the kernel's own affair.
class ITwoPassKernel {
public:
    virtual ~ITwoPassKernel() = default;
    /// Source rows that make one block, a power of two.
    virtual std::uint32_t BlockRows() const = 0;
    /// Bytes of a filtered block for each column; columns are counted in whole `BlockColumns`.
    virtual std::uint64_t ColumnBytes() const = 0;
    /// Filters `count` source rows, all of a block or what the source has of its last one, along x into the columns from
    /// `firstColumn` up to and without `endColumn`.
    virtual void FilterRows(const std::uint8_t* const* sources, std::uint32_t count, std::uint32_t firstColumn,
                            std::uint32_t endColumn, std::uint8_t* block) = 0;
    /// Filters the window of destination row `y` down into one row of `columns` pixels. `blocks` begins with the block that
    /// holds the first row of the window.
    virtual void FilterColumns(const std::uint8_t* const* blocks, std::uint32_t y, std::uint8_t* destination,
                               std::uint32_t columns) = 0;

    /// Copies row `row` of a filtered block of `columns` columns to the same row of another.
    virtual void CopyRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t row, std::uint32_t columns) const = 0;

    static constexpr std::uint32_t BlockColumns = 16;
    /// Bytes that blocks lie on.
    static constexpr std::size_t BlockAlignment = 64;

    /// The first place for a block in memory of at least `BlockAlignment` bytes more.
    static std::uint8_t* Align(std::uint8_t* memory) {
        const std::size_t over = reinterpret_cast<std::uintptr_t>(memory) % BlockAlignment;
        return memory + (over != 0 ? BlockAlignment - over : 0);
    }

    /// Bytes of a filtered block.
    std::uint64_t BlockBytes(std::uint32_t columns) const {
        return CheckedProduct(ColumnBytes(), (std::uint64_t{columns} + BlockColumns - 1) / BlockColumns * BlockColumns);
    }
};

/// Runs a filter over rows, then over columns. Filtered blocks live in a ring just as high as the tallest window; where that
/// would leave the caches, the destination is made in strips of columns, so that no intermediate ever gets near the size of
/// a raster.
/// Progress is the source's height plus the output's.
void RunTwoPass(const ResizeJob& job, const AxisWindows& windowsY,
                const std::function<std::unique_ptr<ITwoPassKernel>()>& createKernel, bool mayRunParallel);

} // namespace ImagingFramework
