#pragma once

#include "metadata/Exif/ExifContents.h"
#include "metadata/Exif/ExifKey.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ImagingFramework {

/// Values of a block as texts for people, in UTF-8.
class ExifText {
public:
    /// The contents must outlive this.
    explicit ExifText(const ExifContents& contents) : m_contents(contents) {}

    /// The value of a tag, in words where it has some; false when the tag is not there.
    bool GetTagString(std::uint16_t tag, ExifIfd ifd, std::string& text) const;
    /// All values as they are: numbers with ", " and texts with "; " between them, rationals as "1/2". Bytes that are
    /// no text are shown in hexadecimal if they are few, else by their number.
    static std::string TagToString(const ExifTag& value);
    /// What EXIF 2.2 tells of a value: words of enumerated tags, coordinates as "48.00/8.00/12.34N", time, versions,
    /// components, comments. False where it tells nothing.
    bool Exif22TagsToString(ExifTagPlace place, const ExifTag& value, std::string& text) const;

    /// The first text of an ASCII value, or of bytes, up to its NUL. Writers put UTF-8 there as well as the ANSI code
    /// page: what is no valid UTF-8 is taken for the latter.
    static std::string ReadText(std::span<const std::uint8_t> bytes);

private:
    std::optional<std::string> GpsTagToString(std::uint16_t tag, const ExifTag& value) const;
    std::optional<std::string> PrivateTagToString(std::uint16_t tag, const ExifTag& value) const;
    std::string CoordinateToString(std::uint16_t tag, const ExifTag& value) const;
    std::string CommentToString(std::span<const std::uint8_t> bytes) const;
    std::string Utf16ToString(std::span<const std::uint8_t> bytes) const;

    const ExifContents& m_contents;
};

} // namespace ImagingFramework
