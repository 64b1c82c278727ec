#pragma once

#include "transforms/Transform.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// Resamples a whole raster to a new size, or a part of that size, with one family of samplers per `InterpolationMode`.
///
/// All formats are accepted. Indexed ones take `NearestNeighbour`, which keeps the palette, and `ScaleToGray`, which gives
/// the palette's own format; the packed 16-bit ones take `NearestNeighbour` alone. Colours are weighted by alpha, so that
/// transparent pixels lend none; premultiplied formats are filtered as they stand. A source of the new size already is
/// copied. Sizes that no raster can have fail with `OverflowException`.
class ResizeTransform final : public Transform {
public:
    /// In pixels; 0 fails with `ArgumentOutOfRangeException`.
    void SetWidth(std::uint32_t width);
    void SetHeight(std::uint32_t height);
    /// Values above 15 fail with `ArgumentOutOfRangeException`.
    void SetInterpolationMode(InterpolationMode mode);
    /// The part of the new size to compute, inclusive corners in pixels; copied.
    void SetCropRectangle(const RegionRect& rectangle);
    /// The same without a copy; null clears.
    void SetCropRectangleRef(const RegionRect* pRectangle);

    /// Threads of the row-parallel loops, which run when `GetOmpSupport` allows them and this is above 1; 0, the value at
    /// first, means the processors of the machine. Results are equal.
    void SetProcessorCount(std::uint32_t count) noexcept { m_uintProcessorCount = count; }

protected:
    void ApplyTransformInternal() override;
    bool IsFormatAccepted(PixelFormat format) const override;
    bool WritesEveryPixel() const override { return true; }
    /// Refuses a region that is not the whole source.
    void AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                         std::unique_ptr<BitmapData>& destinationSlot) override;

private:
    /// The part to compute: the crop rectangle, or the whole new size.
    RegionRect CheckedOutput(InterpolationMode mode) const;
    void CheckMode(InterpolationMode mode) const;
    void CheckModeOfFormat(InterpolationMode mode) const;
    void CopySource(const RegionRect& output);
    std::uint32_t ThreadCount() const;
    void Resample(InterpolationMode mode, const RegionRect& output);

    std::uint32_t m_uintNewWidth = 0;
    std::uint32_t m_uintNewHeight = 0;
    InterpolationMode m_enInterpolationMode = InterpolationMode::MediumQuality;
    const RegionRect* m_pCropRectangle = nullptr;
    std::unique_ptr<const RegionRect> m_pOwnedCropRectangle;
    std::uint32_t m_uintProcessorCount = 0;
};

} // namespace ImagingFramework
