#pragma once

#include "Common/ProfileFile.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

// Colour profiles between files and bytes.

namespace ImagingFramework {

/// The size field of a profile has 32 bits.
inline constexpr std::uint64_t MaximumProfileSize = 0xFFFFFFFF;

/// Fails with `CmUnappropriateProfileException` when the file is no profile, or one whose colour space is not known.
void ValidateColorProfileConsistency(const std::filesystem::path& name);

/// Bytes of the file. A null name fails with `CmException` ("Bitmap doesn't have color profile."), a file that does not
/// open with `FileOpenException`.
std::uint64_t GetProfileDataSize(const std::filesystem::path* pFileName);

/// The bytes of the file. Fails as `GetProfileDataSize`, and with `CmException` ("Unable to load data from file
/// '...'.") when it cannot be read, or is no file of bytes or too large for a profile.
std::vector<std::uint8_t> GetProfileData(const std::filesystem::path* pFileName);

/// Puts the bytes into a private temporary file (mode 0600). Fails with `CreateTempFileException` and
/// `FileWriteException`.
std::shared_ptr<const ProfileFile> CreateProfileByData(std::span<const std::uint8_t> data);

/// Copies a file to a private temporary one. Fails as `GetProfileData` and `CreateProfileByData`.
std::shared_ptr<const ProfileFile> DuplicateColorProfile(const std::filesystem::path& name);
/// The same where a copy is needed: a temporary file is shared, since nobody changes it. Null gives null.
std::shared_ptr<const ProfileFile> DuplicateColorProfile(const std::shared_ptr<const ProfileFile>& profile);

} // namespace ImagingFramework
