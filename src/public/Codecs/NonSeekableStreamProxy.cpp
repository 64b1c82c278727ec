#include <Corvane/Rasterloom/Codecs/NonSeekableStreamProxy.h>
#include <Corvane/Rasterloom/Codecs/StreamUtils.h>

#include "ErrorHandling/Exception.h"
#include "metadata/Streams/TempFile.h"

#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/FileStream.h>

#include <limits>

namespace Corvane::Rasterloom::Codecs {

namespace {

std::unique_ptr<ImagingFramework::TempFile> CreateTempFile() {
    try {
        auto file = std::make_unique<ImagingFramework::TempFile>(std::filesystem::path(), "IMG", ".tmp", false, true);
        file->GetHandle().Close();
        return file;
    } catch (const ImagingFramework::Exception&) {
        throw Host::IOException("Unable to create temporary file.");
    }
}

} // namespace

NonSeekableStreamProxy::NonSeekableStreamProxy(std::shared_ptr<Host::Stream> stream) {
    if (stream == nullptr) {
        throw Host::ArgumentNullException("stream");
    }
    if (!stream->get_CanRead() && !stream->get_CanWrite() && !stream->get_CanSeek()) {
        throw Host::ArgumentException("The stream has already been closed.", "stream");
    }
    if (stream->get_CanSeek()) {
        m_pStream = std::move(stream);
        return;
    }
    m_pTempFile = CreateTempFile();
    m_enMode = ProxyMode::CopiedStream;
    m_pStream = std::make_shared<Host::FileStream>(m_pTempFile->GetFilenameRef(), Host::FileMode::Open);
    StreamUtils::Copy(stream, m_pStream, std::numeric_limits<std::uint64_t>::max()); // to its end
    m_pStream->Seek(0, Host::SeekOrigin::Begin);
}

NonSeekableStreamProxy::~NonSeekableStreamProxy() {
    NonSeekableStreamProxy::Close();
}

void NonSeekableStreamProxy::Close() {
    if (m_enMode == ProxyMode::CopiedStream && m_pStream != nullptr) {
        try {
            m_pStream->Close();
        } catch (...) {
            // The copy is of no use to anyone any more.
        }
    }
    m_pStream.reset();
    m_pTempFile.reset();
}

Host::Stream& NonSeekableStreamProxy::Held() const {
    if (m_pStream == nullptr) {
        throw Host::ObjectDisposedException("NonSeekableStreamProxy");
    }
    return *m_pStream;
}

std::int64_t NonSeekableStreamProxy::get_Length() {
    return Held().get_Length();
}
std::int64_t NonSeekableStreamProxy::get_Position() {
    return Held().get_Position();
}
std::size_t NonSeekableStreamProxy::Read(void* buffer, std::size_t size) {
    return Held().Read(buffer, size);
}
void NonSeekableStreamProxy::Write(const void* buffer, std::size_t size) {
    Held().Write(buffer, size);
}
std::int64_t NonSeekableStreamProxy::Seek(std::int64_t offset, Host::SeekOrigin origin) {
    return Held().Seek(offset, origin);
}
void NonSeekableStreamProxy::SetLength(std::int64_t value) {
    Held().SetLength(value);
}
void NonSeekableStreamProxy::Flush() {
    Held().Flush();
}

} // namespace Corvane::Rasterloom::Codecs
