#include "Operations.h"

#include "Conversions.h"

#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

namespace Tool {

using namespace Corvane::Rasterloom;

std::string Describe(Bitmap& bitmap) {
    return std::to_string(bitmap.get_Width()) + " x " + std::to_string(bitmap.get_Height()) + " " +
           std::string(ToString(bitmap.get_PixelFormat()));
}

Operation MakeResize(const RequestedSize& requested) {
    return {"resize", [requested](Bitmap& bitmap, const Settings& settings) {
                const RequestedSize size = requested.For(bitmap.get_Width(), bitmap.get_Height());
                const auto mode = settings.Interpolation.value_or(Transforms::InterpolationMode::HighQuality);
                const ProfileKeeper keeper(bitmap);
                bitmap.get_Transforms()->Resize(size.Width, size.Height, mode);
                keeper.Restore();
                return Describe(bitmap) + ", " + std::string(ToString(mode));
            }};
}

Operation MakeCrop(const RequestedBox& box) {
    return {"crop", [box](Bitmap& bitmap, const Settings& settings) {
                bitmap.get_Transforms()->Crop(box.Left, box.Top, box.Width, box.Height,
                                              settings.Colors.GetBackground());
                return Describe(bitmap);
            }};
}

Operation MakeRotateFlip(Host::RotateFlipType mode) {
    return {"turn", [mode](Bitmap& bitmap, const Settings&) {
                bitmap.get_Transforms()->RotateAndFlip(mode);
                return Describe(bitmap);
            }};
}

Operation MakeRotate(double angle) {
    return {"rotate", [angle](Bitmap& bitmap, const Settings& settings) {
                const ProfileKeeper keeper(bitmap);
                bitmap.get_Transforms()->Rotate(static_cast<float>(angle), settings.Colors.GetBackground());
                keeper.Restore();
                return Describe(bitmap);
            }};
}

Operation MakePixelFormat(PixelFormat format) {
    return {"convert",
            [format](Bitmap& bitmap, const Settings& settings) {
                ConvertPixels(bitmap, format, settings.Colors);
                return Describe(bitmap);
            },
            format};
}

Operation MakeIndexed() {
    return {"palette", [](Bitmap& bitmap, const Settings& settings) {
                ConvertPixels(bitmap, SmallestIndexedFormat(settings.Colors), settings.Colors);
                return Describe(bitmap) + ", " + std::to_string(bitmap.get_Palette()->get_Count()) + " entries";
            }};
}

Operation MakeProfile() {
    return {"profile", [](Bitmap& bitmap, const Settings& settings) {
                ConvertToProfile(bitmap, settings.Colors);
                return Describe(bitmap) + ", " + bitmap.get_ColorProfile()->get_Description();
            }};
}

} // namespace Tool
