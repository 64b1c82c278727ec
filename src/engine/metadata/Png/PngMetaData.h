#pragma once

#include "metadata/MetaData.h"
#include "metadata/Png/PngFrameDecoder.h"
#include "metadata/Png/PngFrameEncoder.h"

namespace ImagingFramework {

/// A PNG file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`, `FrameCompression`,
/// `ColorProfile`, `Interlaced`, `SkipCrcCheck`; written: `FrameBitmap`, `MediaFormat` and `FrameCompression` (there is one
/// only of each), `Interlaced`, and at any time `SkipCrcCheck`, for files opened from then on.
class PngMetaData final : public MetaData, private PngFrameDecoder, private PngFrameEncoder {
public:
    PngMetaData() = default;
    /// Failures of a file that was not closed are lost: `Close` reports them.
    ~PngMetaData() override;

    bool GetItem(ItemTag& tag) override;
    bool SetItem(ItemTag& tag) override;
    using PngFrameEncoder::SetCompressionLevel;
    using PngFrameEncoder::SetFilter;

protected:
    void RefreshRead() override;
    void RefreshWrite() override;
    void DetachFrames() override;
    std::string_view GetName() const override { return "PngMetaData"; }
};

} // namespace ImagingFramework
