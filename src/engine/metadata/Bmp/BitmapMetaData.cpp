#include "metadata/Bmp/BitmapMetaData.h"

namespace ImagingFramework {

BitmapMetaData::~BitmapMetaData() {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void BitmapMetaData::RefreshRead() {
    RequireFormat(FileFormat::Bmp);
    BitmapFrameDecoder::Attach(GetAttachedStream());
    SetFrameInfo(*this, FileFormat::Bmp);
}

void BitmapMetaData::RefreshWrite() {
    SetMediaFormat(FileFormat::Bmp);
    SetCompressionType(FrameCompressionType::None);
    BitmapFrameEncoder::Attach(GetAttachedStream(), 0, 0);
}

void BitmapMetaData::DetachFrames() {
    BitmapFrameDecoder::Detach();
    BitmapFrameEncoder::Detach();
}

bool BitmapMetaData::GetItem(ItemTag& tag) {
    CheckRuntimeReadState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail:
        DecodeToTag(tag);
        return true;
    case MetaDataId::FrameCount:
        tag = BitmapFrameDecoder::GetFrameCount();
        return true;
    case MetaDataId::FrameCompression:
        tag = GetCompressionType();
        return true;
    default:
        return MetaData::GetItem(tag);
    }
}

bool BitmapMetaData::SetItem(ItemTag& tag) {
    CheckRuntimeWriteState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
        EncodeFrame(static_cast<BitmapData&>(tag), 0, 0);
        return true;
    case MetaDataId::FrameCompression:
        SetCompressionType(static_cast<FrameCompressionType>(tag));
        return true;
    default:
        return MetaData::SetItem(tag);
    }
}

} // namespace ImagingFramework
