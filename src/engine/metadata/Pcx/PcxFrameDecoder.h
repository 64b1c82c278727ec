#pragma once

#include "MemoryManagement/MemPtr.h"
#include "metadata/Frames/IFrameDecoder.h"
#include "metadata/Pcx/PcxHeader.h"

namespace ImagingFramework {

/// Decodes the one frame of a PCX file: 1, 2, 4 and 8 bits in one plane, 1 bit in up to four planes, 8 bits in three.
class PcxFrameDecoder : public IFrameDecoderImpl {
public:
    /// 72 when the file gives no value.
    double GetResolutionX() const override;
    double GetResolutionY() const override;
    /// The entries that the bits of a pixel can name. Those of 256 colours stand behind the pixels, which are read for
    /// that if they have not been; fails with `MediaCorruptedException` where they do not stand there.
    std::shared_ptr<ColorMap> GetColorMap() override;

protected:
    /// Fails with `MediaCorruptedException`, also where the file is too short for the frame, or with
    /// `UnsupportedPixelFormatException` for other planes and bits.
    void ReadHeaders() override;
    void DecodeFrameInternal() override;
    /// Unpacks the lines of all planes and remembers where they end. Fails with `UnexpectedException` for a run that
    /// goes beyond the frame, and with `MediaCorruptedException` for a file that ends before it.
    MemPtr<std::uint8_t> DoDecompressPcxBytes();
    /// Makes a line of the frame from the line of each plane.
    void DoDecompressScanLine(const std::uint8_t* pPlanes, std::uint8_t* pLine) const;

private:
    void LoadBasicParams();
    void CheckDataSize();
    std::uint64_t GetDecompressedLineSize() const noexcept {
        return std::uint64_t{m_header.BytesPerLine} * m_header.PlaneCount;
    }
    void ReadFilePalette(ColorMap& map);
    void InterleavePlanes(const std::uint8_t* pPlanes, std::uint8_t* pLine) const noexcept;
    void MergePlanes(const std::uint8_t* pPlanes, std::uint8_t* pLine) const noexcept;

    tagPCXHEADER m_header{};
    std::uint64_t m_uintDataEnd = 0; ///< byte behind the pixels; 0: not known yet
};

} // namespace ImagingFramework
