#pragma once

#include "metadata/Exif/ExifTypes.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ImagingFramework {

/// Where a tag stands.
struct ExifTagPlace {
    std::uint16_t Tag;
    ExifIfd Ifd;
};

/// Keys of the EXIF dictionary. A key is a bare tag number up to 0xFFFF, which stands for the directory that EXIF 2.2
/// gives the tag, a pseudo key 0xF0000000 + directory * 0x10000 + tag, or the key of the thumbnail itself.
class ExifKey {
public:
    static constexpr std::uint32_t Thumbnail = 0xF00FF00F;

    static bool IsPseudoKey(std::uint32_t key) noexcept;
    static std::uint32_t GetIfdNumber(std::uint32_t key) noexcept { return key >> 16 & 0xFFF; }
    static std::uint16_t GetTagId(std::uint32_t key) noexcept { return static_cast<std::uint16_t>(key); }
    /// The directory of a bare tag number. 1 counts as a tag of the interoperability directory, not of GPS; numbers
    /// that no table has are those of the main image.
    static ExifIfd GetTagIfd(std::uint16_t tag) noexcept;
    /// Fails with `ArgumentException` ("key") for the thumbnail and for what is neither bare nor pseudo.
    static ExifTagPlace TranslateKey(std::uint32_t key);
    /// The pseudo key of a tag.
    static std::uint32_t MakeKey(ExifTagPlace place) noexcept;

    /// The symbolic name, as `ExifImageWidth`; false for a key without one.
    static bool KeyToName(std::uint32_t key, std::string& text);
    /// The reverse, a pseudo key; names compare without regard to case.
    static bool NameToKey(std::string_view text, std::uint32_t& key);
};

} // namespace ImagingFramework
