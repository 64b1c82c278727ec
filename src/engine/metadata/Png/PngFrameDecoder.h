#pragma once

#include "metadata/Frames/IFrameDecoder.h"
#include "metadata/Frames/PaletteIndexMap.h"
#include "metadata/Png/PngDecompressor.h"

#include <memory>
#include <vector>

namespace ImagingFramework {

/// Decodes the one frame of a PNG file. Gray of less than 8 bits is read as indices into a ramp, and indices of 2 bits as
/// those of 4 bits.
class PngFrameDecoder : public IFrameDecoderImpl {
public:
    void Detach() override;
    double GetResolutionX() const override { return m_resolutionX; }
    double GetResolutionY() const override { return m_resolutionY; }
    std::shared_ptr<ColorMap> GetColorMap() override;

    bool IsInterlaced() const noexcept { return m_bInterlaced; }
    bool GetSkipCrcCheck() const noexcept { return m_bSkipCrcCheck; }
    /// Whether chunks with wrong check sums are taken as they are; from the next `Attach` on.
    void SetSkipCrcCheck(bool skip) noexcept { m_bSkipCrcCheck = skip; }

protected:
    /// Fails with `MediaCorruptedException`.
    void ReadHeaders() override;
    void DecodeFrameInternal() override;
    std::uint64_t GetProgressStepCount() const override;
    const std::vector<std::uint8_t>& GetColorProfileRef() override { return m_profile; }

private:
    void LoadBasicParams(const PngDecompressor& decompressor);
    void CheckDataSize(std::uint64_t rowSize);
    void ReadResolution(const PngDecompressor& decompressor);
    void ReadColorProfile(const PngDecompressor& decompressor);
    std::shared_ptr<ColorMap> ReadColorMap(const PngDecompressor& decompressor) const;
    void DoDecompressPng(PngDecompressor& decompressor);
    void DecodePasses(PngDecompressor& decompressor, std::uint32_t passes);
    void FinishLine(std::uint8_t* pLine) const noexcept;

    double m_resolutionX = BitmapData::DefaultResolution;
    double m_resolutionY = BitmapData::DefaultResolution;
    bool m_bInterlaced = false;
    bool m_bTwoBits = false; ///< the samples of the file, which become 4 bits
    bool m_bSkipCrcCheck = false;
    bool m_bCrcSkipped = false; ///< in the attached file
    std::shared_ptr<const ColorMap> m_pColorMap;
    PaletteIndexMap m_indexMap;
    std::vector<std::uint8_t> m_profile;
};

} // namespace ImagingFramework
