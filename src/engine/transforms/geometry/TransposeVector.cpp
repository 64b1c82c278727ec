#include "transforms/geometry/TransposeVector.h"

#include "ErrorHandling/Exceptions.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/geometry/TransposeVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

std::uint32_t TransposeBlocks(const TransposeTile&, std::size_t) { return 0; }

#else

using Bytes = hn::FixedTag<std::uint8_t, 16>;
using ByteVector = hn::VFromD<Bytes>;

/// Pixels as they stand in memory, 16 bytes of them in a vector of as many lanes.
template <class Unit> class WholeBlock {
public:
    using Tag = hn::FixedTag<Unit, 16 / sizeof(Unit)>;
    using Vector = hn::VFromD<Tag>;
    static constexpr std::size_t PixelSize = sizeof(Unit);

    Vector Load(const std::uint8_t* source) const { return hn::BitCast(Tag(), hn::LoadU(Bytes(), source)); }
    void Store(Vector pixels, std::uint8_t* destination, bool) const {
        hn::StoreU(hn::BitCast(Bytes(), pixels), Bytes(), destination);
    }
};

/// Pixels of three bytes, which are spread over lanes of four.
class ByteTriples {
public:
    using Tag = hn::FixedTag<std::uint32_t, 4>;
    using Vector = hn::VFromD<Tag>;
    static constexpr std::size_t PixelSize = 3;

    Vector Load(const std::uint8_t* source) const {
        HWY_ALIGN static constexpr std::uint8_t indices[16] = {0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11};
        return hn::BitCast(Tag(), hn::TableLookupBytes(hn::LoadU(Bytes(), source), hn::Load(Bytes(), indices)));
    }
    /// Writes four bytes too many unless it is the last one of a row.
    void Store(Vector pixels, std::uint8_t* destination, bool isLast) const {
        HWY_ALIGN static constexpr std::uint8_t indices[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 12, 13, 14, 14};
        const ByteVector packed = hn::TableLookupBytes(hn::BitCast(Bytes(), pixels), hn::Load(Bytes(), indices));
        if (isLast) {
            HWY_ALIGN std::uint8_t bytes[16];
            hn::Store(packed, Bytes(), bytes);
            std::memcpy(destination, bytes, 12);
        } else {
            hn::StoreU(packed, Bytes(), destination);
        }
    }
};

template <class Block>
HWY_INLINE void TransposeBlock(const Block& block, const TransposeTile& tile, std::size_t column, std::size_t row,
                               bool isLast) {
    const typename Block::Tag d;
    constexpr std::size_t side = hn::MaxLanes(typename Block::Tag());
    const std::uint8_t* const source =
        tile.Source + static_cast<std::ptrdiff_t>(row) * tile.SourceStride + column * Block::PixelSize;
    std::uint8_t* const destination =
        tile.Destination + static_cast<std::ptrdiff_t>(column) * tile.DestinationStride + row * Block::PixelSize;
    typename Block::Vector v[side];
    typename Block::Vector t[side];
    for (std::size_t i = 0; i < side; ++i) {
        v[i] = block.Load(source + static_cast<std::ptrdiff_t>(i) * tile.SourceStride);
    }
    // As many perfect shuffles of rows and lanes as a lane's number has bits exchange the two.
    for (std::size_t round = 1; round < side; round *= 2) {
        for (std::size_t i = 0; i < side / 2; ++i) {
            t[2 * i] = hn::InterleaveLower(d, v[i], v[i + side / 2]);
            t[2 * i + 1] = hn::InterleaveUpper(d, v[i], v[i + side / 2]);
        }
        for (std::size_t i = 0; i < side; ++i) {
            v[i] = t[i];
        }
    }
    for (std::size_t i = 0; i < side; ++i) {
        block.Store(v[i], destination + static_cast<std::ptrdiff_t>(i) * tile.DestinationStride, isLast);
    }
}

