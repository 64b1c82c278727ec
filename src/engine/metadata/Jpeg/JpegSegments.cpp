#include "metadata/Jpeg/JpegSegments.h"

#include "metadata/Xmp/XmpPacketScanner.h"

#include <algorithm>
#include <array>

namespace ImagingFramework {

namespace {

using Bytes = std::span<const std::uint8_t>;

/// Calls `visit` with the number and the payload of each kept segment until it returns true.
template <class Visit>
void ForEachSegment(const jpeg_decompress_struct& info, Visit visit) {
    for (const jpeg_marker_struct* pMarker = info.marker_list; pMarker != nullptr; pMarker = pMarker->next) {
        if (visit(static_cast<int>(pMarker->marker), Bytes(pMarker->data, pMarker->data_length))) {
            return;
        }
    }
}

bool BeginsWith(Bytes data, std::string_view identifier) {
    return data.size() >= identifier.size() && std::equal(identifier.begin(), identifier.end(), data.begin());
}

std::vector<std::uint8_t> Copy(Bytes data) { return {data.begin(), data.end()}; }

std::vector<std::uint8_t> ReadExif(const jpeg_decompress_struct& info) {
    constexpr std::size_t minimumSize = 9;
    std::vector<std::uint8_t> block;
    ForEachSegment(info, [&](int marker, Bytes data) {
        if (marker != JpegApp1 || data.size() < minimumSize || !BeginsWith(data, JpegSegmentIdentifier::Exif)) {
            return false;
        }
        block = Copy(data.subspan(JpegSegmentIdentifier::Exif.size()));
        return true;
    });
    return block;
}

/// The first segment must begin with a resource; those behind it go on where it stopped.
std::vector<std::uint8_t> ReadAdobeResources(const jpeg_decompress_struct& info) {
    constexpr std::string_view signature = "8BIM";
    std::vector<std::uint8_t> block;
    bool begun = false;
    ForEachSegment(info, [&](int marker, Bytes data) {
        if (marker != JpegApp13 || !BeginsWith(data, JpegSegmentIdentifier::AdobeResources)) {
            return false;
        }
        const Bytes payload = data.subspan(JpegSegmentIdentifier::AdobeResources.size());
        if (!begun && (payload.size() <= signature.size() || !BeginsWith(payload, signature))) {
            return false;
        }
        begun = true;
        block.insert(block.end(), payload.begin(), payload.end());
        return false;
    });
    return block;
}

std::string ReadXmp(const jpeg_decompress_struct& info) {
    std::string packet;
    ForEachSegment(info, [&](int marker, Bytes data) {
        if (marker == JpegApp1 || marker == JpegApp14) {
            packet = XmpPacketScanner::FindPacket(data).value_or(std::string());
        }
        return !packet.empty();
    });
    if (!packet.empty()) {
        return packet;
    }
    // Some programs leave the wrapper of the packet out.
    ForEachSegment(info, [&](int marker, Bytes data) {
        if (marker == JpegApp1 && BeginsWith(data, JpegSegmentIdentifier::Xmp)) {
            const Bytes payload = data.subspan(JpegSegmentIdentifier::Xmp.size());
            packet.assign(payload.begin(), payload.end());
        }
        return !packet.empty();
    });
    return packet;
}

/// Nothing unless all chunks are there, each once, and agree on their count.
std::vector<std::uint8_t> ReadColorProfile(const jpeg_decompress_struct& info) {
    constexpr std::size_t headerSize = JpegSegmentIdentifier::ColorProfile.size() + 2;
    std::array<Bytes, 256> chunks{};
    std::size_t count = 0;
    bool valid = true;
    ForEachSegment(info, [&](int marker, Bytes data) {
        if (marker != JpegApp2 || data.size() < headerSize || !BeginsWith(data, JpegSegmentIdentifier::ColorProfile)) {
            return false;
        }
        const std::size_t number = data[headerSize - 2];
        const std::size_t total = data[headerSize - 1];
        valid = valid && number >= 1 && number <= total && (count == 0 || count == total) &&
                chunks[number].data() == nullptr;
        count = total;
        chunks[number] = data.subspan(headerSize);
        return !valid;
    });
    std::vector<std::uint8_t> profile;
    for (std::size_t number = 1; valid && number <= count; ++number) {
        valid = chunks[number].data() != nullptr;
        profile.insert(profile.end(), chunks[number].begin(), chunks[number].end());
    }
    return valid ? profile : std::vector<std::uint8_t>();
}

} // namespace

JpegSegments JpegSegments::Read(const jpeg_decompress_struct& info) {
    return {ReadExif(info), ReadAdobeResources(info), ReadXmp(info), ReadColorProfile(info)};
}

} // namespace ImagingFramework
