#pragma once

#include <Corvane/Rasterloom/BitmapProvider.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Host/Geometry.h>
#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>
#include <Corvane/Rasterloom/Transforms/ResizeMode.h>

namespace Corvane::Rasterloom {

/// The operations that change geometry and look, in short form: `bitmap.get_Transforms()->Resize(800, 600)`. Each runs
/// the transform class of its name in place, with the bitmap's unit, time limit and progress, and fails as that class
/// does; an empty bitmap fails with `BitmapEmptyException`.
class RASTERLOOM_API TransformsProvider final : public BitmapProvider {
public:
    explicit TransformsProvider(std::shared_ptr<BitmapLink> link);

    /// Sizes in the bitmap's `Unit`; a side of 0 follows the other.
    void Resize(float width, float height,
                Transforms::InterpolationMode interpolationMode = Transforms::InterpolationMode::MediumQuality,
                Transforms::ResizeMode resizeMode = Transforms::ResizeMode::Resize);
    void Resize(float width, float height, Transforms::ResizeMode resizeMode);
    void Resize(std::int32_t width, std::int32_t height,
                Transforms::InterpolationMode interpolationMode = Transforms::InterpolationMode::MediumQuality,
                Transforms::ResizeMode resizeMode = Transforms::ResizeMode::Resize);
    void Resize(std::int32_t width, std::int32_t height, Transforms::ResizeMode resizeMode);

    /// The rectangle is in the bitmap's `Unit` and may go beyond the bitmap; the background is transparent white where
    /// it is not given.
    void Crop(const Host::RectangleF& rectangle);
    void Crop(const Host::RectangleF& rectangle, const Color& background);
    void Crop(float left, float top, float width, float height);
    void Crop(float left, float top, float width, float height, const Color& background);
    void Crop(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height);
    void Crop(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height, const Color& background);

    /// Turns by right angles and flips, without a loss and in every format.
    void RotateAndFlip(Host::RotateFlipType mode);

    /// In degrees, clockwise; the background is transparent white where it is not given.
    void Rotate(float angle,
                Transforms::InterpolationMode interpolationMode = Transforms::InterpolationMode::MediumQuality);
    void Rotate(float angle, const Color& backgroundColor,
                Transforms::InterpolationMode interpolationMode = Transforms::InterpolationMode::MediumQuality);
};

} // namespace Corvane::Rasterloom
