#pragma once

#include <Corvane/Rasterloom/Codecs/CompressionType.h>
#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Settings for BMP files.
class RASTERLOOM_API BmpEncoderOptions : public EncoderOptionsOf<Formats::Bmp> {
public:
    /// Uncompressed, or as `set_Compression` takes it.
    BmpEncoderOptions();
    explicit BmpEncoderOptions(CompressionType compression);
    ~BmpEncoderOptions() override;

    /// `None` at first, or `Rle`, which takes 4 and 8-bit indexed bitmaps only. Any other fails with
    /// `Host::ArgumentException` ("compression").
    CompressionType get_Compression() const noexcept { return m_enCompression; }
    void set_Compression(CompressionType compression);

private:
    CompressionType m_enCompression = CompressionType::None;
};

} // namespace Corvane::Rasterloom::Codecs
