#include "metadata/Jpeg/JpegMetaData.h"

namespace ImagingFramework {

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
    case MetaDataId::ColorProfile:
        if (GetColorProfileRef().empty()) {
            return false;
        }
        tag = new ColorProfileData(GetColorProfileRef());
        return true;
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
    default:
        return MetaData::SetItem(tag);
    }
}

} // namespace ImagingFramework
