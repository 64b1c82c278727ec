#pragma once

#include "Common/BitmapData.h"
#include "metadata/Exif/ExifDirectory.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// What a block holds, apart from its bytes.
struct ExifContents {
    bool IsLittleEndian = true;
    /// Whether the maker note is written at all, and then in its old place if it can be.
    bool KeepsMakerNote = true;
    /// From the TIFF header; 0 when it is not known.
    std::uint32_t MakerNoteOffset = 0;
    std::array<ExifDirectory, ExifIfdCount> Directories;
    /// Never changed, so that copies may share it; null without a thumbnail.
    std::shared_ptr<const BitmapData> pThumbnail;
    /// The JPEG file that the thumbnail was read from, empty when it has another origin. It is written back as it is,
    /// so that the thumbnail does not lose quality with every save, and in place of a thumbnail that no codec can
    /// decode.
    std::vector<std::uint8_t> ThumbnailFile;

    /// Fails with `ArgumentOutOfRangeException` ("ifd") for a number that is no directory.
    ExifDirectory& GetDirectory(ExifIfd ifd);
    const ExifDirectory& GetDirectory(ExifIfd ifd) const;
    /// Null when the tag is not there.
    const ExifTag* FindTag(std::uint16_t tag, ExifIfd ifd) const;
};

} // namespace ImagingFramework
