#pragma once

#include "metadata/Frames/FormatMetaData.h"
#include "metadata/Pcx/PcxFrameDecoder.h"

namespace ImagingFramework {

/// A PCX file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`. The format is not written: `AttachToWrite`, and the question for a pixel format to write, fail
/// with `MetaDataWritingNotAllowedException`.
class PcxMetaData final : public ReadableMetaData<PcxFrameDecoder, FileFormat::Pcx> {
protected:
    bool GetFormatItem(ItemTag& tag) override;
    std::string_view GetName() const override { return "PcxMetaData"; }
    std::span<const PixelFormat> GetSavedPixelFormats() const override { return {}; }
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
};

} // namespace ImagingFramework
