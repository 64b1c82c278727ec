#include "metadata/Bmp/BmpRleReader.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

constexpr std::uint8_t EndOfLine = 0;
constexpr std::uint8_t EndOfBitmap = 1;
constexpr std::uint8_t Delta = 2;

} // namespace

BmpRleReader::BmpRleReader(AbstractReader& reader, std::uint32_t bitCount, std::uint32_t width)
    : m_reader(reader), m_uintBitCount(bitCount), m_uintWidth(width) {}

void BmpRleReader::ReadBlock() {
    const std::uint64_t count = std::min<std::uint64_t>(m_block.size(), m_reader.GetRemaining());
    if (count == 0) {
        throw OutOfRangeException();
    }
    m_reader.ReadBytes(count, m_block.data(), m_block.size());
    m_blockUsed = 0;
    m_blockSize = static_cast<std::size_t>(count);
}

inline std::uint8_t BmpRleReader::NextByte() {
    if (m_blockUsed == m_blockSize) {
        ReadBlock();
    }
    return m_block[m_blockUsed++];
}

void BmpRleReader::ReadLine(std::uint8_t* pLine) {
    if (m_intPendingVerticalSkip > 0) {
        --m_intPendingVerticalSkip;
        return;
    }
    m_uintX = 0;
    MoveRight(m_intPendingHorizontalSkip);
    m_intPendingHorizontalSkip = 0;
    m_intPendingVerticalSkip = 0;
    for (bool ended = false; !ended;) {
        const std::uint8_t count = NextByte();
        if (count != 0) {
            PutRun(pLine, count, NextByte());
        } else {
            ended = ReadEscape(pLine);
        }
    }
}

bool BmpRleReader::ReadEscape(std::uint8_t* pLine) {
    const std::uint8_t code = NextByte();
    switch (code) {
    case EndOfLine:
        return true;
    case EndOfBitmap:
        m_bEnd = true;
        return true;
    case Delta:
        return ReadDelta();
    default:
        PutAbsolute(pLine, code);
        return false;
    }
}

bool BmpRleReader::ReadDelta() {
    const auto dx = static_cast<std::int8_t>(NextByte());
    const auto dy = static_cast<std::int8_t>(NextByte());
    if (dy == 0) {
        MoveRight(dx);
        return false;
    }
    m_intPendingHorizontalSkip = dx;
    m_intPendingVerticalSkip = dy;
    return true;
}

void BmpRleReader::MoveRight(std::int32_t pixels) {
    const std::int64_t target = std::int64_t{m_uintX} + pixels;
    if (target < 0) {
        throw MediaCorruptedException();
    }
    m_uintX = static_cast<std::uint32_t>(std::min<std::int64_t>(target, m_uintWidth));
}

inline void BmpRleReader::PutNibble(std::uint8_t* pLine, std::uint32_t x, std::uint8_t value) const noexcept {
    std::uint8_t& byte = pLine[x / 2];
    byte = static_cast<std::uint8_t>(x % 2 == 0 ? (byte & 0x0F) | (value << 4) : (byte & 0xF0) | value);
}

void BmpRleReader::PutRun(std::uint8_t* pLine, std::uint32_t count, std::uint8_t value) {
    const std::uint32_t fitting = std::min(count, m_uintWidth - m_uintX);
    if (m_uintBitCount == 8) {
        std::memset(pLine + m_uintX, value, fitting);
    } else {
        const std::uint8_t nibbles[2] = {static_cast<std::uint8_t>(value >> 4),
                                         static_cast<std::uint8_t>(value & 0x0F)};
        for (std::uint32_t i = 0; i < fitting; ++i) {
            PutNibble(pLine, m_uintX + i, nibbles[i % 2]);
        }
    }
    m_uintX += fitting;
}

void BmpRleReader::PutAbsolute(std::uint8_t* pLine, std::uint32_t count) {
    const std::uint32_t byteCount = m_uintBitCount == 8 ? count : (count + 1) / 2;
    const std::uint32_t fitting = std::min(count, m_uintWidth - m_uintX);
    for (std::uint32_t i = 0; i < byteCount; ++i) {
        // All bytes are read, also those that no longer fit: the next code stands behind them.
        const std::uint8_t byte = NextByte();
        if (m_uintBitCount == 8) {
            if (i < fitting) {
                pLine[m_uintX + i] = byte;
            }
            continue;
        }
        if (2 * i < fitting) {
            PutNibble(pLine, m_uintX + 2 * i, static_cast<std::uint8_t>(byte >> 4));
        }
        if (2 * i + 1 < fitting) {
            PutNibble(pLine, m_uintX + 2 * i + 1, static_cast<std::uint8_t>(byte & 0x0F));
        }
    }
    if (byteCount % 2 != 0) {
        NextByte();
    }
    m_uintX += fitting;
}

} // namespace ImagingFramework
