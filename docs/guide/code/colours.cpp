// The code of ../colours.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Color.h>

#include <string>

using namespace Corvane::Rasterloom;

namespace {

void Make() {
    // [make]
    const Color orange = Color::FromRgb(255, 165, 0);           // 8 bits per channel
    const Color exact = Color::FromRgb32(65535, 42405, 0);      // 16 bits per channel
    const Color veil = Color::FromArgb(128, 255, 165, 0);       // alpha first
    const Color ink = Color::FromCmyk(0, 90, 255, 0);           // cyan, magenta, yellow, black
    const Color middle = Color::FromGrayScale(128);
    const Color mint = Color::FromHsl(150.0F, 0.5F, 0.75F);     // degrees, 0 to 1, 0 to 1
    const Color packed = Color::FromArgb32(0xFFFFA500U);        // 0xAARRGGBB
    const RgbColor named = RgbColor::Orange;                    // all names of CSS
    // [make end]
    Expect(packed == orange && named == orange && !(exact == orange));
    Expect(veil.GetChannel(ColorChannel::Alpha) == 128 && ink.GetChannel(ColorChannel::Magenta) == 90);
    Expect(middle.get_ColorSpace() == ColorSpace::GrayScale && mint.get_ColorSpace() == ColorSpace::Rgb);
}

void Read() {
    // [read]
    const RgbColor colour = RgbColor::Orange;
    colour.get_R();                        // 255, of 8 bits
    colour.get_R32();                      // 65280, of 16 bits: widened by a shift
    colour.GetChannel(ColorChannel::Blue); // 0
    colour.ToInt32();                      // 0xFFFFA500
    colour.ToString();                     // "Color [A=255, R=255, G=165, B=0]"
    // [read end]
    Expect(colour.get_R() == 255 && colour.get_R32() == 65280 && colour.ToInt32() == 0xFFFFA500U);
    Expect(colour.ToString() == "Color [A=255, R=255, G=165, B=0]");
}

void Convert() {
    const Color orange = Color::FromRgb(255, 165, 0);
    // [convert]
    const GrayScaleColor gray = orange;  // 59 parts green, 30 and 11 parts the two others
    const CmykColor ink = orange;
    const Color same = orange.ConvertColorSpace(ColorSpace::Cmyk);
    // [convert end]
    // (30 * 0 + 59 * 165 + 11 * 255) / 100
    Expect(gray.get_Gray() == 125 && same == ink);
    Expect(ink.get_C() == 0 && ink.get_K() == 0);
}

void NoColour() {
    bool failed = false;
    // [null]
    const Color nothing; // "no colour"
    nothing.IsNull();    // true
    try {
        nothing.ToInt32();
    } catch (const Host::ArgumentNullException&) {
        failed = true;
    }
    // [null end]
    Expect(nothing.IsNull() && failed);
}

void Swatches() {
    // [swatches]
    Bitmap swatches(RgbColor::White, 12 * 40, 5 * 30, PixelFormat::Format24bppRgb);
    for (std::int32_t y = 0; y < swatches.get_Height(); ++y) {
        for (std::int32_t x = 0; x < swatches.get_Width(); ++x) {
            const auto hue = static_cast<float>(x / 40 * 30);
            const float lightness = 0.9F - static_cast<float>(y / 30) * 0.2F;
            swatches.SetPixel(x, y, Color::FromHsl(hue, 1.0F, lightness));
        }
    }
    swatches.Save("swatches.png");
    // [swatches end]
}

} // namespace

int main() { return RunPage({Make, Read, Convert, NoColour, Swatches}); }
