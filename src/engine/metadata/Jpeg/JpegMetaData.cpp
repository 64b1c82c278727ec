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

JpegMetaData::~JpegMetaData() {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void JpegMetaData::RefreshRead() {
    RequireFormat(FileFormat::Jpeg);
    JpegFrameDecoder::Attach(GetAttachedStream());
    SetFrameInfo(*this, FileFormat::Jpeg);
}

void JpegMetaData::RefreshWrite() {
    SetMediaFormat(FileFormat::Jpeg);
    JpegFrameEncoder::Attach(GetAttachedStream(), 0, 0);
}

void JpegMetaData::DetachFrames() {
    JpegFrameDecoder::Detach();
    JpegFrameEncoder::Detach();
}

bool JpegMetaData::GetItem(ItemTag& tag) {
    CheckRuntimeReadState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail:
        DecodeToTag(tag);
        return true;
    case MetaDataId::FrameCount:
        tag = JpegFrameDecoder::GetFrameCount();
        return true;
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
        return MetaData::GetItem(tag);
    }
}

bool JpegMetaData::SetItem(ItemTag& tag) {
    CheckRuntimeWriteState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
        EncodeFrame(static_cast<BitmapData&>(tag), 0, 0);
        return true;
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
        return MetaData::SetItem(tag);
    }
}

} // namespace ImagingFramework
