#pragma once

#include <Corvane/Rasterloom/Codecs/ProxyMode.h>
#include <Corvane/Rasterloom/Host/Stream.h>

#include <memory>

namespace ImagingFramework {
class TempFile;
}

namespace Corvane::Rasterloom::Codecs {

/// Makes any readable stream seekable: forwards to the stream where it can seek, else copies the rest of it into a
/// temporary file and forwards to that.
class RASTERLOOM_API NonSeekableStreamProxy : public Host::Stream {
public:
    /// Fails with `ArgumentNullException` and `ArgumentException` ("stream") for a null or closed stream, with
    /// `IOException` when the copy cannot be made, and with whatever the stream raises.
    explicit NonSeekableStreamProxy(std::shared_ptr<Host::Stream> stream);
    ~NonSeekableStreamProxy() override;

    /// Whether it stands on the stream or on a copy.
    ProxyMode get_Mode() const { return m_enMode; }
    bool get_CanRead() const override { return m_pStream != nullptr && m_pStream->get_CanRead(); }
    bool get_CanWrite() const override { return m_pStream != nullptr && m_pStream->get_CanWrite(); }
    bool get_CanSeek() const override { return m_pStream != nullptr && m_pStream->get_CanSeek(); }
    std::int64_t get_Length() override;
    std::int64_t get_Position() override;
    std::size_t Read(void* buffer, std::size_t size) override;
    void Write(const void* buffer, std::size_t size) override;
    std::int64_t Seek(std::int64_t offset, Host::SeekOrigin origin) override;
    void SetLength(std::int64_t value) override;
    void Flush() override;
    /// Deletes the copy. The stream that was given stays open: it is the host's.
    void Close() override;

private:
    Host::Stream& Held() const;

    std::shared_ptr<Host::Stream> m_pStream;
    ProxyMode m_enMode = ProxyMode::OriginalStream;
    std::unique_ptr<ImagingFramework::TempFile> m_pTempFile;
};

} // namespace Corvane::Rasterloom::Codecs
