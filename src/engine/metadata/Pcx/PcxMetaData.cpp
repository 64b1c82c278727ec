#include "metadata/Pcx/PcxMetaData.h"

namespace ImagingFramework {

PixelFormat PcxMetaData::GetAppropriateFormatInternal(PixelFormat) const {
    throw MetaDataWritingNotAllowedException();
}

bool PcxMetaData::GetFormatItem(ItemTag& tag) {
    if (tag.GetMetaDataId() != MetaDataId::FrameCompression) {
        return false;
    }
    tag = FrameCompressionType::Rle;
    return true;
}

} // namespace ImagingFramework
