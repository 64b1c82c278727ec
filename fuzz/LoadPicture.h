#pragma once

#include "Common/FrameSize.h"
#include "metadata/ItemTag.h"
#include "metadata/Streams/MemoryStream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// Loads the input as a file of one format, once plainly and once into a thumbnail of each kind. Engine failures are
/// answers; anything else is a finding. Frames are limited as a host of untrusted files limits them: a few bytes can stand
/// for tens of millions of pixels, which take half a minute with sanitizers and half a second without.
template <class Format>
void LoadPicture(const std::uint8_t* pData, std::size_t size) {
    using namespace ImagingFramework;
    SetMaximumFramePixels(std::uint64_t{1} << 20);
    const std::vector<std::uint8_t> file(pData, pData + size);
    const auto load = [&](ItemTag tag) {
        Format metaData;
        try {
            metaData.AttachToRead(std::make_shared<MemoryStream>(file));
            metaData.GetItem(tag);
        } catch (const Exception&) {
            return;
        }
        tag.FreePointerValue();
    };
    load(ItemTag(MetaDataId::FrameBitmap));
    for (const InterpolationMode mode :
         {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic9, InterpolationMode::Lanczos3Filter}) {
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailWidth(5);
        tag.SetThumbnailHeight(5);
        tag.SetThumbnailInterpolation(mode);
        load(tag);
    }
}
