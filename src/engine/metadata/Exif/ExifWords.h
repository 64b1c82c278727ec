#pragma once

#include "metadata/Exif/ExifKey.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace ImagingFramework {

/// What a value of an enumerated tag means, after EXIF 2.2.
struct ExifWord {
    ExifTagPlace Place;  ///< the thumbnail's tags stand with the main image's
    std::uint32_t Value; ///< of a text, its characters with the last one in the lowest byte
    std::string_view Text;
};

/// All of them, in the order of directory, tag and value.
std::span<const ExifWord> GetExifWords() noexcept;
/// Empty for a value that has no word.
std::string_view FindExifWord(ExifTagPlace place, std::uint32_t value) noexcept;

} // namespace ImagingFramework
