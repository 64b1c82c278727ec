#pragma once

#include <cstdint>

namespace ImagingFramework {

/// What a stream holds. The numbers equal the public media format numbers, where a host may have numbers of its own.
enum class FileFormat : std::int64_t {
    UnknownBeforeOpen = -1,
    Unknown = 0,
    Jpeg = 1,
    Bmp = 2,
    Png = 3,
    Tiff = 4,
    Pcx = 5,
    Wbmp = 6,
    Gif = 7,
    Psd = 8,
    Pdf = 9,
    Swf = 10,
    Jpeg2k = 11,
    Avi = 12,
    QuickTime = 13,
    Asf = 14,
    Mp3 = 15,
    Mpeg = 16,
};

} // namespace ImagingFramework
