#pragma once

#include "metadata/MetaData.h"
#include "metadata/Wbmp/WbmpFrameDecoder.h"
#include "metadata/Wbmp/WbmpFrameEncoder.h"

namespace ImagingFramework {

/// A wireless bitmap. Items beyond those of every format, read: `FrameBitmap`, `FrameThumbnail`, `FrameCount`,
/// `FrameCompression`; written: `FrameBitmap`, `FrameCompression` (there is `None` only).
class WbmpMetaData final : public MetaData, private WbmpFrameDecoder, private WbmpFrameEncoder {
public:
    WbmpMetaData() = default;
    /// Failures of a file that was not closed are lost: `Close` reports them.
    ~WbmpMetaData() override;

    bool GetItem(ItemTag& tag) override;
    bool SetItem(ItemTag& tag) override;

protected:
    void RefreshRead() override;
    void RefreshWrite() override;
    void DetachFrames() override;
    std::string_view GetName() const override { return "WbmpMetaData"; }
};

} // namespace ImagingFramework
