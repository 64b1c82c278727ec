#include "metadata/Streams/MemoryReader.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/MemoryWriter.h"
#include "metadata/Streams/SeekTarget.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

std::uint64_t BytesFor(std::uint64_t bitCount) {
    return bitCount / 8 + (bitCount % 8 != 0 ? 1 : 0);
}

/// Checks the buffer and clears what lies behind the bytes that the read will fill.
void PrepareBuffer(std::uint64_t needed, void* pBuffer, std::uint64_t bufferSize) {
    if (pBuffer == nullptr) {
        throw ArgumentNullPointerException("pBuffer");
    }
    if (bufferSize < needed) {
        throw ArgumentException("nCount");
    }
    if (bufferSize > needed) {
        std::memset(static_cast<std::uint8_t*>(pBuffer) + needed, 0, bufferSize - needed);
    }
}

} // namespace

MemoryReader::MemoryReader(const void* pBuffer, std::uint64_t size)
    : m_pBuffer(static_cast<const std::uint8_t*>(pBuffer)), m_uintSizeInBits(size * 8) {
    if (pBuffer == nullptr) {
        throw ArgumentNullPointerException("pBuffer");
    }
    if (size > MaxPositionInBits / 8) {
        throw OutOfRangeException();
    }
}

std::unique_ptr<AbstractWriter> MemoryReader::CreateWriter() {
    // Whoever asks for a writer over the block says that the block may be written.
    auto writer = std::make_unique<MemoryWriter>(const_cast<std::uint8_t*>(m_pBuffer), GetSize());
    writer->Seek(static_cast<std::int64_t>(GetPosition()), SeekOrigin::Begin, true);
    return writer;
}

std::uint64_t MemoryReader::SeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits) const {
    return ComputeSeekTarget(offset, origin, inBits, GetPosition(), GetSize() * 8);
}

void MemoryReader::CheckAvailable(std::uint64_t bitCount) const {
    const std::uint64_t size = GetSize() * 8;
    const std::uint64_t position = GetPosition();
    if (position > size || bitCount > size - position) {
        throw OutOfRangeException();
    }
}

void MemoryReader::CheckAvailableBytes(std::uint64_t count) const {
    if (count > MaxPositionInBits / 8) {
        throw OutOfRangeException();
    }
    CheckAvailable(count * 8);
}

void MemoryReader::Seek(std::int64_t offset, SeekOrigin origin, bool inBits) {
    const std::uint64_t target = SeekTarget(offset, origin, inBits);
    m_uintByte = target / 8;
    m_intBit = static_cast<std::int32_t>(7 - target % 8);
}

std::uint8_t MemoryReader::TakeBlockBits(std::uint32_t count) {
    const std::uint8_t* const source = m_pBuffer + m_uintByte;
    const auto upper = static_cast<std::uint32_t>(m_intBit) + 1; // bits of the first byte that are left
    std::uint32_t bits = 0;
    if (count <= upper) {
        bits = std::uint32_t{source[0]} >> (upper - count);
    } else {
        bits = (std::uint32_t{source[0]} << 8 | source[1]) >> (upper + 8 - count);
    }
    const std::uint32_t next = 8 - upper + count;
    m_uintByte += next / 8;
    m_intBit = static_cast<std::int32_t>(7 - next % 8);
    return static_cast<std::uint8_t>(bits & ((1U << count) - 1));
}

std::uint8_t MemoryReader::TakeBits(std::uint32_t count) {
    std::uint32_t bits = 0;
    while (count != 0) {
        const auto now = static_cast<std::uint32_t>(std::min<std::uint64_t>(GetBlockRemaining(), count));
        if (now == 0) {
            Refill();
            continue;
        }
        bits = bits << now | TakeBlockBits(now);
        count -= now;
    }
    return static_cast<std::uint8_t>(bits);
}

void MemoryReader::TakeBytes(std::uint8_t* pBuffer, std::uint64_t count) {
    if (count != 0) {
        std::memcpy(pBuffer, m_pBuffer + m_uintByte, count);
        m_uintByte += count;
    }
}

bool MemoryReader::PeekBit() {
    if (GetBlockRemaining() == 0) {
        CheckAvailable(1);
        Refill();
    }
    return (m_pBuffer[m_uintByte] >> m_intBit & 1) != 0;
}

bool MemoryReader::ReadBit() {
    const bool bit = MemoryReader::PeekBit();
    if (--m_intBit < 0) {
        m_intBit = 7;
        ++m_uintByte;
    }
    return bit;
}

void MemoryReader::ReadBits(std::uint64_t bitCount, void* pBuffer, std::uint64_t bufferSize, bool leftAligned) {
    auto* output = static_cast<std::uint8_t*>(pBuffer);
    // Packed pixels come this way, one by one.
    if (bitCount - 1 < 8 && bufferSize == 1 && output != nullptr && bitCount <= GetBlockRemaining()) {
        const auto count = static_cast<std::uint32_t>(bitCount);
        *output = static_cast<std::uint8_t>(TakeBlockBits(count) << (leftAligned ? 8 - count : 0));
        return;
    }
    if (bitCount == 0 && output == nullptr) {
        return;
    }
    PrepareBuffer(BytesFor(bitCount), pBuffer, bufferSize);
    CheckAvailable(bitCount);
    const auto odd = static_cast<std::uint32_t>(bitCount % 8);
    std::uint64_t whole = bitCount / 8;
    if (odd != 0 && !leftAligned) {
        *output++ = TakeBits(odd);
    }
    if (m_intBit == 7) {
        TakeBytes(output, whole);
        output += whole;
    } else {
        for (; whole != 0; --whole) {
            *output++ = TakeBits(8);
        }
    }
    if (odd != 0 && leftAligned) {
        *output = static_cast<std::uint8_t>(TakeBits(odd) << (8 - odd));
    }
}

MemPtr<std::uint8_t> MemoryReader::ReadBits(std::uint64_t bitCount, bool leftAligned) {
    CheckAvailable(bitCount); // before so much is allocated
    MemPtr<std::uint8_t> buffer;
    buffer.AllocateSize(BytesFor(bitCount));
    ReadBits(bitCount, buffer.Get(), BytesFor(bitCount), leftAligned);
    return buffer;
}

void MemoryReader::ReadBytes(std::uint64_t count, void* pBuffer, std::uint64_t bufferSize) {
    if (count == 0 && pBuffer == nullptr) {
        return;
    }
    PrepareBuffer(count, pBuffer, bufferSize);
    CheckAvailableBytes(count);
    if (m_intBit == 7) {
        TakeBytes(static_cast<std::uint8_t*>(pBuffer), count);
    } else {
        ReadBits(count * 8, pBuffer, bufferSize, true);
    }
}

MemPtr<std::uint8_t> MemoryReader::ReadBytes(std::uint64_t count) {
    CheckAvailableBytes(count);
    MemPtr<std::uint8_t> buffer;
    buffer.AllocateSize(count);
    ReadBytes(count, buffer.Get(), count);
    return buffer;
}

} // namespace ImagingFramework
