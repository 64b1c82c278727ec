#pragma once

#include "metadata/Streams/IStream.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// A stream over bytes of its own, which grow as they are written. Bytes between the end and a write beyond it are
/// zero.
class MemoryStream final : public IStream {
public:
    MemoryStream() = default;
    explicit MemoryStream(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}

    bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) override;
    bool Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) override;
    bool Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) override;
    bool Stat(std::uint64_t* pSize) override;
    bool SetSize(std::uint64_t size) override;
    bool Commit() override { return true; }

    const std::vector<std::uint8_t>& GetBytes() const { return m_bytes; }
    std::vector<std::uint8_t> TakeBytes() { return std::move(m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_uintPosition = 0;
};

/// Moves a position as `IStream::Seek` tells: relative to `size` for the end. False when it would come to lie before
/// the beginning or beyond 2^63 - 1.
bool MovePosition(std::int64_t offset, SeekOrigin origin, std::uint64_t size, std::uint64_t& position);

} // namespace ImagingFramework
