#pragma once

#include "metadata/Bmp/BitmapFrameDecoder.h"
#include "metadata/Bmp/BitmapFrameEncoder.h"
#include "metadata/MetaData.h"

namespace ImagingFramework {

/// A BMP file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`; written: `FrameBitmap`, `FrameCompression`.
class BitmapMetaData final : public MetaData, private BitmapFrameDecoder, private BitmapFrameEncoder {
public:
    BitmapMetaData() = default;
    /// Failures of a file that was not closed are lost: `Close` reports them.
    ~BitmapMetaData() override;

    bool GetItem(ItemTag& tag) override;
    bool SetItem(ItemTag& tag) override;

protected:
    void RefreshRead() override;
    void RefreshWrite() override;
    void DetachFrames() override;
    std::string_view GetName() const override { return "BitmapMetaData"; }
};

} // namespace ImagingFramework
