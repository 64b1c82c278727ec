#pragma once

#include "metadata/MetaData.h"
#include "metadata/Pcx/PcxFrameDecoder.h"

namespace ImagingFramework {

/// A PCX file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`. The format is not written: `AttachToWrite`, and the question for a pixel format to write, fail
/// with `MetaDataWritingNotAllowedException`.
class PcxMetaData final : public MetaData, private PcxFrameDecoder {
public:
    PcxMetaData() = default;
    ~PcxMetaData() override;

    bool GetItem(ItemTag& tag) override;

protected:
    void RefreshRead() override;
    void RefreshWrite() override;
    void DetachFrames() override;
    std::string_view GetName() const override { return "PcxMetaData"; }
    std::span<const PixelFormat> GetSavedPixelFormats() const override { return {}; }
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
};

} // namespace ImagingFramework
