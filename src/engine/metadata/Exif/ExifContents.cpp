#include "metadata/Exif/ExifContents.h"

#include "ErrorHandling/Exceptions.h"

#include <utility>

namespace ImagingFramework {

const ExifDirectory& ExifContents::GetDirectory(ExifIfd ifd) const {
    const auto number = static_cast<std::uint32_t>(ifd);
    if (number >= ExifIfdCount) {
        throw ArgumentOutOfRangeException("ifd");
    }
    return Directories[number];
}

ExifDirectory& ExifContents::GetDirectory(ExifIfd ifd) {
    return const_cast<ExifDirectory&>(std::as_const(*this).GetDirectory(ifd));
}

const ExifTag* ExifContents::FindTag(std::uint16_t tag, ExifIfd ifd) const {
    return GetDirectory(ifd).Find(tag);
}

} // namespace ImagingFramework
