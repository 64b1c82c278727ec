#pragma once

#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Frames/IFrameDecoder.h"
#include "metadata/Iptc/IptcDataStorage.h"
#include "metadata/Jpeg/JpegDecompressor.h"
#include "metadata/Jpeg/JpegSegments.h"

#include <vector>

namespace ImagingFramework {

/// Decodes the one frame of a JPEG file: gray, RGB and CMYK of 8 bits a channel.
class JpegFrameDecoder : public IFrameDecoderImpl {
public:
    void Detach() override;
    double GetResolutionX() const override { return m_resolutionX; }
    double GetResolutionY() const override { return m_resolutionY; }
    std::shared_ptr<ColorMap> GetColorMap() override { return nullptr; }

    bool IsChromaSubsampled() const noexcept { return m_bChromaSubsampled; }
    /// Rows of coded units between restart markers, 0 for none.
    std::uint32_t GetRestartInterval() const noexcept { return m_uintRestartInterval; }
    /// Lets the library reduce frames by 2, 4 or 8 on their way to a thumbnail: much faster, with other numbers.
    void SetFastThumbnails(bool fast) noexcept { m_bFastThumbnails = fast; }

protected:
    /// Keeps the metadata segments as bytes; they are parsed when they are asked for. Fails with
    /// `MediaCorruptedException`.
    void ReadHeaders() override;
    void DecodeFrameInternal() override;
    const std::vector<std::uint8_t>& GetColorProfileRef() override { return m_segments.ColorProfile; }
    /// The blocks, parsed anew; null when the file has none. A broken block fails as it tells itself.
    std::unique_ptr<ExifDataStorage> GetExifData() const;
    std::unique_ptr<IptcDataStorage> GetIptcData() const;
    std::unique_ptr<AdobeResources> GetAdobeResources() const;
    /// UTF-8, empty when there is no packet.
    const std::string& GetXMPData() const noexcept { return m_segments.Xmp; }
    /// The bytes of the file's profile, or those of sRGB where EXIF names it; empty when the frame has none.
    std::vector<std::uint8_t> GetColorProfile() const;

private:
    void ReadResolution(const jpeg_decompress_struct& info);
    /// Resolution and colour space of a block that may be broken.
    void ReadExifFields();
    bool CheckIfExifDataContainsProfileInfo(const ExifData& exif) const;
    void LoadBasicParams(const jpeg_decompress_struct& info);
    void CheckDataSize();
    std::uint32_t ChooseReduction() const;
    void DecodeLines(JpegDecompressor& decompressor, std::uint32_t width, std::uint32_t height);

    JpegSegments m_segments;
    double m_resolutionX = BitmapData::DefaultResolution;
    double m_resolutionY = BitmapData::DefaultResolution;
    std::uint32_t m_uintRestartInterval = 0;
    bool m_bChromaSubsampled = true;
    bool m_bSRgb = false; ///< by EXIF, in a file without a profile
    bool m_bFastThumbnails = false;
};

} // namespace ImagingFramework
