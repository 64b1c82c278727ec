#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

class JpegFrame;

/// Reads JPEG files. The frames are `JpegFrame`s.
class RASTERLOOM_API JpegReader : public FormatReader {
public:
    JpegReader();
    explicit JpegReader(const std::shared_ptr<Host::Stream>& stream);
    explicit JpegReader(const std::filesystem::path& fileName);
    ~JpegReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

    /// Whether thumbnails are made from a frame that the decoder has already reduced by 2, 4 or 8: several times faster,
    /// with slightly other numbers. False at first.
    bool get_FastThumbnails();
    void set_FastThumbnails(bool value);

    /// Takes the lock; the caller holds the frame's.
    void _FrameLoadSettings(JpegFrame& frame, JpegEncoderOptions::Settings& settings);

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;

private:
    bool m_bFastThumbnails = false;
};

} // namespace Corvane::Rasterloom::Codecs
