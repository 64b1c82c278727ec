#pragma once

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// A rectangle of pixels whose columns become rows: pixel `column` of row `row` of the source goes to pixel `row` of row
/// `column` of the destination. Strides may be negative.
struct TransposeTile {
    const std::uint8_t* Source;
    std::ptrdiff_t SourceStride;
    std::uint8_t* Destination;
    std::ptrdiff_t DestinationStride;
    std::uint32_t Columns;
    std::uint32_t Rows;
    std::size_t Readable; ///< bytes of each row of the source, from the first column on
};

/// Transposes pixels of `size` bytes; square blocks of them in vectors where the processor has those.
void TransposePixels(const TransposeTile& tile, std::size_t size);
/// The same pixel by pixel. Fails with `UnsupportedPixelFormatException` for a size that no format has.
void TransposePixelsPlain(const TransposeTile& tile, std::size_t size);

/// The rest of a tile, from a row or a column on.
TransposeTile SkipRows(const TransposeTile& tile, std::uint32_t rows, std::size_t size);
TransposeTile SkipColumns(const TransposeTile& tile, std::uint32_t columns, std::size_t size);

} // namespace ImagingFramework
