#include "Common/AnsiCodePage.h"

#include "Common/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace ImagingFramework {

namespace {

/// The bytes 0x80 to 0x9F; all others are the code points of the same numbers.
constexpr std::array<char16_t, 32> Table = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
constexpr std::uint32_t FirstOfTable = 0x80;
constexpr std::uint32_t EndOfTable = FirstOfTable + Table.size();

bool IsInTable(std::uint32_t number) {
    return number >= FirstOfTable && number < EndOfTable;
}

char32_t CodePointOf(std::uint32_t byte) {
    return IsInTable(byte) ? Table[byte - FirstOfTable] : char32_t{byte};
}

std::uint32_t ByteOf(char32_t codePoint) {
    if (codePoint <= 0xFF && !IsInTable(codePoint)) {
        return codePoint;
    }
    const auto found = std::ranges::find(Table, codePoint);
    return found == Table.end() ? std::uint32_t{'?'}
                                : FirstOfTable + static_cast<std::uint32_t>(std::distance(Table.begin(), found));
}

} // namespace

std::string AnsiToUtf8(std::span<const std::byte> bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const std::byte byte : bytes) {
        AppendUtf8(text, CodePointOf(std::to_integer<std::uint32_t>(byte)));
    }
    return text;
}

std::vector<std::byte> Utf8ToAnsi(std::string_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        bytes.push_back(static_cast<std::byte>(ByteOf(TakeCodePoint(text))));
    }
    return bytes;
}

} // namespace ImagingFramework
