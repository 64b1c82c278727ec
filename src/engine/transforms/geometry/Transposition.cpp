#include "transforms/geometry/Transposition.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace ImagingFramework {

namespace {

/// Columns of a band, and rows of the source of a tile: a tile of both rasters fits the first cache.
constexpr std::uint32_t BandColumns = 64;
constexpr std::uint32_t TileRows = 64;

/// A block of bytes, each holding `8 / Bits` pixels: pixel `i` of byte `j` becomes pixel `j` of byte `i`.
template <std::uint32_t Bits>
std::array<std::uint8_t, 8 / Bits> TransposeBlock(const std::array<std::uint8_t, 8 / Bits>& block) {
    constexpr std::uint32_t count = 8 / Bits;
    constexpr std::uint32_t mask = (1U << Bits) - 1;
    std::array<std::uint8_t, count> result{};
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t byte = 0;
        for (std::uint32_t j = 0; j < count; ++j) {
            byte = (byte << Bits) | ((std::uint32_t{block[j]} >> (8 - Bits - i * Bits)) & mask);
        }
        result[i] = static_cast<std::uint8_t>(byte);
    }
    return result;
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
    switch (PixelFormatSize(m_source.GetPixelFormat())) {
    case 1:
        return FillIndexRows<1>(first, end);
    case 4:
        return FillIndexRows<4>(first, end);
    case 8:
        return FillPixelRows<1>(first, end);
    case 16:
        return FillPixelRows<2>(first, end);
    case 24:
        return FillPixelRows<3>(first, end);
    case 32:
        return FillPixelRows<4>(first, end);
    case 40:
        return FillPixelRows<5>(first, end);
    case 48:
        return FillPixelRows<6>(first, end);
    case 64:
        return FillPixelRows<8>(first, end);
    case 80:
        return FillPixelRows<10>(first, end);
    default:
        throw UnsupportedPixelFormatException();
    }
}

template <std::size_t Size> void Transposition::FillPixelRows(std::uint32_t first, std::uint32_t end) const {
    const std::uint32_t width = m_destination.GetWidth();
    const std::ptrdiff_t down = m_source.GetStride();
    const std::ptrdiff_t step = m_reverseRows ? -down : down;
    for (std::uint32_t left = 0; left < width;) {
        const std::uint32_t count = std::min(TileRows, width - left);
        const std::uint8_t* const corner = SourceRow(left);
        for (std::uint32_t y = first; y < end; ++y) {
            const std::uint8_t* const source = corner + std::size_t{SourceColumn(y)} * Size;
            std::uint8_t* const row = m_destination.GetScanlineRef(y) + std::size_t{left} * Size;
            for (std::uint32_t x = 0; x < count; ++x) {
                std::memcpy(row + x * Size, source + x * step, Size);
            }
        }
        left += count;
    }
}

template <std::uint32_t Bits> void Transposition::FillIndexRows(std::uint32_t first, std::uint32_t end) const {
    constexpr std::uint32_t perByte = 8 / Bits;
    const std::uint32_t width = m_destination.GetWidth();
    const std::uint32_t firstColumn = std::min(SourceColumn(first), SourceColumn(end - 1));
    const std::uint32_t endColumn = std::max(SourceColumn(first), SourceColumn(end - 1)) + 1;
    for (std::uint32_t left = 0; left < width; left += perByte) {
        const std::uint32_t rows = std::min(perByte, width - left);
        for (std::uint32_t column = firstColumn; column < endColumn; column += perByte) {
            std::array<std::uint8_t, perByte> block{};
            for (std::uint32_t i = 0; i < rows; ++i) {
                block[i] = SourceRow(left + i)[column / perByte];
            }
            block = TransposeBlock<Bits>(block);
            const std::uint32_t columns = std::min(perByte, endColumn - column);
            for (std::uint32_t i = 0; i < columns; ++i) {
                // Which row a column becomes is the same question as which column a row is.
                m_destination.GetScanlineRef(SourceColumn(column + i))[left / perByte] = block[i];
            }
        }
    }
}

} // namespace ImagingFramework
