#pragma once

#include "Common/PixelFormat.h"

#include <span>
#include <vector>

namespace ImagingFramework {

/// The eighteen formats that may be named as supported, in the order of every list. `Format40bppAcmyk` is absent on purpose:
/// transforms and conversion take it, and no list names it.
std::span<const PixelFormat> ListedPixelFormats();

/// Which pixel formats an object takes.
class IPixelFormatSupport {
public:
    virtual ~IPixelFormatSupport() = default;
    /// Answers from the list of `GetSupportedPixelFormats`.
    virtual bool IsPixelFormatSupported(PixelFormat format) const = 0;
    virtual void GetSupportedPixelFormats(std::vector<PixelFormat>& list) const = 0;
    /// `format` when it is supported, else the best one for it; `FormatUnknown` asks with `Format32bppArgb`.
    virtual PixelFormat GetAppropriatePixelFormat(PixelFormat format) const = 0;
    /// What stands in for a format that is not supported.
    virtual PixelFormat GetBestPixelFormat(PixelFormat format) const = 0;
};

/// Answers from a predicate over `ListedPixelFormats`.
class IPixelFormatSupportImpl : public virtual IPixelFormatSupport {
public:
    bool IsPixelFormatSupported(PixelFormat format) const override;
    void GetSupportedPixelFormats(std::vector<PixelFormat>& list) const override;
    PixelFormat GetAppropriatePixelFormat(PixelFormat format) const override;
    /// `Format64bppArgb` for 16-bit channels, else `Format32bppArgb`.
    PixelFormat GetBestPixelFormat(PixelFormat format) const override;

protected:
    virtual bool IsFormatAccepted(PixelFormat format) const = 0;
};

} // namespace ImagingFramework
