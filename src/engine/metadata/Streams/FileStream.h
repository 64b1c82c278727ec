#pragma once

#include "MemoryManagement/MemPtr.h"
#include "metadata/Streams/FileHandle.h"
#include "metadata/Streams/IStream.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace ImagingFramework {

class TempFile;

enum class FileStreamFlags : std::uint32_t {
    Read = 1,
    Write = 2,
    Create = 4,          ///< create or truncate; without it the file must exist
    DeleteWhenEmpty = 8, ///< a file of length 0 is deleted on close
    /// What is written goes to a temporary file beside the target, which replaces it on close if `SetCompleted` was
    /// called.
    WriteThroughTemporaryFile = 16,
    CopyFolderSecurity = 32, ///< a new file takes the mode that the process gives to new files, as it does without
    DeleteOnRelease = 64,    ///< the file is deleted by the destructor
    Decoder = Read,
    Encoder = Write | Create | DeleteWhenEmpty | WriteThroughTemporaryFile | CopyFolderSecurity,
};

constexpr FileStreamFlags operator|(FileStreamFlags a, FileStreamFlags b) {
    return static_cast<FileStreamFlags>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}

/// A stream over a file. With `WriteThroughTemporaryFile` the target stays as it is until `Close`: it is replaced by a
/// rename when the stream was marked as completed and is not empty; in every other case the temporary file is deleted.
/// The new file has the permission bits of the old one. Where the name is a symbolic link, the file that it leads to is
/// replaced; what is not an ordinary file (a device, a pipe) is not replaced but written at close.
class FileStream final : public IFileStream {
public:
    /// Fails with `ArgumentNullPointerException` ("strFileName") for an empty name, `CreateTempFileException`, and the
    /// system's failures with "Unable to open file '...'.".
    FileStream(const std::filesystem::path& fileName, FileStreamFlags flags);
    /// Closes; failures are swallowed.
    ~FileStream() override;
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) override;
    bool Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) override;
    bool Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) override;
    bool Stat(std::uint64_t* pSize) override;
    bool SetSize(std::uint64_t size) override;
    bool Commit() override;
    std::filesystem::path GetFileName() const override { return m_strFileName; }

    /// Says that the file is whole, so that `Close` may replace the target.
    void SetCompleted(bool value) { m_bCompleted = value; }
    /// Puts the file in its place as the flags tell; may be repeated. Fails with the system's failures and "Unable to
    /// save data to file '...'."; the target is then as it was and the temporary file is gone.
    void Close();

private:
    bool Has(FileStreamFlags flag) const {
        return (static_cast<std::uint32_t>(m_enFlags) & static_cast<std::uint32_t>(flag)) != 0;
    }
    void OpenDirectly();
    void OpenTemporary();
    [[noreturn]] void FailToOpen(int error) const;
    int SaveTemporary();
    /// Gathers the bytes, or writes them.
    bool Put(const void* pBuffer, std::uint64_t size, std::uint64_t& written);
    /// Gives the gathered bytes to the temporary file.
    bool WriteGathered();
    /// Whether there is a file, and a buffer for `size` bytes; for none it may be null.
    bool IsUsable(const void* pBuffer, std::uint64_t size) const {
        return m_hFile.IsOpen() && (pBuffer != nullptr || size == 0);
    }

    std::filesystem::path m_strFileName;
    std::filesystem::path m_strTarget; ///< its absolute name; to be replaced, the file that a symbolic link leads to
    FileStreamFlags m_enFlags;
    bool m_bCompleted = false;
    bool m_bOrdinaryTarget = true;
    std::unique_ptr<TempFile> m_pTempFile;
    FileHandle m_hFile;
    /// Bytes for the temporary file that follow its position. The system takes large blocks twice as fast as rows, and
    /// nobody else sees the file before it is whole.
    MemPtr<std::uint8_t> m_gathered;
    std::uint64_t m_uintGathered = 0;
    int m_intWriteError = 0; ///< the first one; the target is not replaced then
};

} // namespace ImagingFramework
