#pragma once

#include <Corvane/Rasterloom/Host/Stream.h>

#include <filesystem>
#include <memory>

namespace ImagingFramework {
class FileHandle;
}

namespace Corvane::Rasterloom::Host {

/// How a file is opened.
enum class FileMode : std::uint32_t {
    CreateNew = 1,    ///< the file must not exist
    Create = 2,       ///< made, or truncated
    Open = 3,         ///< the file must exist
    OpenOrCreate = 4, ///< made unless it exists
    Truncate = 5,     ///< the file must exist and is truncated
    Append = 6,       ///< as `OpenOrCreate`, and the position is the end
};

/// What a file is opened for.
enum class FileAccess : std::uint32_t { Read = 1, Write = 2, ReadWrite = 3 };

/// A stream over a file, without a buffer of its own. Pipes and terminals cannot seek.
class RASTERLOOM_API FileStream : public Stream {
public:
    /// Fails with `ArgumentException` ("path") for an empty name, `FileNotFoundException`,
    /// `DirectoryNotFoundException`, `UnauthorizedAccessException`, `IOException`.
    FileStream(const std::filesystem::path& path, FileMode mode, FileAccess access = FileAccess::ReadWrite);
    ~FileStream() override;

    /// The name that it was opened by.
    const std::filesystem::path& get_Name() const { return m_strName; }
    bool get_CanRead() const override;
    bool get_CanWrite() const override;
    bool get_CanSeek() const override;
    std::int64_t get_Length() override;
    std::int64_t get_Position() override;
    std::size_t Read(void* buffer, std::size_t size) override;
    void Write(const void* buffer, std::size_t size) override;
    std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override;
    void SetLength(std::int64_t value) override;
    void Flush() override;
    void Close() override;

private:
    void CheckOpen() const;
    void CheckSeek() const;
    bool Allows(FileAccess access) const;
    [[noreturn]] void Fail(const char* operation, int error) const;

    std::filesystem::path m_strName;
    FileAccess m_enAccess;
    std::unique_ptr<ImagingFramework::FileHandle> m_hFile;
};

} // namespace Corvane::Rasterloom::Host
