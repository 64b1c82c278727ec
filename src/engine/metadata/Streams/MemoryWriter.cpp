#include "metadata/Streams/MemoryWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/SeekTarget.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ImagingFramework {

namespace {

/// `count` bits, 1 to 8, of the source from bit `position` on, counted from the top of its first byte.
std::uint32_t SourceBits(const std::uint8_t* source, std::uint64_t position, std::uint32_t count) {
    source += position / 8;
    const auto upper = static_cast<std::uint32_t>(8 - position % 8);
    const std::uint32_t bits = count <= upper ? std::uint32_t{source[0]} >> (upper - count)
                                              : (std::uint32_t{source[0]} << 8 | source[1]) >> (upper + 8 - count);
    return bits & ((1U << count) - 1);
}

} // namespace

MemoryWriter::MemoryWriter(void* pBuffer, std::uint64_t size)
    : m_pBuffer(static_cast<std::uint8_t*>(pBuffer)), m_uintSizeInBits(size * 8) {
    if (pBuffer == nullptr) {
        throw ArgumentNullPointerException("pBuffer");
    }
    if (size > MaxPositionInBits / 8) {
        throw OutOfRangeException();
    }
}

std::unique_ptr<AbstractReader> MemoryWriter::CreateReader() {
    auto reader = std::make_unique<MemoryReader>(m_pBuffer, GetSize());
    reader->Seek(static_cast<std::int64_t>(GetPosition()), SeekOrigin::Begin, true);
    return reader;
}

std::uint64_t MemoryWriter::SeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits) const {
    return ComputeSeekTarget(offset, origin, inBits, GetPosition(), GetSize() * 8);
}

void MemoryWriter::CheckCapacity(std::uint64_t bitCount) const {
    const std::uint64_t size = GetSize() * 8;
    const std::uint64_t position = GetPosition();
    if (position > size || bitCount > size - position) {
        throw OutOfRangeException();
    }
}

void MemoryWriter::Seek(std::int64_t offset, SeekOrigin origin, bool inBits) {
    const std::uint64_t target = SeekTarget(offset, origin, inBits);
    m_uintByte = target / 8;
    m_intBit = static_cast<std::int32_t>(7 - target % 8);
}

void MemoryWriter::PutBlockBits(std::uint32_t value, std::uint32_t count) {
    std::uint8_t* const target = m_pBuffer + m_uintByte;
    const auto upper = static_cast<std::uint32_t>(m_intBit) + 1; // room in the first byte
    const std::uint32_t mask = (1U << count) - 1;
    value &= mask;
    if (count <= upper) {
        const std::uint32_t shift = upper - count;
        target[0] = static_cast<std::uint8_t>((target[0] & ~(mask << shift)) | value << shift);
    } else {
        const std::uint32_t shift = upper + 8 - count;
        const std::uint32_t both = ((std::uint32_t{target[0]} << 8 | target[1]) & ~(mask << shift)) | value << shift;
        target[0] = static_cast<std::uint8_t>(both >> 8);
        target[1] = static_cast<std::uint8_t>(both);
    }
    const std::uint32_t next = 8 - upper + count;
    m_uintByte += next / 8;
    m_intBit = static_cast<std::int32_t>(7 - next % 8);
}

void MemoryWriter::PutBytes(const std::uint8_t* pSource, std::uint64_t count) {
    std::memmove(m_pBuffer + m_uintByte, pSource, count); // the source may be a part of the block
    m_uintByte += count;
}

void MemoryWriter::WriteBit(bool bit) {
    CheckCapacity(1);
    PutBits(bit ? 1 : 0, 1);
}

void MemoryWriter::WriteBits(const void* pSource, std::uint64_t bitCount, std::uint64_t skipBits) {
    if (bitCount == 0) {
        return;
    }
    if (pSource == nullptr) {
        throw ArgumentNullPointerException("pValues");
    }
    CheckCapacity(bitCount);
    const auto* source = static_cast<const std::uint8_t*>(pSource) + skipBits / 8;
    std::uint64_t position = skipBits % 8;
    if (m_intBit == 7 && position == 0) {
        const std::uint64_t whole = bitCount / 8;
        PutBytes(source, whole);
        source += whole;
        bitCount -= whole * 8;
    }
    while (bitCount != 0) {
        const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(bitCount, 8));
        PutBits(SourceBits(source, position, count), count);
        position += count;
        bitCount -= count;
    }
}

void MemoryWriter::WriteBytes(const void* pSource, std::uint64_t count) {
    if (count == 0) {
        return;
    }
    if (pSource == nullptr) {
        throw ArgumentNullPointerException("pValues");
    }
    if (count > MaxPositionInBits / 8) {
        throw OutOfRangeException();
    }
    if (m_intBit == 7) {
        CheckCapacity(count * 8);
        PutBytes(static_cast<const std::uint8_t*>(pSource), count);
    } else {
        WriteBits(pSource, count * 8, 0);
    }
}

void MemoryWriter::WritePattern(const std::uint8_t* pPattern, std::uint64_t patternBits, std::uint64_t count) {
    // Short patterns are written in blocks of a multiple of 8 repeats, so that every block has whole bytes.
    constexpr std::uint64_t blockBytes = 512;
    const std::uint64_t repeats = blockBytes / patternBits * 8;
    std::array<std::uint8_t, blockBytes> block{};
    if (repeats == 0 || count < 8) {
        for (; count != 0; --count) {
            WriteBits(pPattern, patternBits, 0);
        }
        return;
    }
    MemoryWriter blockWriter(block.data(), block.size());
    for (std::uint64_t i = std::min(repeats, count); i != 0; --i) {
        blockWriter.WriteBits(pPattern, patternBits, 0);
    }
    while (count != 0) {
        const std::uint64_t now = std::min(repeats, count);
        WriteBits(block.data(), now * patternBits, 0);
        count -= now;
    }
}

void MemoryWriter::Memset(const void* pPattern, std::uint64_t patternBits, std::uint64_t count, bool advance) {
    if (pPattern == nullptr) {
        throw ArgumentNullPointerException("pValue");
    }
    const std::uint64_t position = GetPosition();
    if (position >= GetSize() * 8 || patternBits == 0 || count == 0) {
        return;
    }
    std::uint64_t total = 0;
    if (__builtin_mul_overflow(patternBits, count, &total)) {
        throw OutOfRangeException();
    }
    CheckCapacity(total);
    WritePattern(static_cast<const std::uint8_t*>(pPattern), patternBits, count);
    if (!advance) {
        Seek(static_cast<std::int64_t>(position), SeekOrigin::Begin, true);
    }
}

void MemoryWriter::Memset(const void* pPattern, std::uint64_t patternBits) {
    if (pPattern == nullptr) {
        throw ArgumentNullPointerException("pValue");
    }
    const std::uint64_t position = GetPosition();
    const std::uint64_t size = GetSize() * 8;
    if (position >= size || patternBits == 0) {
        return;
    }
    const auto* const pattern = static_cast<const std::uint8_t*>(pPattern);
    const std::uint64_t room = size - position;
    WritePattern(pattern, patternBits, room / patternBits);
    WriteBits(pattern, room % patternBits, 0);
    Seek(static_cast<std::int64_t>(position), SeekOrigin::Begin, true);
}

} // namespace ImagingFramework
