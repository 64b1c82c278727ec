#pragma once

// Frames between files in memory and rasters, by way of the object of a format.

#include "Common/BitmapData.h"
#include "metadata/MetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

using Bytes = std::vector<std::uint8_t>;

inline std::unique_ptr<BitmapData> LoadFrame(const Bytes& file, MetaData& metaData) {
    metaData.AttachToRead(std::make_shared<MemoryStream>(file));
    ItemTag tag(MetaDataId::FrameBitmap);
    metaData.GetItem(tag);
    return std::unique_ptr<BitmapData>(static_cast<BitmapData*>(tag));
}

/// `configure` is called in front of the frame.
template <class Configure>
Bytes SaveFrame(BitmapData& raster, MetaData& metaData, Configure configure) {
    const auto stream = std::make_shared<MemoryStream>();
    metaData.AttachToWrite(stream);
    configure();
    ItemTag tag(MetaDataId::FrameBitmap);
    tag = &raster;
    metaData.SetItem(tag);
    metaData.Close();
    return stream->TakeBytes();
}

/// A line without its padding.
inline Bytes Row(const BitmapData& raster, std::uint32_t row) {
    return {raster.GetScanlineRef(row), raster.GetScanlineRef(row) + raster.GetRowSize()};
}

/// Blue, green, red and alpha.
inline Bytes Entry(const BitmapData& raster, std::uint32_t index) {
    Bytes entry(4);
    raster.GetColorMapRef()->GetEntryArgb(index, entry.data());
    return entry;
}

} // namespace ImagingFramework
