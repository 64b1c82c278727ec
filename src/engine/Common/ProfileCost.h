#pragma once

#include <cstdint>
#include <span>

namespace ImagingFramework {

/// False for a profile whose processing elements would keep a machine busy for minutes: a few kilobytes can name one
/// table a hundred thousand times, and every colour would pass through all of them. Profiles in use stay far below the
/// limit. What the bytes are worth otherwise is not looked at.
bool IsProfileCostBounded(std::span<const std::uint8_t> profile);

/// False when a text claims to be there in more languages than the profile has room for. The library allocates for all of
/// them before it looks, which is 200 MiB for a file of some hundred bytes.
bool HasRoomForTexts(std::span<const std::uint8_t> profile);

} // namespace ImagingFramework
