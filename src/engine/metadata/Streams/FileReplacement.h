#pragma once

#include <cstdint>
#include <filesystem>

namespace ImagingFramework {

/// The name that stays right when the process changes its working folder; the name itself where there is no such folder.
std::filesystem::path AbsoluteName(const std::filesystem::path& name);

/// The file that a chain of symbolic links leads to, whether it exists or not; the name itself when it is no link.
std::filesystem::path FollowLinks(const std::filesystem::path& name);

/// The mode of a file that the process creates anew: 0666 without the bits of the file mode creation mask.
std::uint32_t DefaultFileMode();

/// Gives `file` the permission bits, and where allowed the owner, of `model`; the default mode where there is no such
/// file. 0 or an error code.
int CopyPermissions(const std::filesystem::path& model, const std::filesystem::path& file);

/// Puts `file` in the place of `target` in one step; where they lie on different file systems, by a copy beside the
/// target. `file` is gone afterwards. 0 or an error code, with both files as they were.
int ReplaceFile(const std::filesystem::path& file, const std::filesystem::path& target);

} // namespace ImagingFramework
