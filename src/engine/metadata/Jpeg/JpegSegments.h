#pragma once

#include "metadata/Jpeg/JpegLibrary.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// Identifiers at the beginning of application segments, terminators included.
namespace JpegSegmentIdentifier {
inline constexpr std::string_view Exif{"Exif\0\0", 6};
inline constexpr std::string_view Xmp{"http://ns.adobe.com/xap/1.0/\0", 29};
inline constexpr std::string_view ColorProfile{"ICC_PROFILE\0", 12};
inline constexpr std::string_view AdobeResources{"Photoshop 3.0\0", 14};
} // namespace JpegSegmentIdentifier

inline constexpr int JpegApp1 = JPEG_APP0 + 1;
inline constexpr int JpegApp2 = JPEG_APP0 + 2;
inline constexpr int JpegApp13 = JPEG_APP0 + 13;
inline constexpr int JpegApp14 = JPEG_APP0 + 14;

/// What the application segments of a file hold, as bytes; empty where there is nothing.
struct JpegSegments {
    std::vector<std::uint8_t> Exif;           ///< a TIFF structure
    std::vector<std::uint8_t> AdobeResources; ///< resource blocks, the segments joined in the order of the file
    std::string Xmp;                          ///< UTF-8
    std::vector<std::uint8_t> ColorProfile;

    /// From the segments that the library has kept.
    static JpegSegments Read(const jpeg_decompress_struct& info);
};

} // namespace ImagingFramework
