#pragma once

#include "metadata/Frames/FormatMetaData.h"
#include "metadata/Wbmp/WbmpFrameDecoder.h"
#include "metadata/Wbmp/WbmpFrameEncoder.h"

namespace ImagingFramework {

/// A wireless bitmap. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`; written: `FrameBitmap`, `FrameCompression` (there is `None` only).
class WbmpMetaData final : public FormatMetaData<WbmpFrameDecoder, WbmpFrameEncoder, FileFormat::Wbmp> {
protected:
    bool GetFormatItem(ItemTag& tag) override;
    bool SetFormatItem(ItemTag& tag) override;
    std::string_view GetName() const override { return "WbmpMetaData"; }
};

} // namespace ImagingFramework
