#pragma once

#include "metadata/Streams/IStream.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace ImagingFramework {

class AbstractReader;

/// Output of bytes and bits; positions as in `AbstractReader`, bits are written from the top of each byte. Multi-byte
/// values are little-endian.
///
/// Failures: a write past the capacity is `OutOfRangeException`; null sources are `ArgumentNullPointerException`.
class AbstractWriter {
public:
    virtual ~AbstractWriter() = default;

    /// A reader over the same memory or stream, at this writer's position.
    virtual std::unique_ptr<AbstractReader> CreateReader() = 0;
    /// Capacity in bytes.
    virtual std::uint64_t GetSize() const = 0;
    virtual std::uint64_t GetBytePosition() const = 0;
    virtual std::int32_t GetBitPosition() const = 0;
    /// In bits.
    virtual std::uint64_t GetPosition() const = 0;
    virtual void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) = 0;
    virtual void Flush() = 0;
    /// Writes a pattern of `patternBits` bits `count` times; without `advance` the position stays.
    virtual void Memset(const void* pPattern, std::uint64_t patternBits, std::uint64_t count, bool advance) = 0;
    /// Repeats the pattern to the end of the capacity; the position stays.
    virtual void Memset(const void* pPattern, std::uint64_t patternBits) = 0;
    virtual void WriteBit(bool bit) = 0;
    /// Writes `bitCount` bits from the top of each source byte, after skipping `skipBits` leading bits of the source.
    virtual void WriteBits(const void* pSource, std::uint64_t bitCount, std::uint64_t skipBits) = 0;
    virtual void WriteBytes(const void* pSource, std::uint64_t count) = 0;

    void WriteByte(std::uint8_t value) { WriteBytes(&value, sizeof value); }
    void WriteWord(std::uint16_t value) { WriteBytes(&value, sizeof value); }
    void WriteDword(std::uint32_t value) { WriteBytes(&value, sizeof value); }
    void WriteQword(std::uint64_t value) { WriteBytes(&value, sizeof value); }
    void WriteDouble(double value) { WriteBytes(&value, sizeof value); }
    /// The bytes of the text without a terminator.
    void WriteString(std::string_view text) { WriteBytes(text.data(), text.size()); }
    /// A whole stream from its beginning; its position is kept.
    void WriteStream(IStream* pStream);
};

} // namespace ImagingFramework
