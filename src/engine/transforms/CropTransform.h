#pragma once

#include "transforms/Transform.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Cuts a rectangle out of a raster. What lies outside the raster, the whole rectangle even, is filled with a background
/// colour; in an indexed raster, which keeps its palette, with the entry that is nearest to it.
///
/// All formats are accepted. The packed 16-bit ones take the colour byte by byte, as `FitColorToFormat` lays it out.
class CropTransform final : public Transform {
public:
    /// The corner of the rectangle in the source; may be negative.
    void SetCropX(std::int32_t value) noexcept { m_intCropX = value; }
    void SetCropY(std::int32_t value) noexcept { m_intCropY = value; }
    /// In pixels; 0, the value at first, fails with `ArgumentOutOfRangeException`.
    void SetCropWidth(std::uint32_t value);
    void SetCropHeight(std::uint32_t value);
    /// Inclusive corners; fails with `ArgumentException` ("rectangle") when they are out of order.
    void SetCropRectangle(const RegionRect& rectangle);
    /// In the colour space of the source, RGB for an indexed one.
    void SetBackgroundColor(const ColorRecord& color) noexcept { m_backgroundColor = color; }

protected:
    void ApplyTransformInternal() override;
    bool IsFormatAccepted(PixelFormat format) const override;
    /// Refuses a region that is not the whole source.
    void AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                         std::unique_ptr<BitmapData>& destinationSlot) override;
    bool WritesEveryPixel() const override { return true; }

private:
    std::uint8_t FindBackgroundIndex() const;
    std::vector<std::uint8_t> MakeBackgroundRow() const;

    std::int32_t m_intCropX = 0;
    std::int32_t m_intCropY = 0;
    std::uint32_t m_uintCropWidth = 0;
    std::uint32_t m_uintCropHeight = 0;
    ColorRecord m_backgroundColor{};
};

} // namespace ImagingFramework
