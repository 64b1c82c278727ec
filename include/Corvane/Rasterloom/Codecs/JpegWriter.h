#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes JPEG files of one frame. Frames that are no `JpegFrame` are written with the settings that
/// `JpegEncoderOptions` begin with.
class RASTERLOOM_API JpegWriter : public FormatWriter {
public:
    JpegWriter();
    explicit JpegWriter(const std::shared_ptr<Host::Stream>& stream);
    explicit JpegWriter(const std::filesystem::path& fileName);
    ~JpegWriter() override;

    std::unique_ptr<IFrame> GetEmptyFrame() override;
    std::unique_ptr<IFormatWriter> Clone() override;

protected:
    void OnBeforeAddFrame(Frame& frame) override;
};

} // namespace Corvane::Rasterloom::Codecs
