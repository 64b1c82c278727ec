#include "metadata/Exif/ExifText.h"

#include "Common/AnsiCodePage.h"
#include "Common/Utf8.h"
#include "metadata/Exif/ExifByteOrder.h"
#include "metadata/Exif/ExifWords.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <string_view>

namespace ImagingFramework {

namespace {

namespace Gps {
constexpr std::uint16_t Latitude = 0x0002;
constexpr std::uint16_t Longitude = 0x0004;
constexpr std::uint16_t TimeStamp = 0x0007;
constexpr std::uint16_t DestLatitude = 0x0014;
constexpr std::uint16_t DestLongitude = 0x0016;
constexpr std::uint16_t ProcessingMethod = 0x001B;
constexpr std::uint16_t AreaInformation = 0x001C;
} // namespace Gps

constexpr std::uint16_t ExifVersion = 0x9000;
constexpr std::uint16_t ComponentsConfiguration = 0x9101;
constexpr std::uint16_t Flash = 0x9209;
constexpr std::uint16_t UserComment = 0x9286;
constexpr std::uint16_t FlashPixVersion = 0xA000;

constexpr std::size_t CommentCodeSize = 8;
constexpr std::size_t LongestHexadecimal = 16;

/// A list of all values, each made by `toText` from its index.
template <class ToText>
std::string Join(std::uint32_t count, ToText toText) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ", ") + toText(i);
    }
    return text;
}

bool IsPrintable(std::span<const std::uint8_t> bytes) {
    return std::ranges::all_of(bytes, [](std::uint8_t c) { return c >= 0x20 && c < 0x7F; });
}

std::string BytesToString(std::span<const std::uint8_t> bytes) {
    if (IsPrintable(bytes)) {
        return std::string(bytes.begin(), bytes.end());
    }
    if (bytes.size() > LongestHexadecimal) {
        return fmt::format("({} bytes)", bytes.size());
    }
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += fmt::format("{}{:02X}", text.empty() ? "" : " ", byte);
    }
    return text;
}

/// All texts of an ASCII value: some tags have several, with a NUL behind each.
std::string TextsToString(std::span<const std::uint8_t> bytes) {
    std::string text;
    while (!bytes.empty()) {
        const auto end = std::ranges::find(bytes, std::uint8_t{0});
        const auto size = static_cast<std::size_t>(end - bytes.begin());
        if (size != 0) {
            text += (text.empty() ? "" : "; ") + ExifText::ReadText(bytes.first(size));
        }
        bytes = bytes.subspan(std::min(size + 1, bytes.size()));
    }
    return text;
}

/// What the table of words is searched by: a single number, or a text of up to four characters.
std::optional<std::uint32_t> WordValue(const ExifTag& value) {
    if (value.Type == ExifDataType::Ascii) {
        std::uint32_t packed = 0;
        for (const std::uint8_t c : value.Data) {
            if (c == 0) {
                break;
            }
            packed = packed << 8 | c;
        }
        return packed;
    }
    if (value.Data.size() == 1) {
        return value.Data.front();
    }
    return value.GetCount() == 1 ? value.GetNumber() : std::nullopt;
}

std::string FlashToString(std::uint32_t bits) {
    static constexpr std::string_view returned[] = {"", "", ", return light not detected", ", return light detected"};
    static constexpr std::string_view modes[] = {"", ", compulsory firing", ", compulsory suppression", ", auto mode"};
    std::string text = (bits & 1) != 0 ? "Flash fired" : "Flash did not fire";
    text += returned[bits >> 1 & 3];
    text += modes[bits >> 3 & 3];
    text += (bits & 0x20) != 0 ? ", no flash function" : "";
    text += (bits & 0x40) != 0 ? ", red-eye reduction" : "";
    return text;
}

