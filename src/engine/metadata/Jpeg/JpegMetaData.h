#pragma once

#include "metadata/Jpeg/JpegFrameDecoder.h"
#include "metadata/Jpeg/JpegFrameEncoder.h"
#include "metadata/MetaData.h"

namespace ImagingFramework {

/// A JPEG file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`, `ColorProfile`,
/// `JpegRestartOption`, `ChromaSubsamplingEnabled`, `Exif`, `Iptc`, `Xmp`, `AdobeResources`; written: `FrameBitmap`,
/// `JpegRestartOption`, `Progressive`, `Quality`, `ChromaSubsamplingEnabled`, `Exif`, `Iptc`, `Xmp`, `AdobeResources`. The
/// blocks that are written are copied; a null pointer takes one back.
class JpegMetaData final : public MetaData, private JpegFrameDecoder, private JpegFrameEncoder {
public:
    JpegMetaData();
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