/// All whole blocks of a tile. Returns how many columns they take.
template <class Block> std::uint32_t TransposeWholeBlocks(const TransposeTile& tile) {
    const Block block;
    constexpr std::uint32_t side = static_cast<std::uint32_t>(hn::MaxLanes(typename Block::Tag()));
    const std::uint32_t rows = tile.Rows / side * side;
    std::uint32_t column = 0;
    for (; column + side <= tile.Columns && column * Block::PixelSize + 16 <= tile.Readable; column += side) {
        for (std::uint32_t row = 0; row < rows; row += side) {
            TransposeBlock(block, tile, column, row, row + side == rows);
        }
    }
    return column;
}

std::uint32_t TransposeBlocks(const TransposeTile& tile, std::size_t size) {
    switch (size) {
    case 1:
        return TransposeWholeBlocks<WholeBlock<std::uint8_t>>(tile);
    case 2:
        return TransposeWholeBlocks<WholeBlock<std::uint16_t>>(tile);
    case 3:
        return TransposeWholeBlocks<ByteTriples>(tile);
    case 4:
        return TransposeWholeBlocks<WholeBlock<std::uint32_t>>(tile);
    case 8:
        return TransposeWholeBlocks<WholeBlock<std::uint64_t>>(tile);
    default:
        return 0;
    }
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(TransposeBlocks);

namespace {

template <std::size_t Size> void TransposeSized(const TransposeTile& tile) {
    for (std::uint32_t column = 0; column < tile.Columns; ++column) {
        const std::uint8_t* const source = tile.Source + column * Size;
        std::uint8_t* const row = tile.Destination + static_cast<std::ptrdiff_t>(column) * tile.DestinationStride;
        for (std::uint32_t x = 0; x < tile.Rows; ++x) {
            std::memcpy(row + x * Size, source + static_cast<std::ptrdiff_t>(x) * tile.SourceStride, Size);
        }
    }
}

/// Pixels along a side of the square that 16 bytes of each row make.
std::uint32_t BlockSide(std::size_t size) { return size == 3 ? 4U : static_cast<std::uint32_t>(16 / size); }

} // namespace

void TransposePixelsPlain(const TransposeTile& tile, std::size_t size) {
    switch (size) {
    case 1:
        return TransposeSized<1>(tile);
    case 2:
        return TransposeSized<2>(tile);
    case 3:
        return TransposeSized<3>(tile);
    case 4:
        return TransposeSized<4>(tile);
    case 5:
        return TransposeSized<5>(tile);
    case 6:
        return TransposeSized<6>(tile);
    case 8:
        return TransposeSized<8>(tile);
    case 10:
        return TransposeSized<10>(tile);
    default:
        throw UnsupportedPixelFormatException();
    }
}

TransposeTile SkipRows(const TransposeTile& tile, std::uint32_t rows, std::size_t size) {
    TransposeTile rest = tile;
    rest.Source += static_cast<std::ptrdiff_t>(rows) * tile.SourceStride;
    rest.Destination += rows * size;
    rest.Rows -= rows;
    return rest;
}

TransposeTile SkipColumns(const TransposeTile& tile, std::uint32_t columns, std::size_t size) {
    TransposeTile rest = tile;
    rest.Source += columns * size;
    rest.Destination += static_cast<std::ptrdiff_t>(columns) * tile.DestinationStride;
    rest.Columns -= columns;
    rest.Readable -= columns * size;
    return rest;
}

void TransposePixels(const TransposeTile& tile, std::size_t size) {
    const std::uint32_t columns = HWY_DYNAMIC_DISPATCH(TransposeBlocks)(tile, size);
    const std::uint32_t rest = tile.Rows % BlockSide(size);
    if (columns != 0 && rest != 0) {
        TransposeTile below = SkipRows(tile, tile.Rows - rest, size);
        below.Columns = columns;
        TransposePixelsPlain(below, size);
    }
    if (columns != tile.Columns) {
        TransposePixelsPlain(SkipColumns(tile, columns, size), size);
    }
}

} // namespace ImagingFramework
#endif
