#include "metadata/Pcx/PcxMetaData.h"

namespace ImagingFramework {

PcxMetaData::~PcxMetaData() {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void PcxMetaData::RefreshRead() {
    RequireFormat(FileFormat::Pcx);
    PcxFrameDecoder::Attach(GetAttachedStream());
    SetFrameInfo(*this, FileFormat::Pcx);
}

void PcxMetaData::RefreshWrite() {
    throw MetaDataWritingNotAllowedException();
}

void PcxMetaData::DetachFrames() {
    PcxFrameDecoder::Detach();
}

PixelFormat PcxMetaData::GetAppropriateFormatInternal(PixelFormat) const {
    throw MetaDataWritingNotAllowedException();
}

bool PcxMetaData::GetItem(ItemTag& tag) {
    CheckRuntimeReadState(tag);
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameBitmap:
    case MetaDataId::FrameThumbnail:
        DecodeToTag(tag);
        return true;
    case MetaDataId::FrameCount:
        tag = PcxFrameDecoder::GetFrameCount();
        return true;
    case MetaDataId::FrameCompression:
        tag = FrameCompressionType::Rle;
        return true;
    default:
        return MetaData::GetItem(tag);
    }
}

} // namespace ImagingFramework
