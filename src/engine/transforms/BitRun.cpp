#include "transforms/BitRun.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

/// Up to 8 bits from `bit` (0 to 7) of the first byte on, at the top of the result.
std::uint32_t ReadBits(const std::uint8_t* source, std::uint32_t bit, std::uint32_t count) {
    const std::uint32_t next = bit + count > 8 ? source[1] : 0U;
    return ((std::uint32_t{source[0]} << bit) | (next >> (8 - bit))) & 0xFFU;
}

/// Up to 8 bits from the top of `bits` into one byte, from its bit `bit` on.
void WriteBits(std::uint8_t* destination, std::uint32_t bit, std::uint32_t count, std::uint32_t bits) {
    const std::uint32_t mask = ((0xFF00U >> count) & 0xFFU) >> bit;
    *destination = static_cast<std::uint8_t>((*destination & ~mask) | ((bits >> bit) & mask));
}

/// Eight bytes as the number whose highest bit is the first one.
std::uint64_t LoadBits(const std::uint8_t* source) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, source, sizeof(bits));
    return __builtin_bswap64(bits);
}

/// Whole bytes of the destination, from bit `from` (1 to 7) of the first byte of the source on.
void CopyShiftedBytes(const std::uint8_t* source, std::uint32_t from, std::uint8_t* destination, std::uint64_t count) {
    std::uint64_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const std::uint64_t next = source[i + 8];
        const std::uint64_t bits = __builtin_bswap64((LoadBits(source + i) << from) | (next >> (8 - from)));
        std::memcpy(destination + i, &bits, sizeof(bits));
    }
    for (; i < count; ++i) {
        destination[i] = static_cast<std::uint8_t>((source[i] << from) | (source[i + 1] >> (8 - from)));
    }
}

} // namespace

void CopyBits(const std::uint8_t* source, std::uint64_t sourceBit, std::uint8_t* destination,
              std::uint64_t destinationBit, std::uint64_t count) {
    source += sourceBit / 8;
    destination += destinationBit / 8;
    auto from = static_cast<std::uint32_t>(sourceBit % 8);
    if (const auto to = static_cast<std::uint32_t>(destinationBit % 8); to != 0 && count != 0) {
        const auto head = static_cast<std::uint32_t>(std::min<std::uint64_t>(8 - to, count));
        WriteBits(destination++, to, head, ReadBits(source, from, head));
        source += (from + head) / 8;
        from = (from + head) % 8;
        count -= head;
    }
    const std::uint64_t bytes = count / 8;
    if (from != 0) {
        CopyShiftedBytes(source, from, destination, bytes);
    } else if (bytes != 0) {
        std::memcpy(destination, source, bytes);
    }
    if (const auto tail = static_cast<std::uint32_t>(count % 8); tail != 0) {
        WriteBits(destination + bytes, 0, tail, ReadBits(source + bytes, from, tail));
    }
}

} // namespace ImagingFramework
