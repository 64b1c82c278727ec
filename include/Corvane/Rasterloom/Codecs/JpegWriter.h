#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriterOf.h>
#include <Corvane/Rasterloom/Codecs/MetadataWriteSupport.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes JPEG files of one frame. Frames that are no `JpegFrame` are written with the settings that
/// `JpegEncoderOptions` begin with. The metadata blocks are those set here or imported with options, until the file is
/// closed. Too much of one fails when the frame is added: EXIF above a segment's size with `UnexpectedException`, XMP above
/// 65,502 bytes with `Host::ArgumentException`.
class RASTERLOOM_API JpegWriter : public FormatWriterOf<Formats::Jpeg>, public MetadataWriteSupport {
public:
    /// Closed, or opened as `Open` does.
    JpegWriter();
    explicit JpegWriter(const std::shared_ptr<Host::Stream>& stream);
    explicit JpegWriter(const std::filesystem::path& fileName);
    ~JpegWriter() override;

protected:
    void OnClose() override;
    void OnBeforeAddFrame(Frame& frame) override;
    void OnImportEncoderOptions(const EncoderOptions& options) override;
    void OnExportEncoderOptions(EncoderOptions& options) override;
};

} // namespace Corvane::Rasterloom::Codecs
