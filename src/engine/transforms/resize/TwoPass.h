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

/// The arithmetic of a two-pass filter for one thread. Rows are those of whole rasters; columns count destination pixels.
class ITwoPassKernel {
public:
    virtual ~ITwoPassKernel() = default;
    /// Filters `count` rows (at most `BlockRows`) along x into the columns from `firstColumn` up to and without `endColumn`;
    /// column `firstColumn` goes to the start of a destination row.
    virtual void FilterRows(const std::uint8_t* const* sources, std::uint8_t* const* destinations, std::uint32_t count,
                            std::uint32_t firstColumn, std::uint32_t endColumn) = 0;
    /// Filters the window of destination row `y` down into one row of `pixels` pixels.
    virtual void FilterColumns(const std::uint8_t* const* rows, std::uint32_t y, std::uint8_t* destination,
                               std::uint32_t pixels) = 0;
    /// Rows that `FilterRows` takes best at once.
    virtual std::uint32_t BlockRows() const { return 1; }
};

/// Runs a filter over rows, then over columns. Filtered rows live in a ring just as high as the tallest window; where that
/// would be large, the destination is made in strips of columns, so that no intermediate ever gets near the size of a raster.
/// Progress is the source's height plus the output's.
void RunTwoPass(const ResizeJob& job, const AxisWindows& windowsY,
                const std::function<std::unique_ptr<ITwoPassKernel>()>& createKernel, bool mayRunParallel);

} // namespace ImagingFramework
