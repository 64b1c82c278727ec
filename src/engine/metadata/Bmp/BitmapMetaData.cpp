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
    const auto frameIndex = static_cast<std::uint32_t>(tag.GetFrameIndex());
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail: {
        BitmapData* pBitmapData = tag.IsEmpty() ? nullptr : static_cast<BitmapData*>(tag);
        if (tag.GetMetaDataId() == MetaDataId::FrameBitmap) {
            DecodeFrame(pBitmapData, frameIndex);
        } else {
            SetThumbnailKind(tag.GetThumbnailInterpolation());
            DecodeFrameToThumbnail(tag.GetThumbnailWidth(), tag.GetThumbnailHeight(), pBitmapData, frameIndex);
        }
        tag = pBitmapData;
        return true;
    }
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
