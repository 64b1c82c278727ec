#include "metadata/Wbmp/WbmpMetaData.h"

namespace ImagingFramework {

WbmpMetaData::~WbmpMetaData() {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void WbmpMetaData::RefreshRead() {
    RequireFormat(FileFormat::Wbmp);
    WbmpFrameDecoder::Attach(GetAttachedStream());
    SetFrameInfo(*this, FileFormat::Wbmp);
}

void WbmpMetaData::RefreshWrite() {
    SetMediaFormat(FileFormat::Wbmp);
    WbmpFrameEncoder::Attach(GetAttachedStream(), 0, 0);
}

void WbmpMetaData::DetachFrames() {
    WbmpFrameDecoder::Detach();
    WbmpFrameEncoder::Detach();
}

bool WbmpMetaData::GetItem(ItemTag& tag) {
    CheckRuntimeReadState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail:
        DecodeToTag(tag);
        return true;
    case MetaDataId::FrameCount:
        tag = WbmpFrameDecoder::GetFrameCount();
        return true;
    case MetaDataId::FrameCompression:
        tag = FrameCompressionType::None;
        return true;
    default:
        return MetaData::GetItem(tag);
    }
}

bool WbmpMetaData::SetItem(ItemTag& tag) {
    CheckRuntimeWriteState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
        EncodeFrame(static_cast<BitmapData&>(tag), 0, 0);
        return true;
    case MetaDataId::FrameCompression:
        return static_cast<FrameCompressionType>(tag) == FrameCompressionType::None;
    default:
        return MetaData::SetItem(tag);
    }
}

} // namespace ImagingFramework
