#pragma once

#include "Common/PerChannelItem.h"
#include "transforms/Transform.h"

namespace ImagingFramework {

/// A transform that touches only the channels of its `PerChannelItem`; the others keep their values.
class PerChannelTransform : public Transform {
public:
    PerChannelItem& GetChannels() noexcept { return m_channels; }
    const PerChannelItem& GetChannels() const noexcept { return m_channels; }

protected:
    /// Copies the region as well, unless the size is explicit or every channel of the format will be written.
    void InitializeDestination(bool useExplicit, std::uint32_t width, std::uint32_t height,
                               PixelFormat format) override;

    PerChannelItem m_channels;
};

} // namespace ImagingFramework
