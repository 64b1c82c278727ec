#pragma once

#include "metadata/Streams/IStream.h"

#include <cstdint>
#include <filesystem>
#include <utility>

namespace ImagingFramework {

/// An open file of the operating system with a position of its own. Closed by the destructor. Every operation gives 0
/// or the system's error code (errno).
class FileHandle {
public:
    FileHandle() = default;
    FileHandle(FileHandle&& other) noexcept
        : m_hFile(std::exchange(other.m_hFile, -1)), m_bSeekable(other.m_bSeekable),
          m_uintPosition(other.m_uintPosition) {}
    FileHandle& operator=(FileHandle&& other) noexcept;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }

    /// Opens with the flags and the mode of the system's `open`; close-on-exec is added. Folders are refused.
    int Open(const std::filesystem::path& name, int flags, std::uint32_t mode = 0666);
    int Close() noexcept;
    bool IsOpen() const { return m_hFile >= 0; }
    /// False for pipes, terminals and their like.
    bool IsSeekable() const { return m_bSeekable; }

    /// Reads until `size` bytes came or the file ends.
    int Read(void* pBuffer, std::uint64_t size, std::uint64_t& read);
    int Write(const void* pBuffer, std::uint64_t size, std::uint64_t& written);
    int Seek(std::int64_t offset, SeekOrigin origin);
    std::uint64_t GetPosition() const { return m_uintPosition; }
    int GetSize(std::uint64_t& size) const;
    int SetSize(std::uint64_t size);
    /// Waits until the device has the data.
    int Commit();

private:
    int m_hFile = -1;
    bool m_bSeekable = false;
    std::uint64_t m_uintPosition = 0;
};

/// Copies everything from `source`, from its position on, to `target`; 0 or an error code.
int CopyFileData(FileHandle& source, FileHandle& target);

} // namespace ImagingFramework
