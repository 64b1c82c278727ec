#pragma once

#include <filesystem>
#include <memory>

namespace ImagingFramework {

class TempFile;

/// A colour profile in a file. Its owners share it; a temporary file is removed with the last of them, and nothing
/// writes to it meanwhile.
class ProfileFile {
public:
    /// A file that stays where it is.
    explicit ProfileFile(std::filesystem::path path);
    /// A temporary file, closed.
    explicit ProfileFile(std::unique_ptr<const TempFile> file);
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;
    ~ProfileFile();

    const std::filesystem::path& GetPath() const noexcept { return m_path; }
    /// True when sharing the object is as good as a copy of the file.
    bool IsTemporary() const noexcept { return m_pTempFile != nullptr; }

private:
    std::filesystem::path m_path;
    std::unique_ptr<const TempFile> m_pTempFile;
};

} // namespace ImagingFramework
