#pragma once

#include "metadata/Frames/IFrameEncoder.h"
#include "metadata/MetaDataTypes.h"

namespace ImagingFramework {

/// Writes BMP files with a header of 40 bytes, bottom line first.
class BitmapFrameEncoder : public IFrameEncoderImpl {
public:
    /// `None`, or `Rle` for `Format4bppIndexed` and `Format8bppIndexed`; anything else makes `EncodeFrame` fail with
    /// `CompressionTypeException`.
    void SetCompressionType(FrameCompressionType compression) noexcept { m_compression = compression; }

protected:
    std::span<const PixelFormat> GetSavedPixelFormats() const override;
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
    void EncodeFrameInternal() override;
    void DoCodeHeader();
    void DoCodeUncompressed();
    void DoCodeRLE8() { DoCodeRle(8); }
    void DoCodeRLE4() { DoCodeRle(4); }

private:
    void DoCodeBody();
    void DoCodeRle(std::uint32_t bitCount);
    void WriteFileHeader(std::uint32_t pixelOffset);
    void WriteInfoHeader();
    void WritePalette(std::uint32_t entryCount);
    void WriteGrayPalette();
    std::uint32_t GetCompressionField() const;

    FrameCompressionType m_compression = FrameCompressionType::None;
};

} // namespace ImagingFramework
