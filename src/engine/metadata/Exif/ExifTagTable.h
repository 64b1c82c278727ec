#pragma once

#include "metadata/Exif/ExifTypes.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace ImagingFramework {

/// A row of the table of tags that EXIF 2.2 defines.
struct ExifTagInfo {
    static constexpr std::uint32_t AnyCount = 0xFFFFFFFF;

    std::uint16_t Tag;
    ExifDataType Type;
    std::uint32_t Count; ///< of values; `AnyCount` for any number
    std::string_view Name;
    std::string_view Description;
};

/// The rows of a directory in the order of the tags. The thumbnail's are those of the main image.
std::span<const ExifTagInfo> GetExifTagTable(ExifIfd ifd) noexcept;
/// The row of a tag, null when the table of its directory does not have it.
const ExifTagInfo* FindExifTagInfo(std::uint16_t tag, ExifIfd ifd) noexcept;

} // namespace ImagingFramework
