#include "transforms/PerChannelTransform.h"

#include "transforms/RegionCopy.h"

namespace ImagingFramework {

void PerChannelTransform::InitializeDestination(bool useExplicit, std::uint32_t width, std::uint32_t height,
                                                PixelFormat format) {
    Transform::InitializeDestination(useExplicit, width, height, format);
    if (!useExplicit && m_channels.CountSelectedChannels(m_enSourceFormat) != PixelFormatChannelCount(m_enSourceFormat)) {
        CopyRegion(*m_pSource, static_cast<std::uint32_t>(m_region.Left), static_cast<std::uint32_t>(m_region.Top),
                   *m_pDestination);
    }
}

} // namespace ImagingFramework
