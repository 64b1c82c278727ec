// One picture with every dithering: on the left to 16 colours of its own, on the right to the web-safe palette; in reading
// order None, the eight error diffusions, the six ordered ones, noise. Usage: dithering_sheet IN OUT
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <cstring>
#include <iostream>

using namespace Corvane::Rasterloom;

namespace {

constexpr std::int32_t CellWidth = 240;
constexpr std::int32_t CellHeight = 160;
constexpr std::int32_t Gap = 8;
constexpr std::int32_t Columns = 4; // of each palette
constexpr std::int32_t Rows = 4;

/// Where a cell and the gap before it begin.
constexpr std::int32_t Place(std::int32_t number, std::int32_t size) { return Gap + number * (size + Gap); }

std::unique_ptr<Bitmap> Dither(Bitmap& picture, DitheringType dithering, ColorPaletteType palette) {
    Transforms::PixelFormatConverter toIndexed(PixelFormat::Format8bppIndexed);
    toIndexed.set_Dithering(dithering);
    toIndexed.set_PaletteType(palette);
    if (palette == ColorPaletteType::Adaptive) {
        toIndexed.set_PaletteEntryCount(16);
    }
    auto result = picture.Clone();
    toIndexed.ApplyTransform(*result);
    Transforms::PixelFormatConverter(PixelFormat::Format24bppRgb).ApplyTransform(*result);
    return result;
}

void Paste(Bitmap& source, Bitmap& sheet, std::int32_t left, std::int32_t top) {
    const auto from = source.LockBits();
    const auto to = sheet.LockBits(left, top, CellWidth, CellHeight);
    for (std::int32_t y = 0; y < CellHeight; ++y) {
        std::memcpy(to->get_Scan0() + std::ptrdiff_t{y} * to->get_Stride(),
                    from->get_Scan0() + std::ptrdiff_t{y} * from->get_Stride(), std::size_t{CellWidth} * 3);
    }
    sheet.UnlockBits(to);
    source.UnlockBits(from);
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::cerr << "usage: dithering_sheet IN OUT\n";
        return 2;
    }
    Bitmap picture{std::filesystem::path(argv[1])};
    picture.get_Transforms()->Resize(CellWidth, CellHeight, Transforms::InterpolationMode::Lanczos3Filter);
    Transforms::PixelFormatConverter(PixelFormat::Format24bppRgb).ApplyTransform(picture);

    Bitmap sheet(RgbColor(Host::ArgbColor{255, 255, 255, 255}), Place(2 * Columns, CellWidth), Place(Rows, CellHeight),
                 PixelFormat::Format24bppRgb);
    for (const auto& [dithering, name] : EnumNames<DitheringType>()) {
        const auto number = static_cast<std::int32_t>(dithering);
        const std::int32_t top = Place(number / Columns, CellHeight);
        std::int32_t left = Place(number % Columns, CellWidth);
        for (const auto palette : {ColorPaletteType::Adaptive, ColorPaletteType::WebSafe}) {
            Paste(*Dither(picture, dithering, palette), sheet, left, top);
            left += Columns * (CellWidth + Gap);
        }
        std::cerr << name << '\n';
    }
    sheet.Save(argv[2]);
    return 0;
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
