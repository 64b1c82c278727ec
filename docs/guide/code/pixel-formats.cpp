// The code of ../pixel-formats.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

using namespace Corvane::Rasterloom;

namespace {

void Ask() {
    // [ask]
    const PixelFormat format = PixelFormat::Format64bppArgb;
    PixelFormatUtils::BitsPerPixel(format);      // 64
    PixelFormatUtils::ChannelCount(format);      // 4: blue, green, red, alpha
    PixelFormatUtils::IsExtended(format);        // true: 16 bits per channel
    PixelFormatUtils::AlphaChannelIndex(format); // 3
    // [ask end]
    Expect(PixelFormatUtils::BitsPerPixel(format) == 64 && PixelFormatUtils::ChannelCount(format) == 4);
    Expect(PixelFormatUtils::IsExtended(format) && PixelFormatUtils::AlphaChannelIndex(format) == 3);
}

void Memory() {
    Bitmap picture(3, 1, PixelFormat::Format24bppRgb);
    picture.SetPixel(1, 0, Color::FromRgb(10, 20, 30));
    // [bytes]
    const auto view = picture.LockBits();
    const std::uint8_t* pixel = view->get_Scan0() + 3 * 1; // the second pixel of the first row
    const std::uint8_t blue = pixel[0];                    // 30
    const std::uint8_t green = pixel[1];                   // 20
    const std::uint8_t red = pixel[2];                     // 10
    const std::int32_t stride = view->get_Stride();        // 12: rows begin at multiples of four bytes
    // [bytes end]
    Expect(blue == 30 && green == 20 && red == 10 && stride == 12);

    Bitmap wide(2, 1, PixelFormat::Format48bppRgb);
    wide.SetPixel(1, 0, Color::FromRgb32(1000, 2000, 3000));
    // [words]
    const auto wideView = wide.LockBits();
    const auto* row = reinterpret_cast<const std::uint16_t*>(wideView->get_Scan0());
    const std::uint16_t wideRed = row[3 * 1 + 2]; // 1000, of the second pixel, in the byte order of the machine
    // [words end]
    Expect(wideRed == 1000 && row[3] == 3000);
}

void Convert() {
    Bitmap picture("lake.bmp");
    picture.get_Transforms()->Resize(180, 120);
    picture.Save("rgb.png");
    Bitmap gray(picture);
    // [convert]
    gray.get_ColorManagement()->Convert(PixelFormat::Format8bppGrayScale);
    // [convert end]
    gray.Save("gray.png");
    Bitmap lineArt(picture);
    lineArt.get_ColorManagement()->Convert(PixelFormat::Format1bppIndexed);
    lineArt.Save("one-bit.png");
    Bitmap sixteen(picture);
    sixteen.get_ColorManagement()->Convert(PixelFormat::Format4bppIndexed);
    sixteen.Save("four-bits.png");
}

void Continuous() {
    Bitmap picture("lake.bmp");
    // [continuous]
    picture.get_ColorManagement()->ConvertToContinuous(ColorSpace::Cmyk, false, false);
    picture.get_PixelFormat(); // Format32bppCmyk
    // [continuous end]
    Expect(picture.get_PixelFormat() == PixelFormat::Format32bppCmyk);
}

void Alpha() {
    Bitmap picture("lake.bmp");
    picture.get_Transforms()->Resize(180, 120);
    // [alpha]
    // A mask that grows opaque from left to right becomes the alpha channel.
    picture.get_ColorManagement()->Convert(PixelFormat::Format32bppArgb);
    const auto mask = picture.GetEmptyMask();
    for (std::int32_t y = 0; y < mask->get_Height(); ++y) {
        for (std::int32_t x = 0; x < mask->get_Width(); ++x) {
            mask->SetPixel(x, y, Color::FromGrayScale(static_cast<std::uint8_t>(x * 255 / mask->get_Width())));
        }
    }
    picture.get_Channels()->set_Channel(ColorChannel::Alpha, mask.get());
    picture.Save("alpha.png");

    // A format without alpha has no room for it: a background shows through.
    Transforms::PixelFormatConverter flatten(PixelFormat::Format24bppRgb);
    flatten.set_BackgroundEnabled(true);
    flatten.set_BackgroundColor(RgbColor::SteelBlue);
    flatten.ApplyTransform(picture);
    // [alpha end]
    picture.Save("flattened.png");
}

} // namespace

int main() { return RunPage({Ask, Memory, Convert, Continuous, Alpha}); }
