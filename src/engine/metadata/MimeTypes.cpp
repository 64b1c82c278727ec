#include "metadata/MimeTypes.h"

#include "ErrorHandling/Exceptions.h"

#include <array>

namespace ImagingFramework {

namespace {

struct FormatTexts {
    std::string Name;
    std::string Extension;
    std::string Filter;
    std::string Mime;
    std::string Description;
};

constexpr std::int64_t FirstFormat = static_cast<std::int64_t>(FileFormat::UnknownBeforeOpen);
constexpr std::size_t FormatCount = 18;

/// In the order of the numbers, from `UnknownBeforeOpen`.
const std::array<FormatTexts, FormatCount>& Table() {
    // clang-format off
    static const std::array<FormatTexts, FormatCount> table = {{
        {"UnknownBeforeOpen", "", "", "", "Unknown (no file has been opened)"},
        {"Unknown", "", "", "", "Unknown"},
        {"JPEG", "*.jpg", "*.jpg;*.jpeg;*.jpe", "image/jpeg", "JPEG (Joint Photographic Experts Group)"},
        {"BMP", "*.bmp", "*.bmp;*.dib", "image/bmp", "BMP (Windows Bitmap)"},
        {"PNG", "*.png", "*.png", "image/png", "PNG (Portable Network Graphics)"},
        {"TIFF", "*.tif", "*.tif;*.tiff", "image/tiff", "TIFF (Tagged Image File Format)"},
        {"PCX", "*.pcx", "*.pcx", "image/pcx", "PCX (PCX Image Format)"},
        {"WBMP", "*.wbmp", "*.wbm;*.wbmp", "image/vnd.wap.wbmp", "WBMP (Wireless Bitmap)"},
        {"GIF", "*.gif", "*.gif", "image/gif", "GIF (Graphics Interchange Format)"},
        {"PSD", "*.psd", "*.psd", "application/psd", "PSD (Adobe PhotoShop Format)"},
        {"PDF", "*.pdf", "*.pdf", "application/pdf", "PDF (Portable Document Format)"},
        {"SWF", "*.swf", "*.swf", "application/x-shockwave-flash", "SWF (Macromedia Flash File Format)"},
        {"JPEG2000", "*.jp2", "*.jp2", "image/jp2", "JPEG2000 (Joint Photographic Experts Group)"},
        {"AVI", "*.avi", "*.avi", "video/x-msvideo", "AVI (Video Format)"},
        {"QuickTime", "", "", "", ""},
        {"ASF", "*.asf", "*.asf;*.wmv;*.wma", "video/x-ms-asf", "ASF (Advanced Systems Format)"},
        {"MP3", "*.mp3", "*.mp3", "audio/mpeg", "MP3 (MPEG audio, layer 3)"},
        {"MPEG", "*.mpg", "*.mpg;*.mpeg;*.divx;*.m1v;*.m2p;*.m2v;*.mp4;*.mpv;*.vob;*.dat", "video/mpeg",
         "MPEG (Motion Picture Experts Group)"},
    }};
    // clang-format on
    return table;
}

const FormatTexts& Find(FileFormat format) {
    const std::int64_t number = static_cast<std::int64_t>(format);
    if (number < FirstFormat || number >= FirstFormat + static_cast<std::int64_t>(FormatCount)) {
        throw UnexpectedException();
    }
    return Table()[static_cast<std::size_t>(number - FirstFormat)];
}

} // namespace

const std::string& MimeTypes::GetDefaultExtensionRef(FileFormat format) {
    return Find(format).Extension;
}

const std::string& MimeTypes::GetFormatNameRef(FileFormat format) {
    return Find(format).Name;
}

const std::string& MimeTypes::GetFormatDescriptionRef(FileFormat format) {
    return Find(format).Description;
}

const std::string& MimeTypes::GetFilterStringRef(FileFormat format) {
    return Find(format).Filter;
}

const std::string& MimeTypes::GetMimeTypeRef(FileFormat format) {
    return Find(format).Mime;
}

} // namespace ImagingFramework
