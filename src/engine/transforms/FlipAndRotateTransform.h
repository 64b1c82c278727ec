#pragma once

#include "transforms/Transform.h"

#include <cstdint>

namespace ImagingFramework {

/// The eight ways to lay a picture down: a turn clockwise, then a flip of x. The names of the same values that flip y, or
/// both, are aliases.
enum class RotateFlipType : std::uint32_t {
    RotateNoneFlipNone = 0,
    Rotate90FlipNone = 1,
    Rotate180FlipNone = 2,
    Rotate270FlipNone = 3,
    RotateNoneFlipX = 4,
    Rotate90FlipX = 5,
    Rotate180FlipX = 6,
    Rotate270FlipX = 7,
};

/// Turns by right angles and flips, without a loss and in all formats. Palette and both resolutions go over as they are.
class FlipAndRotateTransform final : public Transform {
public:
    /// Fails with `ArgumentException` ("mode") for a value above 7.
    void SetMode(RotateFlipType mode);

protected:
    void ApplyTransformInternal() override;
    bool IsFormatAccepted(PixelFormat format) const override;
    /// Refuses a region that is not the whole source.
    void AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                         std::unique_ptr<BitmapData>& destinationSlot) override;
    bool WritesEveryPixel() const override { return true; }

private:
    void CopyRows(bool reverseColumns, bool reverseRows);
    void Transpose(bool reverseColumns, bool reverseRows);

    RotateFlipType m_enMode = RotateFlipType::RotateNoneFlipNone;
};

} // namespace ImagingFramework
