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
                bitmap.get_Transforms()->Resize(size.Width, size.Height, settings.Interpolation);
                return Describe(bitmap) + ", " + std::string(ToString(settings.Interpolation));
            }};
}

Operation MakePixelFormat(PixelFormat format) {
    return {"convert", [format](Bitmap& bitmap, const Settings&) {
                if (format != bitmap.get_PixelFormat()) {
                    Transforms::PixelFormatConverter converter;
                    converter.set_DestinationPixelFormat(format);
                    if (PixelFormatUtils::IsIndexed(format)) {
                        converter.set_PaletteType(ColorPaletteType::WebSafe);
                        converter.set_Dithering(DitheringType::None);
                    }
                    const auto forward = converter.Progress.Subscribe(
                        [&](ProgressEventArgs& args) { bitmap._OnProgress(&converter, args); });
                    converter.ApplyTransform(bitmap);
                }
                return Describe(bitmap);
            }};
}

} // namespace Tool
