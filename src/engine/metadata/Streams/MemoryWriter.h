#pragma once

#include "metadata/Streams/AbstractWriter.h"

namespace ImagingFramework {

/// A writer over a block that the caller owns; it never grows.
class MemoryWriter : public AbstractWriter {
public:
    /// Fails with `ArgumentNullPointerException` ("pBuffer") on a null block.
    MemoryWriter(void* pBuffer, std::uint64_t size);

    std::unique_ptr<AbstractReader> CreateReader() override;
    std::uint64_t GetSize() const override { return m_uintSizeInBits / 8; }
    std::uint64_t GetBytePosition() const override { return m_uintByte; }
    std::int32_t GetBitPosition() const override { return m_intBit; }
    std::uint64_t GetPosition() const override {
        return GetBytePosition() * 8 + static_cast<std::uint64_t>(7 - m_intBit);
    }
    void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) override;
    /// Nothing to do: the bytes are in the block.
    void Flush() override {}
    void Memset(const void* pPattern, std::uint64_t patternBits, std::uint64_t count, bool advance) override;
    void Memset(const void* pPattern, std::uint64_t patternBits) override;
    void WriteBit(bool bit) override;
    void WriteBits(const void* pSource, std::uint64_t bitCount, std::uint64_t skipBits) override;
    void WriteBytes(const void* pSource, std::uint64_t count) override;

protected:
    MemoryWriter() = default;
    /// The target of a seek in bits, checked as the interface tells.
    std::uint64_t SeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits) const;
    /// Fails with `OutOfRangeException` when fewer than `bitCount` bits fit behind the position.
    void CheckCapacity(std::uint64_t bitCount) const;
    /// Writes the low `count` bits of `value`, 1 to 8, into the block; there must be room for them.
    void PutBlockBits(std::uint32_t value, std::uint32_t count);
    /// The same, where the capacity was checked; a derived class puts them where it must.
    virtual void PutBits(std::uint32_t value, std::uint32_t count) { PutBlockBits(value, count); }
    /// Bytes at a byte boundary, where the capacity was checked.
    virtual void PutBytes(const std::uint8_t* pSource, std::uint64_t count);
    /// Writes the pattern `count` times from the position on, which advances; the arguments were checked.
    void WritePattern(const std::uint8_t* pPattern, std::uint64_t patternBits, std::uint64_t count);

    std::uint8_t* m_pBuffer = nullptr;
    std::uint64_t m_uintSizeInBits = 0;
    std::uint64_t m_uintByte = 0;
    std::int32_t m_intBit = 7;
};

} // namespace ImagingFramework
