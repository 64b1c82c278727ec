#pragma once

#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

class PngReader;

/// The frame of a PNG file. Settings are as in `PngEncoderOptions`; in a frame of a reader `Interlaced` is that of the
/// file.
class RASTERLOOM_API PngFrame : public Frame {
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

    /// The lock is held.
    const PngEncoderOptions::Settings& get__Settings();

protected:
    std::unique_ptr<EncoderOptions> CreateEmptyEncoderOptions() override;
    void OnImportEncoderOptions(const EncoderOptions& options) override;
    void OnExportEncoderOptions(EncoderOptions& options) override;

private:
    friend class PngReader;
    PngFrame(PngReader& reader, std::int32_t index);

    PngEncoderOptions m_options;
    bool m_bLoaded = true;
};

} // namespace Corvane::Rasterloom::Codecs
