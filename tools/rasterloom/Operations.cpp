#include "Operations.h"

#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
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
                bitmap.get_Transforms()->Resize(size.Width, size.Height, mode);
                return Describe(bitmap) + ", " + std::string(ToString(mode));
            }};
}

namespace {

RgbColor BackgroundOf(const Settings& settings) { return RgbColor(static_cast<std::int32_t>(settings.Background)); }

} // namespace

Operation MakeCrop(const RequestedBox& box) {
    return {"crop", [box](Bitmap& bitmap, const Settings& settings) {
                bitmap.get_Transforms()->Crop(box.Left, box.Top, box.Width, box.Height, BackgroundOf(settings));
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
                bitmap.get_Transforms()->Rotate(static_cast<float>(angle), BackgroundOf(settings));
                return Describe(bitmap);
            }};
}

Operation MakePixelFormat(PixelFormat format) {
    return {"convert", [format](Bitmap& bitmap, const Settings& settings) {
                if (format != bitmap.get_PixelFormat()) {
                    Transforms::PixelFormatConverter converter;
                    converter.set_DestinationPixelFormat(format);
                    if (PixelFormatUtils::IsIndexed(format)) {
                        converter.set_PaletteType(settings.Palette);
                        converter.set_PaletteEntryCount(settings.PaletteEntryCount != 0
                                                            ? settings.PaletteEntryCount
                                                            : 1 << PixelFormatUtils::BitsPerPixel(format));
                        converter.set_ColorQuantizationAlgorithm(settings.Quantizer);
                        converter.set_Dithering(settings.Dithering);
                        converter.set_DitheringIntensity(static_cast<float>(settings.DitheringPercent / 100));
                    }
                    const auto forward = converter.Progress.Subscribe(
                        [&](ProgressEventArgs& args) { bitmap._OnProgress(&converter, args); });
                    converter.ApplyTransform(bitmap);
                }
                return Describe(bitmap);
            }};
}

} // namespace Tool
