#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {

/// A colour profile in a file. Rasters share it; a temporary file is removed with its last owner.
class ProfileFile {
public:
    /// Copies the profile at `path` to a private temporary file (mode 0600). Fails with the file failures.
    static std::shared_ptr<const ProfileFile> Duplicate(const std::filesystem::path& path);
    /// Writes profile bytes to a private temporary file.
    static std::shared_ptr<const ProfileFile> FromBytes(std::span<const std::uint8_t> bytes);

    ProfileFile(std::filesystem::path path, bool temporary) : m_path(std::move(path)), m_bTemporary(temporary) {}
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;
    ~ProfileFile();

    const std::filesystem::path& GetPath() const noexcept { return m_path; }
    std::uint64_t GetSize() const;
    std::vector<std::uint8_t> ReadBytes() const;

private:
    std::filesystem::path m_path;
    bool m_bTemporary;
};

} // namespace ImagingFramework
