#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <memory>
#include <string>

namespace Corvane::Rasterloom::Codecs {

class AdobeResourceDictionary;
class ExifDictionary;
class IptcDictionary;

/// What a writer, and its options, offer whose format can hold metadata blocks. A null block is not written.
class RASTERLOOM_API IMetadataWriteSupport {
public:
    virtual ~IMetadataWriteSupport();
    /// The EXIF tags to be written. Shared with the host until the file is written.
    virtual std::shared_ptr<ExifDictionary> get_Exif() = 0;
    virtual void set_Exif(std::shared_ptr<ExifDictionary> value) = 0;
    /// The IPTC data sets to be written, shared too.
    virtual std::shared_ptr<IptcDictionary> get_Iptc() = 0;
    virtual void set_Iptc(std::shared_ptr<IptcDictionary> value) = 0;
    /// A packet in UTF-8, as `XmpData::Save` gives it; an empty one is not written.
    virtual std::string get_Xmp() = 0;
    virtual void set_Xmp(std::string value) = 0;
    /// The image resources to be written, shared too.
    virtual std::shared_ptr<AdobeResourceDictionary> get_AdobeResources() = 0;
    virtual void set_AdobeResources(std::shared_ptr<AdobeResourceDictionary> value) = 0;
};

} // namespace Corvane::Rasterloom::Codecs
