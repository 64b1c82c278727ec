#pragma once

#include "metadata/Exif/ExifContents.h"
#include "metadata/FileFormat.h"
#include "metadata/Streams/AbstractReader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Finds the thumbnail of a block whose directories are parsed, decodes it, and puts it into the contents. Without a
/// codec for its format there is no raster.
class ExifThumbnailReader {
public:
    ExifThumbnailReader(AbstractReader& reader, ExifContents& contents);

    /// The thumbnail in the image resources that some programs put into the main directory.
    void ParsePhotoshopTag();
    /// The thumbnail of the thumbnail directory, with the resolution that stands there; it takes the place of one that
    /// was found before. Fails with `UnexpectedException` when its size is missing or wrong.
    void ParseThumbnail();

private:
    void ParseJpegCompressedThumbnail(std::uint32_t offset, std::uint32_t length);
    void ParseUncompressedThumbnail();
    /// The strips one behind the other, each with its length.
    std::vector<std::uint8_t> ReadStrips(std::vector<std::uint32_t>& lengths);
    /// Null without a codec.
    static std::shared_ptr<BitmapData> Decode(FileFormat format, std::span<const std::uint8_t> file);
    void ReadResolution(BitmapData& raster) const;

    AbstractReader& m_reader;
    ExifContents& m_contents;
};

} // namespace ImagingFramework
