#pragma once

#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/SettingsFrameOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The frame of a JPEG file. Settings are as in `JpegEncoderOptions`; in a frame of a reader `ChromaSubsamplingEnabled`
/// and `RestartInterval` are those of the file.
class RASTERLOOM_API JpegFrame : public SettingsFrameOf<Formats::Jpeg, JpegEncoderOptions> {
public:
    /// For writing. A bitmap is copied; null fails as in `SetBitmap`.
    JpegFrame();
    explicit JpegFrame(std::int32_t quality);
    JpegFrame(std::int32_t quality, bool isProgressive);
    JpegFrame(std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled);
    explicit JpegFrame(Bitmap* bitmap);
    JpegFrame(Bitmap* bitmap, std::int32_t quality);
    JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive);
    JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled);
    ~JpegFrame() override;

    /// 0 to 100; fails as in the options.
    std::int32_t get_Quality();
    void set_Quality(std::int32_t quality);
    /// Whether the frame is written in scans of growing detail.
    bool get_IsProgressive();
    void set_IsProgressive(bool isProgressive);
    /// Whether colour has half the resolution of brightness.
    bool get_ChromaSubsamplingEnabled();
    void set_ChromaSubsamplingEnabled(bool enabled);
    /// Rows of coded units between restart markers, 0 for none; fails as in the options.
    std::int32_t get_RestartInterval();
    void set_RestartInterval(std::int32_t restartInterval);

protected:
    void LoadSettings(FormatReader& reader, JpegEncoderOptions::Settings& settings) override;

private:
    friend class FormatReaderOf<Formats::Jpeg>;
    JpegFrame(FormatReader& reader, std::int32_t index);
};

} // namespace Corvane::Rasterloom::Codecs
