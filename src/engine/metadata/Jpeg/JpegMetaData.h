#pragma once

#include "metadata/Frames/FormatMetaData.h"
#include "metadata/Jpeg/JpegFrameDecoder.h"
#include "metadata/Jpeg/JpegFrameEncoder.h"

namespace ImagingFramework {

/// A JPEG file. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`, `ColorProfile`,
/// `JpegRestartOption`, `ChromaSubsamplingEnabled`, `Exif`, `Iptc`, `Xmp`, `AdobeResources`; written: `FrameBitmap`,
/// `JpegRestartOption`, `Progressive`, `Quality`, `ChromaSubsamplingEnabled`, `Exif`, `Iptc`, `Xmp`, `AdobeResources`. The
/// blocks that are written are copied; a null pointer takes one back.
class JpegMetaData final : public FormatMetaData<JpegFrameDecoder, JpegFrameEncoder, FileFormat::Jpeg> {
public:
    JpegMetaData();

    using JpegFrameDecoder::SetFastThumbnails;

protected:
    bool GetFormatItem(ItemTag& tag) override;
    bool SetFormatItem(ItemTag& tag) override;
    std::string_view GetName() const override { return "JpegMetaData"; }
};

} // namespace ImagingFramework
