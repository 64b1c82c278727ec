#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <memory>

namespace Corvane::Rasterloom::Codecs {

class AdobeResourceDictionary;
class ExifDictionary;
class IptcDictionary;
class XmpData;

/// What a reader offers whose format can hold metadata blocks. A block that the file does not have is null.
class RASTERLOOM_API IMetadataReadSupport {
public:
    virtual ~IMetadataReadSupport();
    virtual std::shared_ptr<ExifDictionary> get_Exif() = 0;
    virtual std::shared_ptr<IptcDictionary> get_Iptc() = 0;
    virtual std::shared_ptr<XmpData> get_Xmp() = 0;
    virtual std::shared_ptr<AdobeResourceDictionary> get_AdobeResources() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
