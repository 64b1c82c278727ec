#include "metadata/Streams/FileHandle.h"

#include "metadata/Streams/MemoryStream.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr std::uint64_t MaxTransfer = std::uint64_t{1} << 30; // the system moves less than 2 GiB in one call

int LastError() {
    return errno;
}

} // namespace

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    if (this != &other) {
        Close();
        m_hFile = std::exchange(other.m_hFile, -1);
        m_bSeekable = other.m_bSeekable;
        m_uintPosition = other.m_uintPosition;
    }
    return *this;
}

int FileHandle::Open(const std::filesystem::path& name, int flags, std::uint32_t mode) {
    Close();
    do {
        m_hFile = ::open(name.c_str(), flags | O_CLOEXEC, static_cast<mode_t>(mode));
    } while (m_hFile < 0 && LastError() == EINTR);
    if (m_hFile < 0) {
        return LastError();
    }
    struct stat status {};
    if (::fstat(m_hFile, &status) == 0 && S_ISDIR(status.st_mode)) {
        Close();
        return EISDIR;
    }
    const off_t position = ::lseek(m_hFile, 0, SEEK_CUR);
    m_bSeekable = position >= 0 && !S_ISCHR(status.st_mode);
    m_uintPosition = 0;
    return 0;
}

int FileHandle::Close() noexcept {
    const int handle = std::exchange(m_hFile, -1);
    // After EINTR the handle is gone all the same.
    return handle >= 0 && ::close(handle) != 0 && LastError() != EINTR ? LastError() : 0;
}

int FileHandle::Read(void* pBuffer, std::uint64_t size, std::uint64_t& read) {
    read = 0;
    auto* const buffer = static_cast<char*>(pBuffer);
    while (read < size) {
        const auto count = static_cast<std::size_t>(std::min(size - read, MaxTransfer));
        const ssize_t got = m_bSeekable ? ::pread(m_hFile, buffer + read, count, static_cast<off_t>(m_uintPosition))
                                        : ::read(m_hFile, buffer + read, count);
        if (got < 0 && LastError() == EINTR) {
            continue;
        }
        if (got < 0) {
            return LastError();
        }
        if (got == 0) {
            break;
        }
        read += static_cast<std::uint64_t>(got);
        m_uintPosition += static_cast<std::uint64_t>(got);
    }
    return 0;
}

int FileHandle::Write(const void* pBuffer, std::uint64_t size, std::uint64_t& written) {
    written = 0;
    const auto* const buffer = static_cast<const char*>(pBuffer);
    while (written < size) {
        const auto count = static_cast<std::size_t>(std::min(size - written, MaxTransfer));
        const ssize_t put = m_bSeekable ? ::pwrite(m_hFile, buffer + written, count, static_cast<off_t>(m_uintPosition))
                                        : ::write(m_hFile, buffer + written, count);
        if (put < 0 && LastError() == EINTR) {
            continue;
        }
        if (put < 0) {
            return LastError();
        }
        if (put == 0) {
            return EIO;
        }
        written += static_cast<std::uint64_t>(put);
        m_uintPosition += static_cast<std::uint64_t>(put);
    }
    return 0;
}

int FileHandle::Seek(std::int64_t offset, SeekOrigin origin) {
    if (!m_bSeekable) {
        return ESPIPE;
    }
    std::uint64_t size = 0;
    if (origin == SeekOrigin::End) {
        if (const int error = GetSize(size)) {
            return error;
        }
    }
    return MovePosition(offset, origin, size, m_uintPosition) ? 0 : EINVAL;
}

int FileHandle::GetSize(std::uint64_t& size) const {
    if (!m_bSeekable) {
        return ESPIPE;
    }
    // Block devices have no size in their status, but an end.
    const off_t end = ::lseek(m_hFile, 0, SEEK_END);
    if (end < 0) {
        return LastError();
    }
    size = static_cast<std::uint64_t>(end);
    return 0;
}

int FileHandle::SetSize(std::uint64_t size) {
    if (size > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
        return EFBIG;
    }
    return ::ftruncate(m_hFile, static_cast<off_t>(size)) == 0 ? 0 : LastError();
}

int FileHandle::Commit() {
    // Pipes and their like have nothing to wait for.
    return ::fsync(m_hFile) == 0 || LastError() == EINVAL ? 0 : LastError();
}

int CopyFileData(FileHandle& source, FileHandle& target) {
    std::vector<char> block(std::size_t{1} << 16);
    for (;;) {
        std::uint64_t read = 0;
        if (const int error = source.Read(block.data(), block.size(), read); error != 0 || read == 0) {
            return error;
        }
        std::uint64_t written = 0;
        if (const int error = target.Write(block.data(), read, written)) {
            return error;
        }
    }
}

} // namespace ImagingFramework
