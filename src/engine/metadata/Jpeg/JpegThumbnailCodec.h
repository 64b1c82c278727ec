#pragma once

#include "metadata/Exif/IThumbnailCodec.h"

namespace ImagingFramework {

/// Thumbnails of metadata blocks as JPEG files.
class JpegThumbnailCodec final : public IThumbnailCodec {
public:
    void Decode(std::span<const std::uint8_t> file, BitmapData& raster) const override;
    /// With the encoder's first settings.
    std::vector<std::uint8_t> Encode(const BitmapData& raster) const override;

    /// Makes the codec known to the blocks, once in a process. Thread-safe.
    static void RegisterOnce();
};

} // namespace ImagingFramework
