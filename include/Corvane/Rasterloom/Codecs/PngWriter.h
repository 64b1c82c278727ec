#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes PNG files of one frame, with palette, resolution and colour profile. Frames that are no `PngFrame` are
/// written with the settings that `PngEncoderOptions` begin with. A profile for other colours than those of the frame
/// is left out.
class RASTERLOOM_API PngWriter : public FormatWriter {
public:
    /// Closed, or opened as `Open` does.
    PngWriter();
    explicit PngWriter(const std::shared_ptr<Host::Stream>& stream);
    explicit PngWriter(const std::filesystem::path& fileName);
    ~PngWriter() override;

    std::unique_ptr<IFrame> GetEmptyFrame() override;
    std::unique_ptr<IFormatWriter> Clone() override;

protected:
    void OnBeforeAddFrame(Frame& frame) override;
};

} // namespace Corvane::Rasterloom::Codecs
