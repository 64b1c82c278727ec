#pragma once

#include "MemoryManagement/MemPtr.h"
#include "metadata/Streams/IStream.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

class AbstractWriter;

/// Input of bytes and bits. A position is a byte index and a bit index from 7 (the top bit, read first) to 0; the
/// position in bits is byte * 8 + (7 - bit). Multi-byte values are little-endian.
///
/// Failures: a read past the end is `OutOfRangeException`, a buffer smaller than the count `ArgumentException`
/// ("nCount"), a null buffer `ArgumentNullPointerException` ("pBuffer"), a negative offset from begin or end
/// `ArgumentException`
/// ("nOffset").
class AbstractReader {
public:
    virtual ~AbstractReader() = default;

    /// A writer over the same memory or stream, at this reader's position.
    virtual std::unique_ptr<AbstractWriter> CreateWriter() = 0;
    /// Size in bytes.
    virtual std::uint64_t GetSize() const = 0;
    /// `offset` counts bits when `inBits` is set, else bytes; from the end a positive offset counts backwards. A
    /// position beyond the end is accepted; the next read fails.
    virtual void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) = 0;
    virtual std::uint64_t GetBytePosition() const = 0;
    virtual std::int32_t GetBitPosition() const = 0;
    /// In bits.
    virtual std::uint64_t GetPosition() const = 0;
    virtual bool PeekBit() = 0;
    virtual bool ReadBit() = 0;
    /// Reads `bitCount` bits. Right-aligned, an n-bit field reads as its number in the last byte; left-aligned, every
    /// byte is filled from its top bit. The buffer takes (bitCount + 7) / 8 bytes, the rest of it is cleared.
    virtual void ReadBits(std::uint64_t bitCount, void* pBuffer, std::uint64_t bufferSize, bool leftAligned) = 0;
    virtual MemPtr<std::uint8_t> ReadBits(std::uint64_t bitCount, bool leftAligned) = 0;
    virtual void ReadBytes(std::uint64_t count, void* pBuffer, std::uint64_t bufferSize) = 0;
    virtual MemPtr<std::uint8_t> ReadBytes(std::uint64_t count) = 0;

    std::uint8_t ReadByte() { return ReadValue<std::uint8_t>(); }
    std::uint16_t ReadWord() { return ReadValue<std::uint16_t>(); }
    std::uint32_t ReadDword() { return ReadValue<std::uint32_t>(); }
    std::uint64_t ReadQword() { return ReadValue<std::uint64_t>(); }
    double ReadDouble() { return ReadValue<double>(); }
    /// Bytes between the position and the end, 0 beyond it.
    std::uint64_t GetRemaining() const {
        const std::uint64_t position = GetBytePosition();
        return position < GetSize() ? GetSize() - position : 0;
    }
    /// Moves forward to the first byte of the next occurrence of `pSample`. Running off the end is the read failure.
    void SearchSample(const void* pSample, std::uint64_t size);

private:
    template <class T>
    T ReadValue() {
        T value{};
        ReadBytes(sizeof value, &value, sizeof value);
        return value;
    }
};

} // namespace ImagingFramework
