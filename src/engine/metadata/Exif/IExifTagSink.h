#pragma once

#include "metadata/Exif/ExifTag.h"

#include <cstdint>

namespace ImagingFramework {

/// Takes the tags that a TIFF codec is to write into the directories of its file.
class IExifTagSink {
public:
    virtual ~IExifTagSink() = default;
    /// Called directory by directory, in ascending order of the tags. Values are in the byte order of the host. The
    /// codec leaves out what describes pixels and layout, which it writes by itself.
    virtual void SetTag(ExifIfd ifd, std::uint16_t tag, const ExifTag& value) = 0;
};

} // namespace ImagingFramework
