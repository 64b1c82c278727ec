#pragma once

#include "metadata/Jpeg/JpegCompressor.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace ImagingFramework {

/// Writes the application segments that carry metadata, between the start of a stream and its first line.
class JpegSegmentWriter {
public:
    explicit JpegSegmentWriter(JpegCompressor& compressor) : m_compressor(compressor) {}

    /// A serialized block with its identifier; nothing is written for an empty one. Fails with `JpegMarkerException` when
    /// it does not fit into a segment.
    void WriteExif(std::span<const std::uint8_t> block);
    /// Serialized resources, in as many segments as they need.
    void WriteAdobeResources(std::span<const std::uint8_t> block);
    /// Fails with `ArgumentException` above 65,502 bytes.
    void WriteXmp(std::string_view packet);
    /// A profile, in at most 255 chunks. Fails with `JpegMarkerException` when it needs more.
    void WriteColorProfile(std::span<const std::uint8_t> profile);

private:
    JpegCompressor& m_compressor;
};

} // namespace ImagingFramework
