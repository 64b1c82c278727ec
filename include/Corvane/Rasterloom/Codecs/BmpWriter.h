#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes BMP files of one frame. Frames that are no `BmpFrame` are written uncompressed.
class RASTERLOOM_API BmpWriter : public FormatWriter {
public:
    /// Closed, or opened as `Open` does.
    BmpWriter();
    explicit BmpWriter(const std::shared_ptr<Host::Stream>& stream);
    explicit BmpWriter(const std::filesystem::path& fileName);
    ~BmpWriter() override;

    std::unique_ptr<IFrame> GetEmptyFrame() override;
    std::unique_ptr<IFormatWriter> Clone() override;

protected:
    void OnBeforeAddFrame(Frame& frame) override;
};

} // namespace Corvane::Rasterloom::Codecs
