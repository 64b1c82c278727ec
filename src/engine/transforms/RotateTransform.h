#pragma once

#include "transforms/Transform.h"

namespace ImagingFramework {

/// Turns a raster by any angle about its centre, onto a canvas that holds all of it. What the raster does not cover gets
/// the background, with which the edges are blended.
///
/// Whole-channel formats are accepted. Positions are 16.16 fixed point, counted from the centres of both rasters, so that
/// centre falls on centre and multiples of 90 degrees are exact. Where pixels have alpha, colours are weighted by it. A
/// canvas that no raster can be fails with `OverflowException`.
class RotateTransform final : public Transform {
public:
    /// In degrees, clockwise for positive values; any number.
    void SetAngle(double degrees) noexcept { m_angle = degrees; }
    /// In the colour space of the source.
    void SetBackgroundColor(const ColorRecord& color) noexcept { m_backgroundColor = color; }
    /// The quality levels, `NearestNeighbour` and `Bilinear`; any other fails with `ArgumentException`.
    void SetInterpolationMode(InterpolationMode mode);

protected:
    void ApplyTransformInternal() override;
    bool IsFormatAccepted(PixelFormat format) const override;
    /// Refuses a region that is not the whole source.
    void AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                         std::unique_ptr<BitmapData>& destinationSlot) override;
    bool WritesEveryPixel() const override { return true; }

private:
    double m_angle = 0.0;
    ColorRecord m_backgroundColor{};
    InterpolationMode m_enInterpolationMode = InterpolationMode::MediumQuality;
};

} // namespace ImagingFramework
