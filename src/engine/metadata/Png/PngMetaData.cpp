#include "metadata/Png/PngMetaData.h"

namespace ImagingFramework {

PngMetaData::~PngMetaData() {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void PngMetaData::RefreshRead() {
    RequireFormat(FileFormat::Png);
    PngFrameDecoder::Attach(GetAttachedStream());
    SetFrameInfo(*this, FileFormat::Png);
}

void PngMetaData::RefreshWrite() {
    SetMediaFormat(FileFormat::Png);
    PngFrameEncoder::Attach(GetAttachedStream(), 0, 0);
}

void PngMetaData::DetachFrames() {
    PngFrameDecoder::Detach();
    PngFrameEncoder::Detach();
}

bool PngMetaData::GetItem(ItemTag& tag) {
    CheckRuntimeReadState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail:
        DecodeToTag(tag);
        return true;
    case MetaDataId::FrameCount:
        tag = PngFrameDecoder::GetFrameCount();
        return true;
    case MetaDataId::FrameCompression:
        tag = FrameCompressionType::Zip;
        return true;
    case MetaDataId::ColorProfile: {
        if (GetColorProfileRef().empty()) {
            return false;
        }
        tag = std::make_unique<ColorProfileData>(GetColorProfileRef()).release();
        return true;
    }
    case MetaDataId::Interlaced:
        tag = std::int32_t{IsInterlaced()};
        return true;
    case MetaDataId::SkipCrcCheck:
        tag = std::int32_t{GetSkipCrcCheck()};
        return true;
    default:
        return MetaData::GetItem(tag);
    }
}

bool PngMetaData::SetItem(ItemTag& tag) {
    if (tag.GetMetaDataId() == MetaDataId::SkipCrcCheck) {
        SetSkipCrcCheck(static_cast<std::int32_t>(tag) != 0);
        return true;
    }
    CheckRuntimeWriteState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
        EncodeFrame(static_cast<BitmapData&>(tag), 0, 0);
        return true;
    case MetaDataId::MediaFormat:
        return static_cast<FileFormat>(tag) == FileFormat::Png;
    case MetaDataId::FrameCompression:
        return static_cast<FrameCompressionType>(tag) == FrameCompressionType::Zip;
    case MetaDataId::Interlaced:
        SetInterlaced(static_cast<std::int32_t>(tag) != 0);
        return true;
    default:
        return MetaData::SetItem(tag);
    }
}

} // namespace ImagingFramework
