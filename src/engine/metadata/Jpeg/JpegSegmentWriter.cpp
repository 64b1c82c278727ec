#include "metadata/Jpeg/JpegSegmentWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Jpeg/JpegSegments.h"

#include <algorithm>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr std::size_t MaximumExifSize = 65535;
constexpr std::size_t MaximumXmpSize = 65502;
constexpr std::size_t MaximumPieceSize = 65519;
constexpr std::size_t MaximumChunkCount = 255;

std::vector<std::uint8_t> BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

/// `JpegMarkerException` with a text of its own.
class ExifTooBigException : public JpegMarkerException {
public:
    explicit ExifTooBigException(SourceLocation where = SourceLocation::current())
        : JpegMarkerException(ExceptionInfo{ExceptionType::JpegMarkerException, "JpegMarkerException",
                                            JpegMarkerException().GetHresult(),
                                            "EXIF data object is too big, its size exceeds 64K limit (that is defined by "
                                            "Jpeg standart for marker data).",
                                            where}) {}
};

} // namespace

void JpegSegmentWriter::WriteExif(std::span<const std::uint8_t> block) {
    if (block.size() > MaximumExifSize) {
        throw ExifTooBigException();
    }
    if (!block.empty()) {
        m_compressor.WriteMarker(JpegApp1, {}, block);
    }
}

void JpegSegmentWriter::WriteAdobeResources(std::span<const std::uint8_t> block) {
    const auto identifier = BytesOf(JpegSegmentIdentifier::AdobeResources);
    while (!block.empty()) {
        const auto piece = block.first(std::min(block.size(), MaximumPieceSize));
        m_compressor.WriteMarker(JpegApp13, identifier, piece);
        block = block.subspan(piece.size());
    }
}

void JpegSegmentWriter::WriteXmp(std::string_view packet) {
    if (packet.empty()) {
        return;
    }
    if (packet.size() > MaximumXmpSize) {
        throw ArgumentException("XMP packet is over 65502 bytes in UTF8 (too large)");
    }
    m_compressor.WriteMarker(JpegApp1, BytesOf(JpegSegmentIdentifier::Xmp), BytesOf(packet));
}

void JpegSegmentWriter::WriteColorProfile(std::span<const std::uint8_t> profile) {
    const std::size_t count = (profile.size() + MaximumPieceSize - 1) / MaximumPieceSize;
    if (count > MaximumChunkCount) {
        throw JpegMarkerException();
    }
    for (std::size_t number = 1; number <= count; ++number) {
        const auto chunk = profile.first(std::min(profile.size(), MaximumPieceSize));
        std::vector<std::uint8_t> identifier = BytesOf(JpegSegmentIdentifier::ColorProfile);
        identifier.push_back(static_cast<std::uint8_t>(number));
        identifier.push_back(static_cast<std::uint8_t>(count));
        m_compressor.WriteMarker(JpegApp2, identifier, chunk);
        profile = profile.subspan(chunk.size());
    }
}

} // namespace ImagingFramework
