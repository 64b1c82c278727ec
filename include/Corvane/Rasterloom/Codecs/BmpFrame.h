#pragma once

#include <Corvane/Rasterloom/Codecs/CompressionType.h>
#include <Corvane/Rasterloom/Codecs/FrameOf.h>

namespace Corvane::Rasterloom::Codecs {

class BmpReader;

/// The frame of a BMP file.
class RASTERLOOM_API BmpFrame : public FrameOf<Formats::Bmp> {
public:
    /// For writing. A bitmap is copied; null fails as in `SetBitmap`.
    BmpFrame();
    explicit BmpFrame(Bitmap* bitmap);
    explicit BmpFrame(CompressionType compression);
    BmpFrame(Bitmap* bitmap, CompressionType compression);
    ~BmpFrame() override;

    /// As in `BmpEncoderOptions`; read from the file in a frame of a reader.
    CompressionType get_Compression();
    void set_Compression(CompressionType compression);
    CompressionType get__Compression();

protected:
    void OnImportEncoderOptions(const EncoderOptions& options) override;
    void OnExportEncoderOptions(EncoderOptions& options) override;

private:
    friend class BmpReader;
    friend class FormatReaderOf<Formats::Bmp>;
    BmpFrame(FormatReader& reader, std::int32_t index);
    void SetLoadedCompression(CompressionType compression) noexcept;

    CompressionType m_enCompression = CompressionType::None;
    bool m_bCompressionLoaded = true;
};

} // namespace Corvane::Rasterloom::Codecs
