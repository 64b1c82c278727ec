#include "metadata/Wbmp/WbmpMetaData.h"

namespace ImagingFramework {

bool WbmpMetaData::GetFormatItem(ItemTag& tag) {
    if (tag.GetMetaDataId() != MetaDataId::FrameCompression) {
        return false;
    }
    tag = FrameCompressionType::None;
    return true;
}

bool WbmpMetaData::SetFormatItem(ItemTag& tag) {
    return tag.GetMetaDataId() == MetaDataId::FrameCompression &&
           static_cast<FrameCompressionType>(tag) == FrameCompressionType::None;
}

} // namespace ImagingFramework
