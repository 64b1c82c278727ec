#pragma once

// Rasters from and to the bytes of BMP files.

#include "BmpBuilder.h"
#include "Common/BitmapData.h"
#include "metadata/Bmp/BitmapMetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

using Bytes = std::vector<std::uint8_t>;

/// `count` entries of 4 bytes: blue i + 1, green i + 2, red i + 3, 0.
inline Bytes MakePalette(std::uint32_t count) {
    Bytes palette;
    for (std::uint32_t i = 0; i < count; ++i) {
        BmpBuilder::Put(palette, (i + 3) << 16 | (i + 2) << 8 | (i + 1), 4);
    }
    return palette;
}

/// Loads frame 0; the failures of every step come through.
inline std::unique_ptr<BitmapData> LoadFrame(MetaData& metaData, std::shared_ptr<IStream> pStream) {
    metaData.AttachToRead(std::move(pStream));
    ItemTag tag(MetaDataId::FrameBitmap);
    metaData.GetItem(tag);
    return std::unique_ptr<BitmapData>(static_cast<BitmapData*>(tag));
}

inline std::unique_ptr<BitmapData> LoadBmp(Bytes file) {
    BitmapMetaData metaData;
    return LoadFrame(metaData, std::make_shared<MemoryStream>(std::move(file)));
}

inline void SaveFrame(MetaData& metaData, const BitmapData& raster,
                      FrameCompressionType compression = FrameCompressionType::None) {
    ItemTag tag(MetaDataId::FrameCompression);
    tag = compression;
    metaData.SetItem(tag);
    tag.SetMetaDataId(MetaDataId::FrameBitmap);
    tag = const_cast<BitmapData*>(&raster);
    metaData.SetItem(tag);
}

inline Bytes SaveBmp(const BitmapData& raster, FrameCompressionType compression = FrameCompressionType::None) {
    auto pStream = std::make_shared<MemoryStream>();
    BitmapMetaData metaData;
    metaData.AttachToWrite(pStream);
    SaveFrame(metaData, raster, compression);
    metaData.Close();
    return pStream->TakeBytes();
}

/// The pixel bytes of all rows, one after the other.
inline Bytes PixelBytes(const BitmapData& raster) {
    Bytes bytes;
    for (std::uint32_t y = 0; y < raster.GetHeight(); ++y) {
        bytes.insert(bytes.end(), raster.GetScanlineRef(y), raster.GetScanlineRef(y) + raster.GetRowSize());
    }
    return bytes;
}

/// A raster with the given pixel bytes, row after row; indexed formats get a palette that covers all indices.
inline BitmapData MakeRaster(std::uint32_t width, std::uint32_t height, PixelFormat format, const Bytes& pixels) {
    BitmapData raster(width, height, format);
    for (std::uint32_t y = 0; y < height; ++y) {
        const std::uint32_t size = raster.GetRowSize();
        std::copy_n(pixels.begin() + y * size, size, raster.GetScanlineRef(y));
    }
    if (PixelFormatIsIndexed(format)) {
        ColorMap map(1U << PixelFormatSize(format), PixelFormat::Format32bppArgb);
        for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
            const std::uint8_t entry[4] = {static_cast<std::uint8_t>(i + 1), static_cast<std::uint8_t>(i + 2),
                                           static_cast<std::uint8_t>(i + 3), 255};
            map.SetEntryArgb(i, entry);
        }
        raster.SetColorMap(map);
    }
    return raster;
}

/// Bytes without a pattern that an error could hide in.
inline Bytes NoiseBytes(std::size_t count, std::uint32_t seed = 1) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) {
        seed = seed * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(seed >> 24);
    }
    return bytes;
}

} // namespace ImagingFramework
