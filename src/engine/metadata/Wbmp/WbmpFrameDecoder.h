#pragma once

#include "metadata/Frames/IFrameDecoder.h"

namespace ImagingFramework {

/// Decodes the one frame of a wireless bitmap of type 0: a bit for each pixel, black or white.
class WbmpFrameDecoder : public IFrameDecoderImpl {
public:
    /// The format has no resolution: always 72.
    double GetResolutionX() const override { return BitmapData::DefaultResolution; }
    double GetResolutionY() const override { return BitmapData::DefaultResolution; }
    /// Black and white.
    std::shared_ptr<ColorMap> GetColorMap() override;

protected:
    /// Fails with `MediaCorruptedException`, also where the file is too short for the frame.
    void ReadHeaders() override { InitializeWbmp(); }
    void DecodeFrameInternal() override;
    void InitializeWbmp();

private:
    std::uint8_t ReadHeaderByte();
    std::uint32_t ReadInteger();
    std::uint64_t GetRowSize() const noexcept { return (std::uint64_t{m_uintWidth} + 7) / 8; }

    std::uint64_t m_uintDataOffset = 0;
};

} // namespace ImagingFramework
