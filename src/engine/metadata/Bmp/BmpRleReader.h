#pragma once

#include "metadata/Streams/AbstractReader.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Unpacks run-length encoded lines of 4-bit (RLE4) or 8-bit (RLE8) indices, in the order of the file.
///
/// A delta code with a vertical part ends the line in progress; as many empty lines as it says follow, and then its
/// horizontal part moves the beginning of the next line.
class BmpRleReader {
public:
    /// Reads ahead from the reader's position. `bitCount` is 4 or 8.
    BmpRleReader(AbstractReader& reader, std::uint32_t bitCount, std::uint32_t width);

    /// The end-of-bitmap code was met: there are no more lines.
    bool IsEnd() const noexcept { return m_bEnd; }
    /// Unpacks one line, which holds zeros, and leaves pixels that no code sets. What lies beyond the width is cut.
    /// Fails with `OutOfRangeException` at the end of the data and `MediaCorruptedException` for a move before the
    /// line.
    void ReadLine(std::uint8_t* pLine);

private:
    std::uint8_t NextByte();
    void ReadBlock();
    /// True when the code ends the line.
    bool ReadEscape(std::uint8_t* pLine);
    bool ReadDelta();
    void MoveRight(std::int32_t pixels);
    void PutRun(std::uint8_t* pLine, std::uint32_t count, std::uint8_t value);
    void PutAbsolute(std::uint8_t* pLine, std::uint32_t count);
    void PutNibble(std::uint8_t* pLine, std::uint32_t x, std::uint8_t value) const noexcept;

    AbstractReader& m_reader;
    std::uint32_t m_uintBitCount;
    std::uint32_t m_uintWidth;
    std::uint32_t m_uintX = 0;
    std::int32_t m_intPendingHorizontalSkip = 0;
    std::int32_t m_intPendingVerticalSkip = 0;
    bool m_bEnd = false;
    std::array<std::uint8_t, 8192> m_block;
    std::size_t m_blockUsed = 0;
    std::size_t m_blockSize = 0;
};

} // namespace ImagingFramework
