#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>

namespace Corvane::Rasterloom::Codecs {

class BmpFrame;

/// Reads BMP files, OS/2 and RLE ones included. The frames are `BmpFrame`s.
class RASTERLOOM_API BmpReader : public FormatReader {
public:
    /// Closed, or opened as `Open` does.
    BmpReader();
    explicit BmpReader(const std::shared_ptr<Host::Stream>& stream);
    explicit BmpReader(const std::filesystem::path& fileName);
    ~BmpReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

    /// Takes the lock; the caller holds the frame's.
    void _FrameLoadCompression(BmpFrame& frame);

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
};

} // namespace Corvane::Rasterloom::Codecs
