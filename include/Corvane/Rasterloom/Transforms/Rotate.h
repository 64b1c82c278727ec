#pragma once

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

namespace Corvane::Rasterloom::Transforms {

/// Turns a bitmap by any angle about its centre, onto a canvas that holds all of it. What the bitmap does not cover
/// gets the background colour, with which the edges are blended. Multiples of 90 degrees are exact, though
/// `RotateAndFlip` is faster for them. Formats with whole channels are taken: no indexed and no packed 16-bit ones.
class RASTERLOOM_API Rotate final : public BitmapTransform {
public:
    /// By 0 degrees, over transparent white, with `MediumQuality`, unless given.
    Rotate();
    explicit Rotate(float angle);
    Rotate(float angle, const Color& backgroundColor);
    Rotate(float angle, InterpolationMode interpolationMode);
    Rotate(float angle, const Color& backgroundColor, InterpolationMode interpolationMode);
    ~Rotate() override;

    /// In degrees, clockwise for positive values; any number.
    float get_Angle();
    void set_Angle(float angle);
    /// Converted to the bitmap's colour space. "No colour" fails with `Host::ArgumentNullException`
    /// ("backgroundColor").
    Color get_BackgroundColor();
    void set_BackgroundColor(const Color& backgroundColor);
    /// As it was set.
    InterpolationMode get_InterpolationMode();
    /// `LowQuality` means `NearestNeighbour`, the two others `Bilinear`; besides these five every value fails with
    /// `Host::ArgumentException`.
    void set_InterpolationMode(InterpolationMode interpolationMode);

    void set__Angle(float angle);
    void set__BackgroundColor(const Color& backgroundColor);
    void set__InterpolationMode(InterpolationMode interpolationMode);

protected:
    void ExportSettings() override;

private:
    float m_fAngle = 0.0F;
    Color m_backgroundColor;
    InterpolationMode m_enInterpolationMode = InterpolationMode::MediumQuality;
};

} // namespace Corvane::Rasterloom::Transforms
