#pragma once

#include "metadata/Streams/AbstractReader.h"

namespace ImagingFramework {

/// A reader over a block that the caller owns. 1- and 4-bit pixels of a scanline are read through it.
class MemoryReader : public AbstractReader {
public:
    /// Fails with `ArgumentNullPointerException` ("pBuffer") on a null block.
    MemoryReader(const void* pBuffer, std::uint64_t size);

    std::unique_ptr<AbstractWriter> CreateWriter() override;
    std::uint64_t GetSize() const override { return m_uintSizeInBits / 8; }
    void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) override;
    std::uint64_t GetBytePosition() const override { return m_uintByte; }
    std::int32_t GetBitPosition() const override { return m_intBit; }
    std::uint64_t GetPosition() const override {
        return GetBytePosition() * 8 + static_cast<std::uint64_t>(7 - m_intBit);
    }
    bool PeekBit() override;
    bool ReadBit() override;
    void ReadBits(std::uint64_t bitCount, void* pBuffer, std::uint64_t bufferSize, bool leftAligned) override;
    MemPtr<std::uint8_t> ReadBits(std::uint64_t bitCount, bool leftAligned) override;
    void ReadBytes(std::uint64_t count, void* pBuffer, std::uint64_t bufferSize) override;
    MemPtr<std::uint8_t> ReadBytes(std::uint64_t count) override;

protected:
    /// For a derived class that fills a block of its own.
    MemoryReader() = default;
    /// The target of a seek in bits, checked as the interface tells.
    std::uint64_t SeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits) const;
    /// Fails with `OutOfRangeException` when fewer than `bitCount` bits follow the position.
    void CheckAvailable(std::uint64_t bitCount) const;
    /// The same for bytes.
    void CheckAvailableBytes(std::uint64_t count) const;
    /// Bits of the block behind the position, 0 beyond the end.
    std::uint64_t GetBlockRemaining() const {
        const std::uint64_t position = m_uintByte * 8 + static_cast<std::uint64_t>(7 - m_intBit);
        return position < m_uintSizeInBits ? m_uintSizeInBits - position : 0;
    }
    /// The next 1 to 8 bits as a number; they must be in the block.
    std::uint8_t TakeBlockBits(std::uint32_t count);
    /// The next 1 to 8 bits as a number; they were checked to exist.
    std::uint8_t TakeBits(std::uint32_t count);
    /// The next bytes, at a byte boundary; they were checked to exist.
    virtual void TakeBytes(std::uint8_t* pBuffer, std::uint64_t count);
    /// Called when the block is used up and more bits are known to exist: a derived class whose block is a window on
    /// something larger puts the next part into it.
    virtual void Refill() {}

    const std::uint8_t* m_pBuffer = nullptr;
    std::uint64_t m_uintSizeInBits = 0;
    std::uint64_t m_uintByte = 0;
    std::int32_t m_intBit = 7;
};

} // namespace ImagingFramework
