#pragma once

#include "metadata/Bmp/BmpHeader.h"
#include "metadata/Bmp/BmpRleReader.h"
#include "metadata/Frames/IFrameDecoder.h"
#include "metadata/Frames/PaletteIndexMap.h"
#include "metadata/MetaDataTypes.h"

namespace ImagingFramework {

/// Decodes the one frame of a BMP file: 1, 4, 8, 16, 24 and 32 bits, RLE4 and RLE8, all header forms from 12 bytes on.
class BitmapFrameDecoder : public IFrameDecoderImpl {
public:
    /// 72 when the file gives no horizontal value.
    double GetResolutionX() const override;
    /// 72 when the file gives no horizontal value, whatever its vertical one is.
    double GetResolutionY() const override;
    std::shared_ptr<ColorMap> GetColorMap() override;
    FrameCompressionType GetCompressionType() const noexcept { return m_compression; }

protected:
    /// Fails with `MediaCorruptedException`, or `UnsupportedPixelFormatException` for another bit count.
    void ReadHeaders() override { DoDecodeHeader(); }
    void DecodeFrameInternal() override;
    void DoDecodeHeader();
    void LoadBasicParams();
    /// Unpacks a run-length encoded line of the file into a line of zeros.
    void DoDecodeScanLine(BmpRleReader& rle, std::uint8_t* pLine);

private:
    bool HasPalette() const noexcept { return m_header.BitCount < 9; }
    void RequireAttached() const;
    /// Fails before anything is allocated when the file cannot hold the pixels.
    void CheckPixelData();
    void DecodeUncompressed();
    void DecodeUncompressedDirectly(BitmapData& output, std::uint32_t rowsPerBlock);
    void DecodeRle();

    BmpHeader m_header;
    FrameCompressionType m_compression = FrameCompressionType::Unknown;
    bool m_bBottomUp = true;
    PaletteIndexMap m_indexMap;
};

} // namespace ImagingFramework