std::string ComponentsToString(std::span<const std::uint8_t> bytes) {
    static constexpr std::string_view names[] = {"", "Y", "Cb", "Cr", "R", "G", "B"};
    std::string text;
    for (const std::uint8_t component : bytes) {
        text += component < std::size(names) ? names[component] : "?";
    }
    return text;
}

/// "0220" is version 2.20. Nothing for anything but four digits.
std::optional<std::string> VersionToString(std::span<const std::uint8_t> bytes) {
    if (bytes.size() != 4 || !std::ranges::all_of(bytes, [](std::uint8_t c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const std::string digits(bytes.begin(), bytes.end());
    return digits.substr(digits[0] == '0' ? 1 : 0, digits[0] == '0' ? 1 : 2) + "." + digits.substr(2);
}

std::optional<std::string> SubSamplingToString(const ExifTag& value) {
    if (value.GetNumber(0) == 2U && value.GetNumber(1) == 1U) {
        return "YCbCr4:2:2";
    }
    return value.GetNumber(0) == 2U && value.GetNumber(1) == 2U ? std::optional<std::string>("YCbCr4:2:0")
                                                                : std::nullopt;
}

bool IsUnsignedTriple(const ExifTag& value) {
    return value.Type == ExifDataType::Rational && value.GetCount() == 3;
}

std::string TimeToString(const ExifTag& value) {
    return fmt::format("{:02.0f}:{:02.0f}:{:05.2f}", *value.GetReal(0), *value.GetReal(1), *value.GetReal(2));
}

} // namespace

bool ExifText::GetTagString(std::uint16_t tag, ExifIfd ifd, std::string& text) const {
    const ExifTag* const pValue = m_contents.FindTag(tag, ifd);
    if (pValue == nullptr) {
        return false;
    }
    if (!Exif22TagsToString({tag, ifd}, *pValue, text)) {
        text = TagToString(*pValue);
    }
    return true;
}

std::string ExifText::TagToString(const ExifTag& value) {
    const std::uint32_t count = value.GetCount();
    switch (value.Type) {
    case ExifDataType::Ascii:
        return TextsToString(value.Data);
    case ExifDataType::Undefined:
        return BytesToString(value.Data);
    case ExifDataType::Byte:
        return Join(count, [&](std::uint32_t i) { return std::to_string(value.GetValue<std::uint8_t>(i)); });
    case ExifDataType::SignedLong:
        return Join(count, [&](std::uint32_t i) { return std::to_string(value.GetValue<std::int32_t>(i)); });
    case ExifDataType::Rational:
        return Join(count, [&](std::uint32_t i) {
            const auto number = value.GetValue<UnsignedRational>(i);
            return fmt::format("{}/{}", number.Dividend, number.Divider);
        });
    case ExifDataType::SignedRational:
        return Join(count, [&](std::uint32_t i) {
            const auto number = value.GetValue<Rational>(i);
            return fmt::format("{}/{}", number.Dividend, number.Divider);
        });
    default:
        return Join(count, [&](std::uint32_t i) { return std::to_string(value.GetNumber(i).value_or(0)); });
    }
}

bool ExifText::Exif22TagsToString(ExifTagPlace place, const ExifTag& value, std::string& text) const {
    if (const std::optional<std::uint32_t> number = WordValue(value)) {
        text = FindExifWord(place, *number);
        if (!text.empty()) {
            return true;
        }
    }
    std::optional<std::string> found;
    if (place.Ifd == ExifIfd::Gps) {
        found = GpsTagToString(place.Tag, value);
    } else if (place.Ifd == ExifIfd::Exif) {
        found = PrivateTagToString(place.Tag, value);
    } else if (place.Tag == ExifTagId::YCbCrSubSampling) {
        found = SubSamplingToString(value);
    }
    text = found.value_or("");
    return found.has_value();
}

std::optional<std::string> ExifText::GpsTagToString(std::uint16_t tag, const ExifTag& value) const {
    switch (tag) {
    case Gps::Latitude:
    case Gps::Longitude:
    case Gps::DestLatitude:
    case Gps::DestLongitude:
        return IsUnsignedTriple(value) ? std::optional(CoordinateToString(tag, value)) : std::nullopt;
    case Gps::TimeStamp:
        return IsUnsignedTriple(value) ? std::optional(TimeToString(value)) : std::nullopt;
    case Gps::ProcessingMethod:
    case Gps::AreaInformation:
        return CommentToString(value.Data);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> ExifText::PrivateTagToString(std::uint16_t tag, const ExifTag& value) const {
    switch (tag) {
    case ExifVersion:
    case FlashPixVersion:
        return VersionToString(value.Data);
    case ComponentsConfiguration:
        return ComponentsToString(value.Data);
    case Flash: {
        const std::optional<std::uint32_t> bits = value.GetNumber();
        return bits ? std::optional(FlashToString(*bits)) : std::nullopt;
    }
    case UserComment:
        return CommentToString(value.Data);
    default:
        return std::nullopt;
    }
}

std::string ExifText::ReadText(std::span<const std::uint8_t> bytes) {
    const auto end = std::ranges::find(bytes, std::uint8_t{0});
    const std::string text(bytes.begin(), end);
    return IsUtf8(text) ? text : AnsiToUtf8(std::as_bytes(std::span(text)));
}

/// Degrees, minutes, seconds, and the letter of the tag before.
std::string ExifText::CoordinateToString(std::uint16_t tag, const ExifTag& value) const {
    const ExifTag* const pLetter = m_contents.FindTag(static_cast<std::uint16_t>(tag - 1), ExifIfd::Gps);
    const bool hasLetter = pLetter != nullptr && pLetter->Type == ExifDataType::Ascii;
    const std::string letter = hasLetter ? ReadText(std::span(pLetter->Data).first(1)) : std::string();
    return fmt::format("{:.2f}/{:.2f}/{:.2f}{}", *value.GetReal(0), *value.GetReal(1), *value.GetReal(2), letter);
}

/// A comment says its encoding in its first eight bytes.
std::string ExifText::CommentToString(std::span<const std::uint8_t> bytes) const {
    if (bytes.size() < CommentCodeSize) {
        return ReadText(bytes);
    }
    const std::string_view code(reinterpret_cast<const char*>(bytes.data()), CommentCodeSize);
    const std::span<const std::uint8_t> body = bytes.subspan(CommentCodeSize);
    if (code == std::string_view("UNICODE\0", CommentCodeSize)) {
        return Utf16ToString(body);
    }
    if (code == std::string_view("JIS\0\0\0\0\0", CommentCodeSize)) {
        return BytesToString(body);
    }
    const bool isCode = code == std::string_view("ASCII\0\0\0", CommentCodeSize) ||
                        std::ranges::all_of(code, [](char c) { return c == 0; });
    std::string text = ReadText(isCode ? body : bytes);
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

/// In the order of the block, unless a mark at the beginning says otherwise.
std::string ExifText::Utf16ToString(std::span<const std::uint8_t> bytes) const {
    constexpr std::uint16_t mark = 0xFEFF;
    ExifByteOrder order(m_contents.IsLittleEndian);
    if (bytes.size() >= 2 && ExifByteOrder(!m_contents.IsLittleEndian).ReadWord(bytes.data()) == mark) {
        order = ExifByteOrder(!m_contents.IsLittleEndian);
    }
    std::string text;
    char32_t high = 0; // the first half of a surrogate pair
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t unit = order.ReadWord(bytes.data() + i);
        if (unit == 0) {
            break;
        }
        if (unit >= 0xD800 && unit < 0xDC00) {
            high = unit;
        } else if (unit != mark || i != 0) {
            const bool isPair = high != 0 && unit >= 0xDC00 && unit < 0xE000;
            AppendUtf8(text, isPair ? 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00) : unit);
            high = 0;
        }
    }
    return text;
}

} // namespace ImagingFramework
