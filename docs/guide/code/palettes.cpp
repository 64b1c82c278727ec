// The code of ../palettes.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <array>

using namespace Corvane::Rasterloom;

namespace {

Bitmap& Small() {
    static Bitmap picture("lake.bmp");
    if (picture.get_Width() != 240) {
        picture.get_Transforms()->Resize(240, 160, Transforms::InterpolationMode::Lanczos3Filter);
    }
    return picture;
}

void Adaptive() {
    Bitmap picture(Small());
    // [adaptive]
    Transforms::PixelFormatConverter toIndexed(PixelFormat::Format8bppIndexed);
    toIndexed.set_PaletteType(ColorPaletteType::Adaptive); // made for this picture
    toIndexed.set_PaletteEntryCount(16);
    toIndexed.set_ColorQuantizationAlgorithm(ColorQuantizationAlgorithm::MedianCut);
    toIndexed.set_Dithering(DitheringType::FloydSteinberg);
    toIndexed.ApplyTransform(picture);
    picture.get_Palette()->get_Count(); // 16
    // [adaptive end]
    Expect(picture.get_Palette()->get_Count() == 16);
    picture.Save("adaptive.png");
    Bitmap plain(Small());
    toIndexed.set_Dithering(DitheringType::None);
    toIndexed.ApplyTransform(plain);
    plain.Save("undithered.png");
}

void Fixed() {
    Bitmap picture(Small());
    // [fixed]
    picture.get_ColorManagement()->ConvertToIndexed(8, ColorPaletteType::WebSafe); // Floyd-Steinberg dithering
    // [fixed end]
    picture.Save("websafe.png");
}

void Custom() {
    Bitmap picture(Small());
    // [custom]
    const std::array<RgbColor, 4> inks{RgbColor::MidnightBlue, RgbColor::Tomato, RgbColor::Khaki, RgbColor::White};
    ColorPalette palette(inks, false);
    picture.get_ColorManagement()->ConvertToIndexed(4, ColorPaletteType::Custom, &palette);
    // [custom end]
    picture.Save("custom.png");
    Expect(picture.get_Palette()->get_Count() == 4);
}

void Change() {
    Bitmap picture(Small());
    picture.get_ColorManagement()->ConvertToIndexed(4, ColorPaletteType::Adaptive);
    // [change]
    const std::shared_ptr<ColorPalette> palette = picture.get_Palette(); // the bitmap's own: changes show at once
    const std::int32_t entry = palette->FindNearestIndex(RgbColor::White);
    palette->set_Item(entry, RgbColor::Magenta);
    // [change end]
    Expect(palette->get_Item(entry) == RgbColor::Magenta);
    picture.Save("changed.png");
}

void FromPicture() {
    Bitmap picture(Small());
    // [own]
    ColorPalette palette(picture, 64, false, ColorQuantizationAlgorithm::Octree); // a palette without a conversion
    std::unique_ptr<ColorPalette> copy = palette.Clone();
    copy->Export(); // a vector of RgbColor
    // [own end]
    Expect(copy->get_Count() <= 64 && copy->get_Count() > 32);
}

} // namespace

int main() { return RunPage({Adaptive, Fixed, Custom, Change, FromPicture}); }
