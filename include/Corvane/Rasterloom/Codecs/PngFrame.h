#pragma once

#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/SettingsFrameOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The frame of a PNG file. Settings are as in `PngEncoderOptions`; in a frame of a reader `Interlaced` is that of the
/// file.
class RASTERLOOM_API PngFrame : public SettingsFrameOf<Formats::Png, PngEncoderOptions> {
public:
    /// For writing. A bitmap is copied; null fails as in `SetBitmap`.
    PngFrame();
    explicit PngFrame(bool interlaced);
    explicit PngFrame(Bitmap* bitmap);
    PngFrame(Bitmap* bitmap, bool interlaced);
    ~PngFrame() override;

    /// Whether the frame is written in seven passes of growing detail.
    bool get_Interlaced();
    void set_Interlaced(bool interlaced);
    /// 0 to 9 or `PngEncoderOptions::DefaultCompressionLevel`; fails as in the options.
    std::int32_t get_CompressionLevel();
    void set_CompressionLevel(std::int32_t compressionLevel);
    /// How lines are prepared; fails as in the options.
    PngFilter get_Filter();
    void set_Filter(PngFilter filter);

protected:
    void LoadSettings(FormatReader& reader, PngEncoderOptions::Settings& settings) override;

private:
    friend class FormatReaderOf<Formats::Png>;
    PngFrame(FormatReader& reader, std::int32_t index);
};

} // namespace Corvane::Rasterloom::Codecs
