#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

// The code page of texts in metadata blocks that declare no encoding: windows-1252. The five bytes that it leaves
// undefined stand for the control characters of the same numbers, so that every byte survives a round trip.

std::string AnsiToUtf8(std::span<const std::byte> bytes);

/// Characters that the code page does not hold, and bytes that are no UTF-8, become "?".
std::vector<std::byte> Utf8ToAnsi(std::string_view text);

} // namespace ImagingFramework
