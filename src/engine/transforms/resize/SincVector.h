#pragma once

#include "transforms/resize/TapAxis.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Lanes of single precision for 8-bit samples.
///
/// Sums in single precision differ from the canonical double ones by less than a proven bound. For n taps with weights of
/// absolute sum W over samples up to M, added in two chains that are joined at the end, no term passes through more than
/// k = n / 2 + 3 roundings (weight, product unless fused, its chain, the joining), so the error is below
/// k u W M / (1 - k u) with u = 2^-24; the canonical sum's own error is smaller by 2^-29. So a
/// sum that is farther than that from every rounding boundary rounds as the canonical one does, and the others, about one
/// in a thousand, are computed again in the canonical way.
struct SincFloatAxis {
    explicit SincFloatAxis(const TapAxis<double>& axis);

    const TapAxis<double>& Axis;
    std::vector<float> Weights; ///< as in `Axis`
    /// Bound of the error of one sum of 8-bit samples.
    double SumError = 0.0;
    /// Colour quotients err by less than this, divided by the weight sum.
    double QuotientError = 0.0;
    /// False where the bound is too wide to be of use.
    bool IsUsable() const { return SumError < 0.05; }
};

/// Makes the canonical pixel where lanes cannot decide: `row` counts within the block of rows, `pixel` within the row.
struct SincRepair {
    void (*Repair)(const void* context, std::uint32_t row, std::uint32_t pixel, std::uint8_t* result);
    const void* Context;
};

/// Memory of a thread.
struct SincScratch {
    std::vector<float> Tile;
    std::vector<std::uint8_t> Output;
};

/// The first pass for up to 16 rows; `Sources` and `Destinations` have 16 pointers each, the unused ones repeat the first.
struct SincRowsTask {
    const SincFloatAxis& Axis;
    const std::uint8_t* const* Sources;
    std::uint8_t* const* Destinations;
    std::uint32_t Count;
    std::uint32_t SourceWidth;
    std::uint32_t FirstColumn;
    std::uint32_t EndColumn;
    SincRepair Repair;
    SincScratch& Scratch;
};

/// The second pass for one row.
struct SincColumnsTask {
    const SincFloatAxis& Axis;
    const std::uint8_t* const* Rows;
    std::uint32_t Position;
    std::uint8_t* Destination;
    std::uint32_t Pixels;
    SincRepair Repair;
};

/// Rows that one task takes.
constexpr std::uint32_t SincBlockRows = 16;

/// 1 to 5 samples, the last one alpha or not. False, with nothing done, where the processor has no vectors for it.
bool FilterSincRows(const SincRowsTask& task, int samples, bool alpha);
/// The same; with alpha, layouts of 2 and 4 samples alone.
bool FilterSincColumns(const SincColumnsTask& task, int samples, bool alpha);

} // namespace ImagingFramework
