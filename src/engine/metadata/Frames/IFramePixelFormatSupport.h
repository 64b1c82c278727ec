#pragma once

#include "Common/IPixelFormatSupport.h"

namespace ImagingFramework {

/// Which pixel formats a file format can save. The list and what stands in for other formats are given by the format.
class IFramePixelFormatSupport : public IPixelFormatSupportImpl {
public:
    /// In the order of the format's own list.
    void GetSupportedPixelFormats(std::vector<PixelFormat>& list) const override;
    PixelFormat GetBestPixelFormat(PixelFormat format) const override { return GetAppropriateFormatInternal(format); }
    /// `format` when it can be saved, else the one to convert to; `FormatUnknown` asks with `Format32bppArgb`.
    PixelFormat GetClosestPixelFormat(PixelFormat format) const { return GetAppropriatePixelFormat(format); }

protected:
    bool IsFormatAccepted(PixelFormat format) const override;
    virtual std::span<const PixelFormat> GetSavedPixelFormats() const = 0;
    /// Fails with `MetaDataWritingNotAllowedException` in a format that cannot be written.
    virtual PixelFormat GetAppropriateFormatInternal(PixelFormat format) const = 0;
};

} // namespace ImagingFramework
