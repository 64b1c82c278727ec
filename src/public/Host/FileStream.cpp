#include <Corvane/Rasterloom/Host/FileStream.h>

#include "metadata/Streams/FileHandle.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <system_error>

namespace Corvane::Rasterloom::Host {

namespace {

int OpenFlags(FileMode mode, FileAccess access) {
    const int direction =
        access == FileAccess::ReadWrite ? O_RDWR : (access == FileAccess::Write ? O_WRONLY : O_RDONLY);
    switch (mode) {
    case FileMode::CreateNew:
        return direction | O_CREAT | O_EXCL;
    case FileMode::Create:
        return direction | O_CREAT | O_TRUNC;
    case FileMode::Open:
        return direction;
    case FileMode::OpenOrCreate:
    case FileMode::Append:
        return direction | O_CREAT;
    case FileMode::Truncate:
        return direction | O_TRUNC;
    }
    throw ArgumentOutOfRangeException("mode");
}

} // namespace

FileStream::FileStream(const std::filesystem::path& path, FileMode mode, FileAccess access)
    : m_strName(path), m_enAccess(access), m_hFile(std::make_unique<ImagingFramework::FileHandle>()) {
    if (path.empty()) {
        throw ArgumentException("The file name is empty.", "path");
    }
    if (access < FileAccess::Read || access > FileAccess::ReadWrite) {
        throw ArgumentOutOfRangeException("access");
    }
    const bool truncates = mode == FileMode::Create || mode == FileMode::Truncate;
    if (access == FileAccess::Read && (truncates || mode == FileMode::CreateNew || mode == FileMode::Append)) {
        throw ArgumentException("The mode needs a file that can be written.", "access");
    }
    if (const int error = m_hFile->Open(path, OpenFlags(mode, access))) {
        Fail("open", error);
    }
    if (mode == FileMode::Append && m_hFile->IsSeekable()) {
        Seek(0, SeekOrigin::End);
    }
}

FileStream::~FileStream() = default;

void FileStream::Fail(const char* operation, int error) const {
    const std::string text = fmt::format("Unable to {} file '{}': {}.", operation, m_strName.string(),
                                         std::generic_category().message(error));
    switch (error) {
    case ENOENT: {
        std::error_code ignored;
        const std::filesystem::path folder = m_strName.parent_path();
        if (folder.empty() || std::filesystem::exists(folder, ignored)) {
            throw FileNotFoundException(text);
        }
        throw DirectoryNotFoundException(text);
    }
    case ENOTDIR:
        throw DirectoryNotFoundException(text);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        throw UnauthorizedAccessException(text);
    default:
        throw IOException(text);
    }
}

void FileStream::CheckOpen() const {
    if (!m_hFile->IsOpen()) {
        throw ObjectDisposedException("FileStream");
    }
}

void FileStream::CheckSeek() const {
    CheckOpen();
    if (!m_hFile->IsSeekable()) {
        throw NotSupportedException("The file cannot seek.");
    }
}

bool FileStream::Allows(FileAccess access) const {
    return (static_cast<std::uint32_t>(m_enAccess) & static_cast<std::uint32_t>(access)) != 0;
}

bool FileStream::get_CanRead() const {
    return m_hFile->IsOpen() && Allows(FileAccess::Read);
}
bool FileStream::get_CanWrite() const {
    return m_hFile->IsOpen() && Allows(FileAccess::Write);
}
bool FileStream::get_CanSeek() const {
    return m_hFile->IsOpen() && m_hFile->IsSeekable();
}

std::int64_t FileStream::get_Length() {
    CheckSeek();
    std::uint64_t size = 0;
    if (const int error = m_hFile->GetSize(size)) {
        Fail("measure", error);
    }
    return static_cast<std::int64_t>(size);
}

std::int64_t FileStream::get_Position() {
    CheckSeek();
    return static_cast<std::int64_t>(m_hFile->GetPosition());
}

std::size_t FileStream::Read(void* buffer, std::size_t size) {
    CheckOpen();
    if (!Allows(FileAccess::Read)) {
        throw NotSupportedException("The file is not open for reading.");
    }
    if (buffer == nullptr && size != 0) {
        throw ArgumentNullException("buffer");
    }
    std::uint64_t read = 0;
    if (const int error = m_hFile->Read(buffer, size, read)) {
        Fail("read", error);
    }
    return read;
}

void FileStream::Write(const void* buffer, std::size_t size) {
    CheckOpen();
    if (!Allows(FileAccess::Write)) {
        throw NotSupportedException("The file is not open for writing.");
    }
    if (buffer == nullptr && size != 0) {
        throw ArgumentNullException("buffer");
    }
    std::uint64_t written = 0;
    if (const int error = m_hFile->Write(buffer, size, written)) {
        Fail("write", error);
    }
}

std::int64_t FileStream::Seek(std::int64_t offset, SeekOrigin origin) {
    CheckSeek();
    if (m_hFile->Seek(offset, static_cast<ImagingFramework::SeekOrigin>(origin)) != 0) {
        throw IOException("The position lies outside the stream.");
    }
    return static_cast<std::int64_t>(m_hFile->GetPosition());
}

void FileStream::SetLength(std::int64_t value) {
    CheckSeek();
    if (value < 0) {
        throw ArgumentOutOfRangeException("value");
    }
    if (!Allows(FileAccess::Write)) {
        throw NotSupportedException("The file is not open for writing.");
    }
    if (const int error = m_hFile->SetSize(static_cast<std::uint64_t>(value))) {
        Fail("set the length of", error);
    }
}

void FileStream::Flush() {
    CheckOpen();
} // nothing is held back

void FileStream::Close() {
    if (const int error = m_hFile->Close(); error != 0 && Allows(FileAccess::Write)) {
        Fail("close", error);
    }
}

} // namespace Corvane::Rasterloom::Host
