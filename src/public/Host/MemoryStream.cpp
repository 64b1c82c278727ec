#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include "metadata/Streams/MemoryStream.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <limits>

namespace Corvane::Rasterloom::Host {

MemoryStream::MemoryStream() : m_pStream(std::make_unique<ImagingFramework::MemoryStream>()) {}

MemoryStream::MemoryStream(std::vector<std::uint8_t> bytes)
    : m_pStream(std::make_unique<ImagingFramework::MemoryStream>(std::move(bytes))) {}

MemoryStream::~MemoryStream() = default;

void MemoryStream::CheckOpen() const {
    if (m_bClosed) {
        throw ObjectDisposedException("MemoryStream");
    }
}

const std::vector<std::uint8_t>& MemoryStream::GetBuffer() const {
    return m_pStream->GetBytes();
}

std::int64_t MemoryStream::get_Length() {
    CheckOpen();
    return static_cast<std::int64_t>(GetBuffer().size());
}

std::int64_t MemoryStream::get_Position() {
    return Seek(0, SeekOrigin::Current);
}

std::size_t MemoryStream::Read(void* buffer, std::size_t size) {
    CheckOpen();
    std::uint64_t read = 0;
    if (!m_pStream->Read(buffer, size, &read)) {
        throw ArgumentNullException("buffer");
    }
    return read;
}

void MemoryStream::Write(const void* buffer, std::size_t size) {
    CheckOpen();
    if (buffer == nullptr && size != 0) {
        throw ArgumentNullException("buffer");
    }
    if (!m_pStream->Write(buffer, size, nullptr)) {
        throw IOException("The memory stream cannot grow.");
    }
}

std::int64_t MemoryStream::Seek(std::int64_t offset, SeekOrigin origin) {
    CheckOpen();
    std::uint64_t position = 0;
    if (!m_pStream->Seek(offset, static_cast<ImagingFramework::SeekOrigin>(origin), &position)) {
        throw IOException("The position lies outside the stream.");
    }
    return static_cast<std::int64_t>(position);
}

void MemoryStream::SetLength(std::int64_t value) {
    CheckOpen();
    if (value < 0) {
        throw ArgumentOutOfRangeException("value");
    }
    if (!m_pStream->SetSize(static_cast<std::uint64_t>(value))) {
        throw IOException("The memory stream cannot grow.");
    }
}

} // namespace Corvane::Rasterloom::Host
