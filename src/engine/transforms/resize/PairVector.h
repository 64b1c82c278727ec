#pragma once

#include "transforms/resize/PairAxis.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// What both passes of a two-pass filter in lanes need to know.
struct PairFormat {
    int Samples; ///< 1 to 5 per pixel, the last one alpha or not
    PairSamples Kind;
    bool Sinc; ///< the sinc filter; a contributor filter otherwise
};

/// Makes the canonical pixel where lanes cannot decide: of row `row` of the block and column `column` of the strip in the
/// first pass, of column `column` in the second one. Contributor filters never ask.
struct PairRepair {
    void (*Repair)(const void* context, std::uint32_t row, std::uint32_t column, std::uint8_t* pixel);
    const void* Context;
};

/// Memory of a thread.
struct PairScratch {
    std::vector<std::int16_t> Tile;
    std::vector<std::uint8_t> Group;
};

/// Rows of a block. It holds, for each pair of successive rows and each channel, `BlockColumns` pairs of words as they are
/// named by `PairSamples`.
constexpr std::uint32_t PairBlockRows = 16;

/// The first pass for one block. `Sources` has 16 pointers; those beyond the source repeat another.
struct PairRowsTask {
    PairFormat Format;
    const PairAxis& Axis;
    const std::uint8_t* const* Sources;
    std::size_t RowBytes; ///< of a source row
    std::uint32_t FirstColumn;
    std::uint32_t EndColumn;
    std::uint8_t* Block;
    std::size_t BlockColumns; ///< a multiple of 16
    PairRepair Repair;
    PairScratch& Scratch;
};

/// The second pass for one row.
struct PairColumnsTask {
    PairFormat Format;
    const PairAxis& Axis;
    std::uint32_t Position;
    const std::uint8_t* const* Blocks; ///< from the one that holds the first pair on
    std::size_t BlockColumns;
    std::uint8_t* Destination;
    std::uint32_t Columns;
    PairRepair Repair;
};

/// False where the processor has no vectors for the two functions below.
bool HasPairLanes();
void FilterPairRows(const PairRowsTask& task);
void FilterPairColumns(const PairColumnsTask& task);

} // namespace ImagingFramework
