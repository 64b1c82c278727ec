// Loads the input as a PNG file, once plainly and once into a thumbnail of each kind. Engine failures are answers;
// anything else is a finding.

#include "metadata/Png/PngMetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

using namespace ImagingFramework;

namespace {

void Load(const std::vector<std::uint8_t>& file, ItemTag tag) {
    PngMetaData metaData;
    try {
        metaData.AttachToRead(std::make_shared<MemoryStream>(file));
        metaData.GetItem(tag);
    } catch (const Exception&) {
        return;
    }
    tag.FreePointerValue();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const std::vector<std::uint8_t> file(pData, pData + size);
    Load(file, ItemTag(MetaDataId::FrameBitmap));
    for (const InterpolationMode mode :
         {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic9, InterpolationMode::Lanczos3Filter}) {
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailWidth(5);
        tag.SetThumbnailHeight(5);
        tag.SetThumbnailInterpolation(mode);
        Load(file, tag);
    }
    return 0;
}
