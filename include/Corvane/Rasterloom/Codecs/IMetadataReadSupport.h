#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <memory>
#include <string>

namespace Corvane::Rasterloom::Codecs {

class AdobeResourceDictionary;
class ExifDictionary;
class IptcDictionary;

/// What a reader offers whose format can hold metadata blocks. A block that the file does not have is null.
class RASTERLOOM_API IMetadataReadSupport {
public:
    virtual ~IMetadataReadSupport();
    /// The EXIF tags.
    virtual std::shared_ptr<ExifDictionary> get_Exif() = 0;
    /// The IPTC data sets.
    virtual std::shared_ptr<IptcDictionary> get_Iptc() = 0;
    /// The packet in UTF-8 as it stands in the file, for `XmpData::Load`; empty when there is none.
    virtual std::string get_Xmp() = 0;
    /// The image resources.
    virtual std::shared_ptr<AdobeResourceDictionary> get_AdobeResources() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
