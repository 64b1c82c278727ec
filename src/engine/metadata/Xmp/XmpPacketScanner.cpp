#include "metadata/Xmp/XmpPacketScanner.h"

#include "Common/Utf8.h"

#include <algorithm>
#include <string_view>

namespace ImagingFramework {

namespace {

constexpr std::string_view HeaderStart = "<?xpacket begin=";
constexpr std::string_view TrailerStart = "<?xpacket end=";
constexpr std::string_view InstructionEnd = "?>";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view PacketId = "W5M0MpCehiHzreSzNTczkc9d";
constexpr std::size_t MaxInstructionLength = 256;

enum class Encoding { Utf8, Utf16BigEndian, Utf16LittleEndian };

std::string Encode(std::string_view ascii, Encoding encoding) {
    if (encoding == Encoding::Utf8) {
        return std::string(ascii);
    }
    std::string units;
    for (const char c : ascii) {
        units += encoding == Encoding::Utf16BigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return units;
}

std::string Decode(std::string_view bytes, Encoding encoding) {
    if (encoding == Encoding::Utf8) {
        return std::string(bytes);
    }
    const auto unitAt = [&](std::size_t at) {
        const char32_t first = static_cast<std::uint8_t>(bytes[at]);
        const char32_t second = static_cast<std::uint8_t>(bytes[at + 1]);
        return encoding == Encoding::Utf16BigEndian ? first << 8 | second : second << 8 | first;
    };
    std::string text;
    for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
        char32_t codePoint = unitAt(at);
        const bool isHigh = codePoint >= 0xD800 && codePoint < 0xDC00 && at + 4 <= bytes.size();
        if (const char32_t low = isHigh ? unitAt(at + 2) : 0; low >= 0xDC00 && low < 0xE000) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
            at += 2;
        }
        AppendUtf8(text, codePoint);
    }
    return text;
}

/// Takes a quoted text off the front of an instruction; whether there is one.
bool TakeQuoted(std::string_view& instruction, std::string_view& quoted) {
    if (instruction.empty() || (instruction.front() != '"' && instruction.front() != '\'')) {
        return false;
    }
    const std::size_t end = instruction.find(instruction.front(), 1);
    if (end == instruction.npos) {
        return false;
    }
    quoted = instruction.substr(1, end - 1);
    instruction.remove_prefix(end + 1);
    return true;
}

/// What stands behind "begin=".
bool IsHeader(std::string_view instruction) {
    std::string_view begin;
    std::string_view id;
    if (!TakeQuoted(instruction, begin) || !(begin.empty() || begin == ByteOrderMark)) {
        return false;
    }
    constexpr std::string_view idStart = " id=";
    if (!instruction.starts_with(idStart)) {
        return false;
    }
    instruction.remove_prefix(idStart.size());
    return TakeQuoted(instruction, id) && id == PacketId;
}

/// What stands behind "end=".
bool IsTrailer(std::string_view instruction) {
    std::string_view end;
    return TakeQuoted(instruction, end) && (end == "r" || end == "w");
}

/// Where an instruction stands; both are `npos` when there is none.
struct Instruction {
    std::size_t First = std::string_view::npos;
    std::size_t End = std::string_view::npos;
};

template <class IsSound>
Instruction FindInstruction(std::string_view bytes, std::size_t from, std::string_view start, Encoding encoding,
                            IsSound isSound) {
    const std::string encodedStart = Encode(start, encoding);
    const std::string encodedEnd = Encode(InstructionEnd, encoding);
    for (std::size_t first = bytes.find(encodedStart, from); first != bytes.npos;
         first = bytes.find(encodedStart, first + 1)) {
        const std::size_t content = first + encodedStart.size();
        const std::string_view window = bytes.substr(content, MaxInstructionLength);
        const std::size_t size = window.find(encodedEnd);
        if (size != window.npos && isSound(Decode(window.substr(0, size), encoding))) {
            return {first, content + size + encodedEnd.size()};
        }
    }
    return {};
}

} // namespace

std::optional<std::string> XmpPacketScanner::FindPacket(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    Instruction bestHeader;
    Instruction bestTrailer;
    Encoding bestEncoding = Encoding::Utf8;
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16BigEndian, Encoding::Utf16LittleEndian}) {
        const Instruction header = FindInstruction(text, 0, HeaderStart, encoding, IsHeader);
        if (header.First >= bestHeader.First) {
            continue;
        }
        const Instruction trailer = FindInstruction(text, header.End, TrailerStart, encoding, IsTrailer);
        if (trailer.First != text.npos) {
            bestHeader = header;
            bestTrailer = trailer;
            bestEncoding = encoding;
        }
    }
    if (bestHeader.First == text.npos) {
        return std::nullopt;
    }
    return Decode(text.substr(bestHeader.First, bestTrailer.End - bestHeader.First), bestEncoding);
}

} // namespace ImagingFramework
