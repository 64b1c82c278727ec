#pragma once

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

    static constexpr std::uint32_t BlockColumns = 16;
};

/// Runs a filter over rows, then over columns. Filtered blocks live in a ring just as high as the tallest window; where that
/// would leave the caches, the destination is made in strips of columns, so that no intermediate ever gets near the size of
/// a raster.
/// Progress is the source's height plus the output's.
void RunTwoPass(const ResizeJob& job, const AxisWindows& windowsY,
                const std::function<std::unique_ptr<ITwoPassKernel>()>& createKernel, bool mayRunParallel);

} // namespace ImagingFramework
