#include "transforms/geometry/Transposition.h"

#include "transforms/geometry/TransposeVector.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ImagingFramework {

namespace {

/// Columns of a band, and rows of the source of a tile: a tile of both rasters fits the first cache.
constexpr std::uint32_t BandColumns = 64;
constexpr std::uint32_t TileRows = 128;

/// A square of pixels in bytes that hold `8 / Bits` of them each: pixel `i` of byte `j` becomes pixel `j` of byte `i`.
template <std::uint32_t Bits>
std::array<std::uint8_t, 8 / Bits> TransposeBlock(const std::array<std::uint8_t, 8 / Bits>& block);

template <> std::array<std::uint8_t, 2> TransposeBlock<4>(const std::array<std::uint8_t, 2>& block) {
    return {static_cast<std::uint8_t>((block[0] & 0xF0) | (block[1] >> 4)),
            static_cast<std::uint8_t>((block[0] << 4) | (block[1] & 0x0F))};
}

/// 8 by 8 bits in a word, by exchanges of ever larger squares.
template <> std::array<std::uint8_t, 8> TransposeBlock<1>(const std::array<std::uint8_t, 8>& block) {
    std::uint64_t bits = 0;
    for (const std::uint8_t byte : block) {
        bits = (bits << 8) | byte;
    }
    const auto exchange = [&bits](std::uint64_t mask, int distance) {
        const std::uint64_t change = (bits ^ (bits >> distance)) & mask;
        bits ^= change ^ (change << distance);
    };
    exchange(0x00AA00AA00AA00AAU, 7);
    exchange(0x0000CCCC0000CCCCU, 14);
    exchange(0x00000000F0F0F0F0U, 28);
    std::array<std::uint8_t, 8> result{};
    for (std::size_t i = 0; i < 8; ++i) {
        result[i] = static_cast<std::uint8_t>(bits >> (56 - 8 * i));
    }
    return result;
}

} // namespace

std::uint32_t Transposition::NextBand(std::uint32_t first) const {
    // Bands begin and end where those of the source's columns do, so that packed indices come in whole bytes.
    const std::uint32_t column = SourceColumn(first);
    const std::uint32_t length = m_reverseColumns ? column % BandColumns + 1 : BandColumns;
    return first + std::min(length, m_source.GetWidth() - first);
}

void Transposition::FillRows(std::uint32_t first, std::uint32_t end) const {
    switch (const std::uint32_t bits = PixelFormatSize(m_source.GetPixelFormat()); bits) {
    case 1:
        return FillIndexRows<1>(first, end);
    case 4:
        return FillIndexRows<4>(first, end);
    default:
        return FillPixelRows(first, end, bits / 8);
    }
}

void Transposition::FillPixelRows(std::uint32_t first, std::uint32_t end, std::size_t size) const {
    const std::uint32_t firstColumn = std::min(SourceColumn(first), SourceColumn(end - 1));
    const std::ptrdiff_t sourceStride = m_source.GetStride();
    const std::ptrdiff_t rowStride = m_destination.GetStride();
    const std::uint32_t width = m_destination.GetWidth();
    for (std::uint32_t left = 0; left < width;) {
        const std::uint32_t rows = std::min(TileRows, width - left);
        TransposePixels({SourceRow(left) + firstColumn * size, m_reverseRows ? -sourceStride : sourceStride,
                         // Which row a column becomes is the same question as which column a row is.
                         m_destination.GetScanlineRef(SourceColumn(firstColumn)) + left * size,
                         m_reverseColumns ? -rowStride : rowStride, end - first, rows,
                         (m_source.GetWidth() - firstColumn) * size},
                        size);
        left += rows;
    }
}

template <std::uint32_t Bits> void Transposition::FillIndexRows(std::uint32_t first, std::uint32_t end) const {
    constexpr std::uint32_t perByte = 8 / Bits;
    const std::uint32_t width = m_destination.GetWidth();
    const std::uint32_t firstColumn = std::min(SourceColumn(first), SourceColumn(end - 1));
    const std::uint32_t endColumn = firstColumn + (end - first);
    for (std::uint32_t left = 0; left < width; left += perByte) {
        std::array<const std::uint8_t*, perByte> rows;
        for (std::uint32_t i = 0; i < perByte; ++i) {
            // What lies below the last row goes behind the last pixel and is cut off there.
            rows[i] = SourceRow(std::min(left + i, width - 1));
        }
        std::uint8_t* const destination = m_destination.GetPixelsRef() + left / perByte;
        for (std::uint32_t column = firstColumn; column < endColumn; column += perByte) {
            std::array<std::uint8_t, perByte> block;
            for (std::uint32_t i = 0; i < perByte; ++i) {
                block[i] = rows[i][column / perByte];
            }
            block = TransposeBlock<Bits>(block);
            const std::uint32_t columns = std::min(perByte, endColumn - column);
            const auto mask = static_cast<std::uint8_t>(width - left < perByte ? 0xFF00U >> ((width - left) * Bits) : 0xFFU);
            for (std::uint32_t i = 0; i < columns; ++i) {
                destination[std::size_t{SourceColumn(column + i)} * m_destination.GetStride()] = block[i] & mask;
            }
        }
    }
}

} // namespace ImagingFramework
