#pragma once

#include <Corvane/Rasterloom/Host/Stream.h>

#include <memory>
#include <vector>

namespace ImagingFramework {
class MemoryStream;
}

namespace Corvane::Rasterloom::Host {

/// A stream over bytes of its own, which grow as they are written.
class RASTERLOOM_API MemoryStream : public Stream {
public:
    /// Without bytes, or with these; the position is 0.
    MemoryStream();
    explicit MemoryStream(std::vector<std::uint8_t> bytes);
    ~MemoryStream() override;

    bool get_CanRead() const override { return !m_bClosed; }
    bool get_CanWrite() const override { return !m_bClosed; }
    bool get_CanSeek() const override { return !m_bClosed; }
    std::int64_t get_Length() override;
    std::int64_t get_Position() override;
    std::size_t Read(void* buffer, std::size_t size) override;
    void Write(const void* buffer, std::size_t size) override;
    std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override;
    void SetLength(std::int64_t value) override;
    void Flush() override {}
    void Close() override { m_bClosed = true; }

    /// The bytes, also after `Close`; valid until the next change.
    const std::vector<std::uint8_t>& GetBuffer() const;

private:
    void CheckOpen() const;

    std::unique_ptr<ImagingFramework::MemoryStream> m_pStream;
    bool m_bClosed = false;
};

} // namespace Corvane::Rasterloom::Host
