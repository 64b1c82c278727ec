#include "metadata/Frames/IFramePixelFormatSupport.h"

#include <algorithm>

namespace ImagingFramework {

void IFramePixelFormatSupport::GetSupportedPixelFormats(std::vector<PixelFormat>& list) const {
    const std::span<const PixelFormat> formats = GetSavedPixelFormats();
    list.assign(formats.begin(), formats.end());
}

bool IFramePixelFormatSupport::IsFormatAccepted(PixelFormat format) const {
    const std::span<const PixelFormat> formats = GetSavedPixelFormats();
    return std::ranges::find(formats, format) != formats.end();
}

} // namespace ImagingFramework
