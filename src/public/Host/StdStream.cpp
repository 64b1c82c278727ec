#include <Corvane/Rasterloom/Host/StdStream.h>

#include "metadata/Streams/MemoryStream.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>
#include <array>
#include <istream>
#include <ostream>

namespace Corvane::Rasterloom::Host {

namespace {

constexpr std::streamoff NoPosition = -1;

} // namespace

StdStream::StdStream(std::istream& stream) : StdStream(stream.rdbuf(), true, false) {}
StdStream::StdStream(std::ostream& stream) : StdStream(stream.rdbuf(), false, true) {}
StdStream::StdStream(std::iostream& stream) : StdStream(stream.rdbuf(), true, true) {}

StdStream::StdStream(std::streambuf* buffer, bool readable, bool writable)
    : m_pBuffer(buffer), m_bReadable(readable), m_bWritable(writable) {
    if (buffer == nullptr) {
        throw ArgumentException("The stream has no buffer.", "stream");
    }
    const auto side = readable ? std::ios_base::in : std::ios_base::out;
    const std::streamoff position = buffer->pubseekoff(0, std::ios_base::cur, side);
    m_bSeekable = position != NoPosition;
    m_intPosition = m_bSeekable ? position : 0;
}

StdStream::~StdStream() {
    try {
        Close();
    } catch (...) {
        // Nobody is left to be told; an explicit `Close` reports.
    }
}

void StdStream::CheckOpen() const {
    if (m_pBuffer == nullptr) {
        throw ObjectDisposedException("StdStream");
    }
}

void StdStream::CheckSeek() const {
    CheckOpen();
    if (!m_bSeekable) {
        throw NotSupportedException("The stream cannot seek.");
    }
}

std::int64_t StdStream::get_Length() {
    CheckSeek();
    const auto side = m_bReadable ? std::ios_base::in : std::ios_base::out;
    const std::streamoff end = m_pBuffer->pubseekoff(0, std::ios_base::end, side);
    m_enSide = Side::Neither;
    if (end == NoPosition) {
        throw IOException("Unable to measure the stream.");
    }
    return end;
}

std::int64_t StdStream::get_Position() {
    CheckSeek();
    return m_intPosition;
}

std::size_t StdStream::Read(void* buffer, std::size_t size) {
    CheckOpen();
    if (!m_bReadable) {
        throw NotSupportedException("The stream is not open for reading.");
    }
    if (buffer == nullptr && size != 0) {
        throw ArgumentNullException("buffer");
    }
    if (m_bSeekable && m_enSide != Side::Reading) {
        if (m_pBuffer->pubseekpos(m_intPosition, std::ios_base::in) == NoPosition) {
            return 0; // some buffers refuse to stand beyond their end
        }
        m_enSide = Side::Reading;
    }
    const std::streamsize count = m_pBuffer->sgetn(static_cast<char*>(buffer), static_cast<std::streamsize>(size));
    m_intPosition += count;
    return static_cast<std::size_t>(count);
}

void StdStream::PutZerosUpToPosition() {
    const std::streamoff end = m_pBuffer->pubseekoff(0, std::ios_base::end, std::ios_base::out);
    if (end == NoPosition) {
        throw IOException("Unable to seek the stream.");
    }
    static constexpr std::array<char, 4096> zeros{};
    for (std::int64_t gap = m_intPosition - end; gap > 0;) {
        const std::streamsize now = std::min<std::int64_t>(gap, zeros.size());
        if (m_pBuffer->sputn(zeros.data(), now) != now) {
            throw IOException("Unable to write to the stream.");
        }
        gap -= now;
    }
}

void StdStream::Write(const void* buffer, std::size_t size) {
    CheckOpen();
    if (!m_bWritable) {
        throw NotSupportedException("The stream is not open for writing.");
    }
    if (buffer == nullptr && size != 0) {
        throw ArgumentNullException("buffer");
    }
    if (m_bSeekable && m_enSide != Side::Writing) {
        if (m_pBuffer->pubseekpos(m_intPosition, std::ios_base::out) == NoPosition) {
            PutZerosUpToPosition();
        }
        m_enSide = Side::Writing;
    }
    const auto count = static_cast<std::streamsize>(size);
    if (m_pBuffer->sputn(static_cast<const char*>(buffer), count) != count) {
        throw IOException("Unable to write to the stream.");
    }
    m_intPosition += count;
}

std::int64_t StdStream::Seek(std::int64_t offset, SeekOrigin origin) {
    CheckSeek();
    auto position = static_cast<std::uint64_t>(m_intPosition);
    const std::int64_t length = origin == SeekOrigin::End ? get_Length() : 0;
    if (!ImagingFramework::MovePosition(offset, static_cast<ImagingFramework::SeekOrigin>(origin),
                                        static_cast<std::uint64_t>(length), position)) {
        throw IOException("The position lies outside the stream.");
    }
    if (static_cast<std::int64_t>(position) != m_intPosition) {
        m_intPosition = static_cast<std::int64_t>(position);
        m_enSide = Side::Neither;
    }
    return m_intPosition;
}

void StdStream::SetLength(std::int64_t) {
    CheckOpen();
    throw NotSupportedException("The length of the stream cannot be set.");
}

void StdStream::Flush() {
    CheckOpen();
    if (m_bWritable && m_pBuffer->pubsync() != 0) {
        throw IOException("Unable to flush the stream.");
    }
}

void StdStream::Close() {
    if (m_pBuffer != nullptr) {
        std::streambuf* const buffer = std::exchange(m_pBuffer, nullptr);
        if (m_bWritable && buffer->pubsync() != 0) {
            throw IOException("Unable to flush the stream.");
        }
    }
}

} // namespace Corvane::Rasterloom::Host
