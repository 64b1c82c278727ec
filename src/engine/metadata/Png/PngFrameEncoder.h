#pragma once

#include "metadata/Frames/IFrameEncoder.h"
#include "metadata/Png/PngCompressor.h"

namespace ImagingFramework {

/// Writes PNG files of one frame.
class PngFrameEncoder : public IFrameEncoderImpl {
public:
    PngFrameEncoder() = default;
    ~PngFrameEncoder() override = default;

    void SetInterlaced(bool interlaced) noexcept { m_settings.Interlaced = interlaced; }
    /// 0 to 9, or `PngSettings::DefaultLevel`; outside fails with `ArgumentOutOfRangeException` ("level").
    void SetCompressionLevel(std::int32_t level);
    void SetFilter(PngFilter filter) noexcept { m_settings.Filter = filter; }

protected:
    std::span<const PixelFormat> GetSavedPixelFormats() const override;
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
    /// Fails with `PaletteException` for an indexed frame without a palette.
    void EncodeFrameInternal() override;
    std::uint64_t GetProgressStepCount() const override;

private:
    /// The number of entries written.
    std::uint32_t DoEncodePalette(PngCompressor& compressor) const;
    void EncodeLines(PngCompressor& compressor, std::uint32_t entryCount);

    PngSettings m_settings;
};

} // namespace ImagingFramework
