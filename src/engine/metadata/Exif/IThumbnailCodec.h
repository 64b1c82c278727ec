#pragma once

#include "Common/BitmapData.h"
#include "metadata/FileFormat.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Reads and writes the small pictures inside metadata blocks. A codec registers one for its format, so that the blocks
/// do not depend on codecs. An object is stateless: many threads call it at once.
class IThumbnailCodec {
public:
    /// More pixels than this are no thumbnail. A codec refuses them with `MediaCorruptedException` before it allocates.
    static constexpr std::uint64_t MaxPixelCount = 16U << 20;

    virtual ~IThumbnailCodec() = default;
    /// The first frame of a file in memory. Fails as the codec does on bad files.
    virtual void Decode(std::span<const std::uint8_t> file, BitmapData& raster) const = 0;
    /// A whole file of the raster, converted to a format that the codec can write if it must be.
    virtual std::vector<std::uint8_t> Encode(const BitmapData& raster) const = 0;

    /// Makes a codec known, which must live until the end of the process or until another takes its place; null takes
    /// it back. The one before is returned. Fails with `ArgumentException` ("format") for all but JPEG and TIFF.
    /// Thread-safe.
    static const IThumbnailCodec* Register(FileFormat format, const IThumbnailCodec* pCodec);
    /// Null when the format has none. Thread-safe, without a lock.
    static const IThumbnailCodec* Find(FileFormat format);
};

} // namespace ImagingFramework
