#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace ImagingFramework {

/// The profile that the X server keeps for its first screen (the property `_ICC_PROFILE` of the root window), as bytes;
/// empty without a server or a profile.
std::vector<std::uint8_t> ReadXScreenProfile();

/// The file of the profile that colord has assigned to a display; empty where colord does not run or knows none.
std::filesystem::path FindColordScreenProfile();

} // namespace ImagingFramework
