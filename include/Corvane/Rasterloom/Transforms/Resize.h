#pragma once

#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>
#include <Corvane/Rasterloom/Transforms/ResizeMode.h>

namespace Corvane::Rasterloom::Transforms {

/// Resamples a bitmap to a new size.
///
/// Sizes are in the current `Unit`. With both at 0 or below the source's size stands; with one, that side follows the
/// other in the source's proportions. Indexed bitmaps take `NearestNeighbour`, which keeps the palette, and
/// `ScaleToGray`, which gives colours; the quality levels choose for themselves.
class RASTERLOOM_API Resize final : public BitmapTransform {
public:
    /// Sizes in the current `Unit`, 0 unless given; `MediumQuality` and `ResizeMode::Resize` unless given.
    Resize();
    Resize(float width, float height);
    Resize(float width, float height, InterpolationMode interpolationMode);
    Resize(float width, float height, ResizeMode resizeMode);
    Resize(float width, float height, InterpolationMode interpolationMode, ResizeMode resizeMode);
    ~Resize() override;

    /// The wanted width in the current `Unit`; 0 follows the height.
    float get_Width();
    /// A negative size fails with `Host::ArgumentOutOfRangeException` ("width").
    void set_Width(float width);
    /// The wanted height, alike.
    float get_Height();
    void set_Height(float height);
    /// The same in pixels, by the resolutions of the bitmap at work, 72 where there is none.
    std::int32_t get_WidthInPixels();
    void set_WidthInPixels(std::int32_t width);
    std::int32_t get_HeightInPixels();
    void set_HeightInPixels(std::int32_t height);
    /// How the wanted size is read. A value without a name fails with `Host::ArgumentException`.
    ResizeMode get_ResizeMode();
    void set_ResizeMode(ResizeMode resizeMode);
    /// How samples are computed; fails alike.
    InterpolationMode get_InterpolationMode();
    void set_InterpolationMode(InterpolationMode interpolationMode);
    /// Whether `CropRectangle` counts; false at first.
    bool get_CropEnabled();
    void set_CropEnabled(bool cropEnabled);
    /// In coordinates of the result: only that part of it is computed, when cropping is enabled.
    Host::RectangleF get_CropRectangle();
    void set_CropRectangle(const Host::RectangleF& cropRectangle);
    /// The same in pixels, as the size is.
    Host::Rectangle get_CropRectangleInPixels();
    void set_CropRectangleInPixels(const Host::Rectangle& cropRectangle);

    /// The size in pixels that a bitmap would get; what is wanted goes in. Null fails with
    /// `Host::ArgumentNullException`, an empty bitmap with `BitmapEmptyException` ("srcBitmap"), a source side not above
    /// 0 with `Host::ArgumentOutOfRangeException`, and so does a wanted one in the modes `Shrink` and `Fit`.
    static void CalculateProportionalDimensions(Bitmap& srcBitmap, std::int32_t* destWidth, std::int32_t* destHeight,
                                                ResizeMode mode);
    static void CalculateProportionalDimensions(std::int32_t srcWidth, std::int32_t srcHeight, std::int32_t* destWidth,
                                                std::int32_t* destHeight, ResizeMode mode);

    void set__Width(float width);
    void set__Height(float height);
    void set__WidthInPixels(std::int32_t width);
    void set__HeightInPixels(std::int32_t height);
    void set__ResizeMode(ResizeMode resizeMode);
    void set__InterpolationMode(InterpolationMode interpolationMode);
    void set__CropRectangleInPixels(const Host::Rectangle& cropRectangle);

protected:
    void ExportSettings() override;

private:
    /// The size in pixels that the bitmap at work will get.
    void ComputeTargetSize(std::int32_t& width, std::int32_t& height);
    void ExportCrop();

    float m_fWidth = 0;
    float m_fHeight = 0;
    ResizeMode m_enResizeMode = ResizeMode::Resize;
    InterpolationMode m_enInterpolationMode = InterpolationMode::MediumQuality;
    bool m_bCropEnabled = false;
    Host::RectangleF m_cropRectangle;
};

} // namespace Corvane::Rasterloom::Transforms
