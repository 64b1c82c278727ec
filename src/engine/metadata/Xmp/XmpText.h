#pragma once

#include <string>
#include <string_view>

namespace ImagingFramework {

/// Whether XML can hold the text: it is UTF-8 without U+FFFE, U+FFFF and control characters other than tab and line
/// ends.
bool IsXmlText(std::string_view text) noexcept;

/// The text as XML can hold it: control characters become spaces. Fails with `UnexpectedException` where it is no UTF-8
/// or holds U+FFFE or U+FFFF.
std::string ToXmlText(std::string_view text);

/// Whether the text can be a prefix or the local part of a qualified name.
bool IsXmlName(std::string_view text);

/// A language tag in its usual case: "en-US", "x-default".
std::string NormalizeLanguage(std::string_view language);

} // namespace ImagingFramework
