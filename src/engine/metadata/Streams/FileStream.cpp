#include "metadata/Streams/FileStream.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/FileReplacement.h"
#include "metadata/Streams/TempFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ImagingFramework {

namespace {

constexpr std::uint64_t GatherSize = std::uint64_t{1} << 18;
/// Blocks from this size on are not worth the copy.
constexpr std::uint64_t DirectSize = std::uint64_t{1} << 16;
/// This system has one number for a missing file and a missing folder; the list of codes has two.
constexpr std::int32_t PathNotFoundCode = 3;

} // namespace

FileStream::FileStream(const std::filesystem::path& fileName, FileStreamFlags flags)
    : m_strFileName(fileName), m_strTarget(AbsoluteName(fileName)), m_enFlags(flags) {
    if (fileName.empty()) {
        throw ArgumentNullPointerException("strFileName");
    }
    if (Has(FileStreamFlags::WriteThroughTemporaryFile)) {
        OpenTemporary();
    } else {
        OpenDirectly();
    }
}

FileStream::~FileStream() {
    try {
        Close();
    } catch (...) {
        // Nobody is left to be told; an explicit `Close` reports.
    }
    if (Has(FileStreamFlags::DeleteOnRelease)) {
        ::unlink(m_strTarget.c_str());
    }
}

void FileStream::FailToOpen(int error) const {
    const std::string text = fmt::format("Unable to open file '{}'.", m_strFileName.string());
    if (error == ENOENT && ::access(m_strTarget.parent_path().c_str(), F_OK) != 0) {
        ThrowWin32Exception(PathNotFoundCode, text);
    }
    ThrowSystemError(error, text);
    throw FileOpenException(m_strFileName.string());
}

void FileStream::OpenDirectly() {
    const bool write = Has(FileStreamFlags::Write);
    int access = write ? (Has(FileStreamFlags::Read) ? O_RDWR : O_WRONLY) : O_RDONLY;
    if (Has(FileStreamFlags::Create)) {
        access |= O_CREAT | (write ? O_TRUNC : 0);
    }
    if (const int error = m_hFile.Open(m_strFileName, access)) {
        FailToOpen(error);
    }
}

void FileStream::OpenTemporary() {
    struct stat status {};
    const bool exists = ::stat(m_strFileName.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) {
        FailToOpen(errno);
    }
    if (exists && S_ISDIR(status.st_mode)) {
        FailToOpen(EISDIR);
    }
    if (!exists && !Has(FileStreamFlags::Create)) {
        FailToOpen(ENOENT);
    }
    // A rename would replace a file that may not be written, so the question is asked here.
    if (exists && ::access(m_strFileName.c_str(), W_OK) != 0) {
        FailToOpen(errno);
    }
    m_bOrdinaryTarget = !exists || S_ISREG(status.st_mode);
    std::filesystem::path folder; // that of the system
    if (m_bOrdinaryTarget) {
        m_strTarget = FollowLinks(m_strTarget);
        folder = m_strTarget.parent_path();
        if (::access(folder.c_str(), F_OK) != 0) {
            FailToOpen(errno);
        }
    }
    m_pTempFile = std::make_unique<TempFile>(folder, "IMG", ".tmp", false, true);
    m_hFile = std::move(m_pTempFile->GetHandle());
}

bool FileStream::WriteGathered() {
    if (m_uintGathered == 0) {
        return true;
    }
    std::uint64_t written = 0;
    const int error = m_hFile.Write(m_gathered.Get(), std::exchange(m_uintGathered, 0), written);
    if (m_intWriteError == 0) {
        m_intWriteError = error;
    }
    return error == 0;
}

bool FileStream::Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) {
    std::uint64_t read = 0;
    const bool good =
        IsUsable(pBuffer, size) && (size == 0 || (WriteGathered() && m_hFile.Read(pBuffer, size, read) == 0));
    if (pRead != nullptr) {
        *pRead = read;
    }
    return good;
}

bool FileStream::Put(const void* pBuffer, std::uint64_t size, std::uint64_t& written) {
    const bool gathers = m_pTempFile != nullptr && size < DirectSize;
    if ((!gathers || m_uintGathered + size > GatherSize) && !WriteGathered()) {
        return false;
    }
    if (gathers) {
        m_gathered.AllocateSize(m_gathered ? 0 : GatherSize);
        std::memcpy(m_gathered.Get() + m_uintGathered, pBuffer, size);
        m_uintGathered += size;
        written = size;
        return true;
    }
    const int error = m_hFile.Write(pBuffer, size, written);
    m_intWriteError = m_intWriteError != 0 ? m_intWriteError : error;
    return error == 0;
}

bool FileStream::Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) {
    std::uint64_t written = 0;
    const bool good = IsUsable(pBuffer, size) && (size == 0 || Put(pBuffer, size, written));
    if (pWritten != nullptr) {
        *pWritten = written;
    }
    return good;
}

bool FileStream::Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) {
    if (!m_hFile.IsOpen()) {
        return false;
    }
    const bool question = offset == 0 && origin == SeekOrigin::Current;
    if (!question && !WriteGathered()) {
        return false;
    }
    if (m_hFile.Seek(offset, origin) != 0) {
        return false;
    }
    if (pPosition != nullptr) {
        *pPosition = m_hFile.GetPosition() + m_uintGathered;
    }
    return true;
}

bool FileStream::Stat(std::uint64_t* pSize) {
    return m_hFile.IsOpen() && pSize != nullptr && WriteGathered() && m_hFile.GetSize(*pSize) == 0;
}

bool FileStream::SetSize(std::uint64_t size) {
    return m_hFile.IsOpen() && WriteGathered() && m_hFile.SetSize(size) == 0;
}

bool FileStream::Commit() {
    return m_hFile.IsOpen() && WriteGathered() && m_hFile.Commit() == 0;
}

int FileStream::SaveTemporary() {
    const std::filesystem::path& temporary = m_pTempFile->GetFilenameRef();
    if (!m_bOrdinaryTarget) {
        FileHandle source;
        FileHandle target;
        int error = source.Open(temporary, O_RDONLY);
        if (error == 0) {
            error = target.Open(m_strTarget, O_WRONLY);
        }
        if (error == 0) {
            error = CopyFileData(source, target);
        }
        return error != 0 ? error : target.Close();
    }
    int error = CopyPermissions(m_strTarget, temporary);
    if (error == 0) {
        error = ReplaceFile(temporary, m_strTarget);
    }
    m_pTempFile->SetDeleteAutomatically(error != 0);
    return error;
}

void FileStream::Close() {
    if (!m_hFile.IsOpen()) {
        return;
    }
    WriteGathered(); // a failure is in `m_intWriteError`
    std::uint64_t size = 0;
    const bool empty = Has(FileStreamFlags::DeleteWhenEmpty) && m_hFile.GetSize(size) == 0 && size == 0;
    int error = m_hFile.Close();
    error = m_intWriteError != 0 ? m_intWriteError : error;
    if (m_pTempFile == nullptr) {
        if (empty) {
            ::unlink(m_strTarget.c_str());
        }
    } else {
        if (error == 0 && m_bCompleted && !empty) {
            error = SaveTemporary();
        }
        m_pTempFile.reset(); // deletes the file unless it has become the target
    }
    if (error != 0 && Has(FileStreamFlags::Write)) {
        ThrowSystemError(error, fmt::format("Unable to save data to file '{}'.", m_strFileName.string()));
    }
}

} // namespace ImagingFramework
