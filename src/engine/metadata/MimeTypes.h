#pragma once

#include "metadata/FileFormat.h"

#include <string>

namespace ImagingFramework {

/// The vocabulary of each format. A value outside the table fails with `UnexpectedException`.
class MimeTypes {
public:
    /// With "*." in front, as "*.bmp".
    static const std::string& GetDefaultExtensionRef(FileFormat format);
    static const std::string& GetFormatNameRef(FileFormat format);
    static const std::string& GetFormatDescriptionRef(FileFormat format);
    /// All patterns of the format, separated by ";".
    static const std::string& GetFilterStringRef(FileFormat format);
    static const std::string& GetMimeTypeRef(FileFormat format);
};

} // namespace ImagingFramework
