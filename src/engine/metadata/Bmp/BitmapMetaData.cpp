#include "metadata/Bmp/BitmapMetaData.h"

namespace ImagingFramework {

void BitmapMetaData::RefreshWrite() {
    SetCompressionType(FrameCompressionType::None);
    FormatMetaData::RefreshWrite();
}

bool BitmapMetaData::GetFormatItem(ItemTag& tag) {
    if (tag.GetMetaDataId() != MetaDataId::FrameCompression) {
        return false;
    }
    tag = GetCompressionType();
    return true;
}

bool BitmapMetaData::SetFormatItem(ItemTag& tag) {
    if (tag.GetMetaDataId() != MetaDataId::FrameCompression) {
        return false;
    }
    SetCompressionType(static_cast<FrameCompressionType>(tag));
    return true;
}

} // namespace ImagingFramework
