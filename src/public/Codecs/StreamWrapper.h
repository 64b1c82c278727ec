#pragma once

#include "metadata/Streams/IStream.h"

#include <Corvane/Rasterloom/Host/Stream.h>

#include <exception>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// The engine's view of a host's stream. The engine is told of failures by a result alone, so the last exception of the
/// host's stream is kept for whoever catches the engine's own.
class StreamWrapper final : public ImagingFramework::IStream {
public:
    /// Rewinds the stream, so that it is read from its first byte; a failure of that does not matter. Fails with
    /// `ArgumentNullException` and `ArgumentException` ("stream") for a null or closed stream.
    explicit StreamWrapper(std::shared_ptr<Host::Stream> stream);

    bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) override;
    bool Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) override;
    bool Seek(std::int64_t offset, ImagingFramework::SeekOrigin origin, std::uint64_t* pPosition) override;
    bool Stat(std::uint64_t* pSize) override;
    bool SetSize(std::uint64_t size) override;
    bool Commit() override;

    const std::shared_ptr<Host::Stream>& GetStream() const { return m_pStream; }
    /// The exception of the last operation that failed; null when none did. A stream that cannot tell its size or
    /// position is not counted: the engine has other ways then.
    std::exception_ptr GetFailure() const { return m_pFailure; }
    /// Raises that exception, if there is one, and forgets it.
    void RethrowFailure();

private:
    /// What `body` returns, or false when it raises, which is kept.
    template <class F>
    bool Guard(F&& body) noexcept;

    std::shared_ptr<Host::Stream> m_pStream;
    std::exception_ptr m_pFailure;
};

} // namespace Corvane::Rasterloom::Codecs
