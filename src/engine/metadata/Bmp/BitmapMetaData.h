#pragma once

#include "metadata/Bmp/BitmapFrameDecoder.h"
#include "metadata/Bmp/BitmapFrameEncoder.h"
#include "metadata/Frames/FormatMetaData.h"

namespace ImagingFramework {

/// A BMP file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`; written: `FrameBitmap`, `FrameCompression`.
class BitmapMetaData final : public FormatMetaData<BitmapFrameDecoder, BitmapFrameEncoder, FileFormat::Bmp> {
protected:
    bool GetFormatItem(ItemTag& tag) override;
    bool SetFormatItem(ItemTag& tag) override;
    void RefreshWrite() override;
    std::string_view GetName() const override { return "BitmapMetaData"; }
};

} // namespace ImagingFramework
