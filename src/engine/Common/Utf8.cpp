#include "Common/Utf8.h"

namespace ImagingFramework {

namespace {

/// How a first byte goes on: bytes that follow, and the bounds of the first of them. The bounds shut out overlong
/// forms, surrogates and code points above 0x10FFFF.
struct Continuation {
    std::size_t Count;
    std::uint8_t Low;
    std::uint8_t High;
};

constexpr Continuation ContinuationOf(std::uint8_t first) noexcept {
    if (first >= 0xC2 && first <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (first >= 0xE0 && first <= 0xEF) {
        return {2, static_cast<std::uint8_t>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<std::uint8_t>(first == 0xED ? 0x9F : 0xBF)};
    }
    if (first >= 0xF0 && first <= 0xF4) {
        return {3, static_cast<std::uint8_t>(first == 0xF0 ? 0x90 : 0x80),
                static_cast<std::uint8_t>(first == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

} // namespace

char32_t TakeCodePoint(std::string_view& text) noexcept {
    const auto first = static_cast<std::uint8_t>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    Continuation next = ContinuationOf(first);
    if (next.Count == 0) {
        return InvalidCodePoint;
    }
    char32_t codePoint = first & (0x3FU >> next.Count);
    for (; next.Count > 0; --next.Count) {
        const std::uint8_t byte = text.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(text.front());
        if (byte < next.Low || byte > next.High) {
            return InvalidCodePoint;
        }
        codePoint = codePoint << 6 | (byte & 0x3FU);
        text.remove_prefix(1);
        next = {next.Count, 0x80, 0xBF};
    }
    return codePoint;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = 0xFFFD;
    }
    const auto put = [&](char32_t byte) { text.push_back(static_cast<char>(static_cast<std::uint8_t>(byte))); };
    if (codePoint < 0x80) {
        put(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            put(0xE0 | codePoint >> 12);
        } else {
            put(0xF0 | codePoint >> 18);
            put(0x80 | (codePoint >> 12 & 0x3F));
        }
        put(0x80 | (codePoint >> 6 & 0x3F));
    }
    put(0x80 | (codePoint & 0x3F));
}

bool IsUtf8(std::string_view text) noexcept {
    while (!text.empty()) {
        if (TakeCodePoint(text) == InvalidCodePoint) {
            return false;
        }
    }
    return true;
}

std::string_view FirstCodePoints(std::string_view text, std::size_t count) noexcept {
    std::string_view rest = text;
    for (; count > 0 && !rest.empty(); --count) {
        TakeCodePoint(rest);
    }
    return text.substr(0, text.size() - rest.size());
}

} // namespace ImagingFramework
