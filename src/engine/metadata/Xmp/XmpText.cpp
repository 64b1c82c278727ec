#include "metadata/Xmp/XmpText.h"

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <expat.h>
#include <memory>

namespace ImagingFramework {

namespace {

constexpr std::size_t MaxNameLength = 4096;

bool IsForbiddenControl(char32_t c) noexcept {
    return c < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

bool IsForbidden(char32_t c) noexcept {
    return c == InvalidCodePoint || c == 0xFFFE || c == 0xFFFF;
}

constexpr bool IsLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool IsAsciiNameCharacter(char c) noexcept {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
}

/// Names beyond ASCII are what the reader of our packets takes for names.
bool IsNameToExpat(std::string_view text) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                              XML_ParserFree);
    if (!parser) {
        throw MemoryException();
    }
    const std::string document = "<" + std::string(text) + "/>";
    return XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE) == XML_STATUS_OK;
}

constexpr char ToLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char ToUpper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

bool IsXmlText(std::string_view text) noexcept {
    while (!text.empty()) {
        const char32_t c = TakeCodePoint(text);
        if (IsForbidden(c) || IsForbiddenControl(c)) {
            return false;
        }
    }
    return true;
}

std::string ToXmlText(std::string_view text) {
    std::string result(text);
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c - 0x20) < 0x60; };
    text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin()));
    while (!text.empty()) {
        const std::size_t at = result.size() - text.size();
        const char32_t c = TakeCodePoint(text);
        if (IsForbidden(c)) {
            throw UnexpectedException("Experienced problems while converting text to UTF8");
        }
        if (IsForbiddenControl(c)) {
            result[at] = ' ';
        }
    }
    return result;
}

bool IsXmlName(std::string_view text) {
    if (text.empty() || text.size() > MaxNameLength) {
        return false;
    }
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const bool startsRight = !isAscii(text.front()) || IsLetter(text.front()) || text.front() == '_';
    const bool allowed = std::ranges::all_of(text, [&](char c) { return !isAscii(c) || IsAsciiNameCharacter(c); });
    return startsRight && allowed && (std::ranges::all_of(text, isAscii) || IsNameToExpat(text));
}

std::string NormalizeLanguage(std::string_view language) {
    std::string result(language);
    std::ranges::transform(result, result.begin(), ToLower);
    const std::size_t first = result.find('-');
    if (first == result.npos) {
        return result;
    }
    // A second part of two letters is a country.
    const std::size_t second = std::min(result.find('-', first + 1), result.size());
    if (second - first == 3) {
        std::transform(result.begin() + static_cast<std::ptrdiff_t>(first),
                       result.begin() + static_cast<std::ptrdiff_t>(second),
                       result.begin() + static_cast<std::ptrdiff_t>(first), ToUpper);
    }
    return result;
}

} // namespace ImagingFramework
