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
    std::uint64_t GetPosition() const override { return GetBytePosition() * 8 + static_cast<std::uint64_t>(7 - m_intBit); }
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

    const std::uint8_t* m_pBuffer = nullptr;
    std::uint64_t m_uintSizeInBits = 0;
    std::uint64_t m_uintByte = 0;
    std::int32_t m_intBit = 7;
};

} // namespace ImagingFramework
