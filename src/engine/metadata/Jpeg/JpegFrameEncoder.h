#pragma once

#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Frames/IFrameEncoder.h"
#include "metadata/Frames/IScanLineConsumer.h"
#include "metadata/Iptc/IptcDataStorage.h"
#include "metadata/Jpeg/JpegCompressor.h"

#include <memory>
#include <string>
#include <vector>

namespace ImagingFramework {

/// Writes JPEG files of one frame, and takes lines from a producer in place of a raster.
class JpegFrameEncoder : public IFrameEncoderImpl, public IScanLineConsumerImpl {
public:
    JpegFrameEncoder() = default;
    ~JpegFrameEncoder() override = default;

    using IFrameEncoderImpl::Attach;
    void Detach() override;

    /// Fails with `ArgumentOutOfRangeException` ("quality") outside 0 to 100.
    void SetQuality(std::int32_t quality);
    void SetProgressive(bool progressive) noexcept { m_settings.Progressive = progressive; }
    void SetChromaSubsampling(bool enabled) noexcept { m_settings.ChromaSubsampling = enabled; }
    /// Rows of coded units between restart markers, 0 for none.
    void SetRestartInterval(std::uint32_t rows) noexcept { m_settings.RestartInterval = rows; }
    /// Whether the samples of inks are written as what remains of each, which is what programs expect.
    void SetInvertInks(bool invert) noexcept { m_bInvertInks = invert; }

    /// The blocks that go into the file, copied; null for none.
    void SetExif(const ExifDataStorage* pExif) { m_pExif = CopyOf(pExif); }
    void SetIptc(const IptcDataStorage* pIptc) { m_pIptc = CopyOf(pIptc); }
    void SetAdobeResources(const AdobeResources* pResources) { m_pResources = CopyOf(pResources); }
    /// A packet in UTF-8; an empty one is not written.
    void SetXmpData(std::string packet) { m_xmp = std::move(packet); }

    /// Begins a file for the lines of a producer; fails with `UnsupportedPixelFormatException` ("enPixelFormat"), and like
    /// `EncodeFrame` before `Attach` and for a second frame.
    void Initialize(std::shared_ptr<const FilterData> pSourceImageMetaData) override;
    /// The last line ends the file.
    void SetScanline(const std::uint8_t* pScanline, std::uint32_t row) override;

protected:
    std::span<const PixelFormat> GetSavedPixelFormats() const override;
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
    void EncodeFrameInternal() override;
    void ResetFrameState() override;

private:
    void Begin(PixelFormat format, std::uint32_t width, std::uint32_t height, std::uint16_t horizontalDensity,
               std::uint16_t verticalDensity);
    void WriteSegments(double horizontalResolution, double verticalResolution,
                       const std::vector<std::uint8_t>& profile);
    std::vector<std::uint8_t> SerializeExif(double horizontalResolution, double verticalResolution) const;
    std::vector<std::uint8_t> SerializeResources() const;
    void EncodeLines();
    /// Ends the file, after the last line.
    void Finish();

    template <class T>
    static std::unique_ptr<T> CopyOf(const T* pBlock) {
        return pBlock == nullptr ? nullptr : std::make_unique<T>(*pBlock);
    }

    JpegSettings m_settings;
    bool m_bInvertInks = true;
    std::unique_ptr<ExifDataStorage> m_pExif;
    std::unique_ptr<IptcDataStorage> m_pIptc;
    std::unique_ptr<AdobeResources> m_pResources;
    std::string m_xmp;
    std::unique_ptr<JpegCompressor> m_pCompressor; ///< as long as lines are due
    std::vector<std::uint8_t> m_line;              ///< for inks
};

} // namespace ImagingFramework
