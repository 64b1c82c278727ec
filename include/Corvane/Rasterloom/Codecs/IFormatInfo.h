#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <string>

namespace Corvane::Rasterloom::Codecs {

/// The vocabulary of a media format.
class RASTERLOOM_API IFormatInfo {
public:
    virtual ~IFormatInfo();

    /// With "*." in front, as "*.bmp".
    virtual std::string get_DefaultExtension() = 0;
    /// A short name, as "BMP".
    virtual std::string get_FormatName() = 0;
    /// A name for people.
    virtual std::string get_FormatDescription() = 0;
    /// All file name patterns of the format, separated by ";".
    virtual std::string get_FilterString() = 0;
    /// As "image/bmp"; empty where a format has none.
    virtual std::string get_MimeType() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
