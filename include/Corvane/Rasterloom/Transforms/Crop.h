#pragma once

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom::Transforms {

/// Cuts a rectangle out of a bitmap. Where the rectangle goes beyond the bitmap, which it may as a whole, the result is
/// filled with a background colour; in an indexed bitmap, which keeps its palette, with the entry nearest to it.
class RASTERLOOM_API Crop final : public BitmapTransform {
public:
    /// The pixel in the corner over a background of transparent white, unless given.
    Crop();
    explicit Crop(const Host::RectangleF& rectangle);
    Crop(const Host::RectangleF& rectangle, const Color& background);
    Crop(float left, float top, float width, float height);
    Crop(float left, float top, float width, float height, const Color& background);
    ~Crop() override;

    /// In the current `Unit`; a negative size becomes 0. Sizes that round to 0 pixels fail when the transform is
    /// applied, with `Host::ArgumentOutOfRangeException`.
    Host::RectangleF get_Rectangle();
    void set_Rectangle(const Host::RectangleF& rectangle);
    /// The same in pixels, by the resolutions of the bitmap at work, 72 where there is none.
    Host::Rectangle get_RectangleInPixels();
    void set_RectangleInPixels(const Host::Rectangle& rectangle);
    /// Converted to the bitmap's colour space. The packed 16-bit formats take its bytes as they are, so that black and
    /// white alone are what they seem. "No colour" fails with `Host::ArgumentNullException` ("backgroundColor").
    Color get_Background();
    void set_Background(const Color& backgroundColor);

    void set__Rectangle(const Host::RectangleF& rectangle);
    void set__RectangleInPixels(const Host::Rectangle& rectangle);
    void set__Background(const Color& backgroundColor);

protected:
    void ExportSettings() override;

private:
    Host::RectangleF m_rectangle{0.0F, 0.0F, 1.0F, 1.0F};
    Color m_background;
};

} // namespace Corvane::Rasterloom::Transforms
