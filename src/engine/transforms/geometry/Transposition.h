#pragma once

#include "Common/BitmapData.h"

#include <cstdint>

namespace ImagingFramework {

/// Makes the rows of a destination out of the columns of a source of the same format: row `y` is column `y`, or column
/// `y` from the last one when columns are reversed, from its top down, or from its bottom up when rows are reversed.
class Transposition {
public:
    Transposition(const BitmapData& source, BitmapData& destination, bool reverseColumns, bool reverseRows)
        : m_source(source), m_destination(destination), m_reverseColumns(reverseColumns), m_reverseRows(reverseRows) {}

    /// The end of the band of destination rows that begins at `first`: of rows whose columns share cache lines.
    std::uint32_t NextBand(std::uint32_t first) const;
    /// Fills the rows of a band. Fails with `UnsupportedPixelFormatException` for a pixel size that no format has.
    void FillRows(std::uint32_t first, std::uint32_t end) const;

private:
    void FillPixelRows(std::uint32_t first, std::uint32_t end, std::size_t size) const;
    template <std::uint32_t Bits> void FillIndexRows(std::uint32_t first, std::uint32_t end) const;
    const std::uint8_t* SourceRow(std::uint32_t x) const {
        return m_source.GetScanlineRef(m_reverseRows ? m_source.GetHeight() - 1 - x : x);
    }
    std::uint32_t SourceColumn(std::uint32_t y) const {
        return m_reverseColumns ? m_source.GetWidth() - 1 - y : y;
    }

    const BitmapData& m_source;
    BitmapData& m_destination;
    bool m_reverseColumns;
    bool m_reverseRows;
};

} // namespace ImagingFramework
