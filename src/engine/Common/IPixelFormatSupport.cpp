#include "Common/IPixelFormatSupport.h"

#include <algorithm>

namespace ImagingFramework {

std::span<const PixelFormat> ListedPixelFormats() {
    static constexpr PixelFormat formats[] = {
        PixelFormat::Format1bppIndexed,     PixelFormat::Format4bppIndexed,     PixelFormat::Format8bppIndexed,
        PixelFormat::Format16bppArgb1555,   PixelFormat::Format16bppGrayScale,  PixelFormat::Format16bppRgb555,
        PixelFormat::Format16bppRgb565,     PixelFormat::Format24bppRgb,        PixelFormat::Format32bppRgb,
        PixelFormat::Format32bppArgb,       PixelFormat::Format48bppRgb,        PixelFormat::Format64bppArgb,
        PixelFormat::Format32bppCmyk,       PixelFormat::Format8bppGrayScale,   PixelFormat::Format16bppAGrayScale,
        PixelFormat::Format32bppAGrayScale, PixelFormat::Format64bppCmyk,       PixelFormat::Format80bppAcmyk,
    };
    return formats;
}

bool IPixelFormatSupportImpl::IsPixelFormatSupported(PixelFormat format) const {
    std::vector<PixelFormat> list;
    GetSupportedPixelFormats(list);
    return std::ranges::find(list, format) != list.end();
}

void IPixelFormatSupportImpl::GetSupportedPixelFormats(std::vector<PixelFormat>& list) const {
    list.clear();
    std::ranges::copy_if(ListedPixelFormats(), std::back_inserter(list),
                         [this](PixelFormat format) { return IsFormatAccepted(format); });
}

PixelFormat IPixelFormatSupportImpl::GetAppropriatePixelFormat(PixelFormat format) const {
    const PixelFormat asked = format == PixelFormat::FormatUnknown ? PixelFormat::Format32bppArgb : format;
    return IsPixelFormatSupported(asked) ? asked : GetBestPixelFormat(asked);
}

PixelFormat IPixelFormatSupportImpl::GetBestPixelFormat(PixelFormat format) const {
    return PixelFormatIsExtended(format) ? PixelFormat::Format64bppArgb : PixelFormat::Format32bppArgb;
}

} // namespace ImagingFramework
