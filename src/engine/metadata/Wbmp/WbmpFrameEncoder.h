#pragma once

#include "metadata/Frames/IFrameEncoder.h"

namespace ImagingFramework {

/// Writes wireless bitmaps of type 0. Pixels of a dark first palette entry become 0; of any other they become 1.
class WbmpFrameEncoder : public IFrameEncoderImpl {
protected:
    std::span<const PixelFormat> GetSavedPixelFormats() const override;
    /// Always `Format1bppIndexed`.
    PixelFormat GetAppropriateFormatInternal(PixelFormat format) const override;
    /// Fails with `PaletteException` for a frame without a palette.
    void EncodeFrameInternal() override;
    /// Writes an integer in groups of 7 bits, the most significant group first; all bytes but the last have the top
    /// bit.
    void SaveUIntSeptets(std::uint32_t value);

private:
    bool IsFirstEntryDark() const;
};

} // namespace ImagingFramework
