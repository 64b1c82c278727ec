#pragma once

#include "Common/ProfileFile.h"

#include <filesystem>
#include <memory>

namespace ImagingFramework {

/// The folder of the system's colour profiles: the first that exists of `/usr/share/color/icc`, `color/icc` in the data
/// folders of the XDG base directory rules, and the user's own; the first of them when none does.
std::filesystem::path GetSystemProfileDirectory();

/// The sRGB profile of the system: "sRGB Color Space Profile.icm" in one of those folders or a folder below, without
/// regard to case, else the first of the usual names. Where there is none, a profile of version 2.1 is made once, in a
/// private temporary file that goes with the process. Thread-safe. Fails as `CreateProfileByData`.
std::shared_ptr<const ProfileFile> GetSRgbProfile();

} // namespace ImagingFramework
