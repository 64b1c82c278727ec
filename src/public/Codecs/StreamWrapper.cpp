#include "Codecs/StreamWrapper.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

StreamWrapper::StreamWrapper(std::shared_ptr<Host::Stream> stream) : m_pStream(std::move(stream)) {
    if (m_pStream == nullptr) {
        throw Host::ArgumentNullException("stream");
    }
    if (!m_pStream->get_CanRead() && !m_pStream->get_CanWrite() && !m_pStream->get_CanSeek()) {
        throw Host::ArgumentException("Stream has been closed.", "stream");
    }
    try {
        m_pStream->Seek(0, Host::SeekOrigin::Begin);
    } catch (...) {
        // Streams that cannot seek are used from where they stand.
    }
}

template <class F>
bool StreamWrapper::Guard(F&& body) noexcept {
    try {
        return std::forward<F>(body)();
    } catch (...) {
        m_pFailure = std::current_exception();
        return false;
    }
}

void StreamWrapper::RethrowFailure() {
    if (const std::exception_ptr failure = std::exchange(m_pFailure, nullptr)) {
        std::rethrow_exception(failure);
    }
}

bool StreamWrapper::Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) {
    std::uint64_t read = 0;
    const bool good = Guard([&] {
        if (!m_pStream->get_CanRead()) {
            throw Host::NotSupportedException("Read method is not supported in the given stream type.");
        }
        // A host's stream may give less than it has; the engine takes less for the end.
        while (read < size) {
            const std::size_t got = m_pStream->Read(static_cast<char*>(pBuffer) + read, size - read);
            if (got == 0) {
                break;
            }
            if (got > size - read) {
                throw Host::IOException("The stream has read more than was asked for.");
            }
            read += got;
        }
        return true;
    });
    if (pRead != nullptr) {
        *pRead = read;
    }
    return good;
}

bool StreamWrapper::Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) {
    const bool good = Guard([&] {
        if (!m_pStream->get_CanWrite()) {
            throw Host::NotSupportedException("Write method is not supported in the given stream type!");
        }
        m_pStream->Write(pBuffer, size);
        return true;
    });
    if (pWritten != nullptr) {
        *pWritten = good ? size : 0;
    }
    return good;
}

bool StreamWrapper::Seek(std::int64_t offset, ImagingFramework::SeekOrigin origin, std::uint64_t* pPosition) {
    return Guard([&] {
        if (!m_pStream->get_CanSeek()) {
            if (offset == 0 && origin == ImagingFramework::SeekOrigin::Current) {
                return false; // a question for the position
            }
            throw Host::NotSupportedException("Seek method is not supported in the given stream type.");
        }
        if (origin > ImagingFramework::SeekOrigin::End) {
            throw Host::ArgumentException("dwOrigin has unappropriated value.", "dwOrigin");
        }
        const std::int64_t position = m_pStream->Seek(offset, static_cast<Host::SeekOrigin>(origin));
        if (position < 0) {
            throw Host::IOException("The stream has told a negative position.");
        }
        if (pPosition != nullptr) {
            *pPosition = static_cast<std::uint64_t>(position);
        }
        return true;
    });
}

bool StreamWrapper::Stat(std::uint64_t* pSize) {
    return Guard([&] {
        if (pSize == nullptr) {
            throw Host::ArgumentNullException("pstatstg");
        }
        if (!m_pStream->get_CanSeek()) {
            return false;
        }
        *pSize = static_cast<std::uint64_t>(std::max<std::int64_t>(m_pStream->get_Length(), 0));
        return true;
    });
}

bool StreamWrapper::SetSize(std::uint64_t size) {
    return Guard([&] {
        if (size > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
            throw Host::ArgumentOutOfRangeException("size");
        }
        m_pStream->SetLength(static_cast<std::int64_t>(size));
        return true;
    });
}

bool StreamWrapper::Commit() {
    return Guard([&] {
        m_pStream->Flush();
        return true;
    });
}

} // namespace Corvane::Rasterloom::Codecs
