#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ImagingFramework {

/// What `TakeCodePoint` gives for bytes that are not UTF-8.
inline constexpr char32_t InvalidCodePoint = 0xFFFFFFFF;

/// Takes the first code point off a text that is not empty. Bytes that are no UTF-8 (overlong forms and surrogates are
/// none) give `InvalidCodePoint`, once for each sequence that breaks off.
char32_t TakeCodePoint(std::string_view& text) noexcept;

/// Appends a code point of Unicode; surrogates and numbers above 0x10FFFF become U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

bool IsUtf8(std::string_view text) noexcept;

/// The first `count` code points of a text, or all of it. Invalid sequences count as one each.
std::string_view FirstCodePoints(std::string_view text, std::size_t count) noexcept;

} // namespace ImagingFramework
