#include "metadata/Png/PngMetaData.h"

namespace ImagingFramework {

bool PngMetaData::GetFormatItem(ItemTag& tag) {
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameCompression:
        tag = FrameCompressionType::Zip;
        return true;
    case MetaDataId::ColorProfile:
        if (GetColorProfileRef().empty()) {
            return false;
        }
        tag = std::make_unique<ColorProfileData>(GetColorProfileRef()).release();
        return true;
    case MetaDataId::Interlaced:
        tag = std::int32_t{IsInterlaced()};
        return true;
    case MetaDataId::SkipCrcCheck:
        tag = std::int32_t{GetSkipCrcCheck()};
        return true;
    default:
        return false;
    }
}

bool PngMetaData::SetItem(ItemTag& tag) {
    // A choice of the reader: it is made before a file is open.
    if (tag.GetMetaDataId() == MetaDataId::SkipCrcCheck) {
        SetSkipCrcCheck(static_cast<std::int32_t>(tag) != 0);
        return true;
    }
    return FormatMetaData::SetItem(tag);
}

bool PngMetaData::SetFormatItem(ItemTag& tag) {
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameCompression:
        return static_cast<FrameCompressionType>(tag) == FrameCompressionType::Zip;
    case MetaDataId::Interlaced:
        SetInterlaced(static_cast<std::int32_t>(tag) != 0);
        return true;
    default:
        return false;
    }
}

} // namespace ImagingFramework
