#include "metadata/Jpeg/JpegMetaData.h"

#include "metadata/Jpeg/JpegThumbnailCodec.h"

namespace ImagingFramework {

namespace {

/// Gives an object to whoever asked; false when there is none.
template <class T>
bool HandOver(std::unique_ptr<T> value, ItemTag& tag) {
    if (!value) {
        return false;
    }
    tag = value.release();
    return true;
}

} // namespace

JpegMetaData::JpegMetaData() { JpegThumbnailCodec::RegisterOnce(); }

bool JpegMetaData::GetFormatItem(ItemTag& tag) {
    switch (tag.GetMetaDataId()) {
    case MetaDataId::ColorProfile: {
        std::vector<std::uint8_t> profile = GetColorProfile();
        return !profile.empty() && HandOver(std::make_unique<ColorProfileData>(std::move(profile)), tag);
    }
    case MetaDataId::Exif:
        return HandOver(GetExifData(), tag);
    case MetaDataId::Iptc:
        return HandOver(GetIptcData(), tag);
    case MetaDataId::Xmp:
        return !GetXMPData().empty() && HandOver(std::make_unique<std::string>(GetXMPData()), tag);
    case MetaDataId::AdobeResources:
        return HandOver(GetAdobeResources(), tag);
    case MetaDataId::JpegRestartOption:
        tag = static_cast<std::int32_t>(GetRestartInterval());
        return true;
    case MetaDataId::ChromaSubsamplingEnabled:
        tag = std::int32_t{IsChromaSubsampled()};
        return true;
    default:
        return false;
    }
}

bool JpegMetaData::SetFormatItem(ItemTag& tag) {
    switch (tag.GetMetaDataId()) {
    case MetaDataId::JpegRestartOption:
        SetRestartInterval(static_cast<std::uint32_t>(tag));
        return true;
    case MetaDataId::Progressive:
        SetProgressive(static_cast<std::int32_t>(tag) != 0);
        return true;
    case MetaDataId::Quality:
        SetQuality(static_cast<std::int32_t>(tag));
        return true;
    case MetaDataId::ChromaSubsamplingEnabled:
        SetChromaSubsampling(static_cast<std::int32_t>(tag) != 0);
        return true;
    case MetaDataId::Exif:
        SetExif(static_cast<ExifDataStorage*>(tag));
        return true;
    case MetaDataId::Iptc:
        SetIptc(static_cast<IptcDataStorage*>(tag));
        return true;
    case MetaDataId::Xmp:
        SetXmpData(static_cast<std::string&>(tag));
        return true;
    case MetaDataId::AdobeResources:
        SetAdobeResources(static_cast<AdobeResources*>(tag));
        return true;
    default:
        return false;
    }
}

} // namespace ImagingFramework
