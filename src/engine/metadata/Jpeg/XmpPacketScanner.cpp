#include "metadata/Jpeg/XmpPacketScanner.h"

#include <algorithm>
#include <string_view>

namespace ImagingFramework {

namespace {

/// How the units of a packet lie in the bytes.
enum class UnitLayout : std::uint32_t { Bytes, LittleEndian, BigEndian };

constexpr std::string_view BeginMark = "<?xpacket begin=";
constexpr std::string_view EndMark = "<?xpacket end=";
constexpr std::string_view InstructionEnd = "?>";

std::string Spread(std::string_view text, UnitLayout layout) {
    if (layout == UnitLayout::Bytes) {
        return std::string(text);
    }
    std::string spread;
    for (const char c : text) {
        spread += layout == UnitLayout::LittleEndian ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return spread;
}

void AppendUtf8(std::string& text, std::uint32_t point) {
    if (point < 0x80) {
        text += static_cast<char>(point);
        return;
    }
    const auto continuation = [&](std::uint32_t shift) { text += static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | (point >> 12));
        continuation(6);
    } else {
        text += static_cast<char>(0xF0 | (point >> 18));
        continuation(12);
        continuation(6);
    }
    continuation(0);
}

/// Half a pair of units becomes the replacement character.
std::string Utf16ToUtf8(std::string_view bytes, bool littleEndian) {
    constexpr std::uint32_t replacement = 0xFFFD;
    const auto unit = [&](std::size_t index) {
        const auto first = static_cast<std::uint8_t>(bytes[2 * index]);
        const auto second = static_cast<std::uint8_t>(bytes[2 * index + 1]);
        return littleEndian ? std::uint32_t{first} | std::uint32_t{second} << 8
                            : std::uint32_t{second} | std::uint32_t{first} << 8;
    };
    std::string text;
    const std::size_t count = bytes.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t point = unit(i);
        if (point >= 0xD800 && point < 0xE000) {
            const std::uint32_t low = point < 0xDC00 && i + 1 < count ? unit(i + 1) : 0;
            if (low >= 0xDC00 && low < 0xE000) {
                point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            } else {
                point = replacement;
            }
        }
        AppendUtf8(text, point);
    }
    return text;
}

std::string FindPacket(std::string_view data, UnitLayout layout) {
    const std::size_t begin = data.find(Spread(BeginMark, layout));
    if (begin == std::string_view::npos) {
        return {};
    }
    const std::size_t end = data.find(Spread(EndMark, layout), begin);
    if (end == std::string_view::npos) {
        return {};
    }
    const std::string close = Spread(InstructionEnd, layout);
    const std::size_t last = data.find(close, end);
    if (last == std::string_view::npos) {
        return {};
    }
    const std::string_view packet = data.substr(begin, last + close.size() - begin);
    return layout == UnitLayout::Bytes ? std::string(packet)
                                       : Utf16ToUtf8(packet, layout == UnitLayout::LittleEndian);
}

} // namespace

std::string FindXmpPacket(std::span<const std::uint8_t> data) {
    const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
    for (const UnitLayout layout : {UnitLayout::Bytes, UnitLayout::LittleEndian, UnitLayout::BigEndian}) {
        std::string packet = FindPacket(text, layout);
        if (!packet.empty()) {
            return packet;
        }
    }
    return {};
}

} // namespace ImagingFramework
