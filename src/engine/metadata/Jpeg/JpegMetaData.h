#pragma once

#include "metadata/Jpeg/JpegFrameDecoder.h"
#include "metadata/Jpeg/JpegFrameEncoder.h"
#include "metadata/MetaData.h"

namespace ImagingFramework {

/// A JPEG file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`, `ColorProfile`,
/// `JpegRestartOption`, `ChromaSubsamplingEnabled`; written: `FrameBitmap`, `JpegRestartOption`,
/// `Progressive`, `Quality`, `ChromaSubsamplingEnabled`.
class JpegMetaData final : public MetaData, private JpegFrameDecoder, private JpegFrameEncoder {
public:
    JpegMetaData() = default;
    /// Failures of a file that was not closed are lost: `Close` reports them.
    ~JpegMetaData() override;

    bool GetItem(ItemTag& tag) override;
    bool SetItem(ItemTag& tag) override;
    using JpegFrameDecoder::SetFastThumbnails;

protected:
    void RefreshRead() override;
    void RefreshWrite() override;
    void DetachFrames() override;
    std::string_view GetName() const override { return "JpegMetaData"; }
};

} // namespace ImagingFramework
