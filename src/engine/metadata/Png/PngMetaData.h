#pragma once

#include "metadata/Frames/FormatMetaData.h"
#include "metadata/Png/PngFrameDecoder.h"
#include "metadata/Png/PngFrameEncoder.h"

namespace ImagingFramework {

/// A PNG file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`, `FrameCompression`,
/// `ColorProfile`, `Interlaced`, `SkipCrcCheck`; written: `FrameBitmap`, `FrameCompression` (there is one only),
/// `Interlaced`, and at any time `SkipCrcCheck`, for files opened from then on.
class PngMetaData final : public FormatMetaData<PngFrameDecoder, PngFrameEncoder, FileFormat::Png> {
public:
    bool SetItem(ItemTag& tag) override;
    using PngFrameDecoder::SetSkipCrcCheck;
    using PngFrameEncoder::SetCompressionLevel;
    using PngFrameEncoder::SetFilter;

protected:
    bool GetFormatItem(ItemTag& tag) override;
    bool SetFormatItem(ItemTag& tag) override;
    std::string_view GetName() const override { return "PngMetaData"; }
};

} // namespace ImagingFramework
