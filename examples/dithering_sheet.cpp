// One picture with every dithering, each to 16 colours of its own and to the web-safe palette, with its name above.
// Usage: dithering_sheet IN OUT
#include "PixelLetters.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <cstring>
#include <iostream>
#include <string>

using namespace Corvane::Rasterloom;

namespace {

constexpr std::int32_t CellWidth = 320;
constexpr std::int32_t Gap = 10;
constexpr std::int32_t DotSize = 2;
constexpr std::int32_t LabelHeight = PixelLetters::Height * DotSize + Gap;
constexpr std::int32_t PairsInARow = 2; // of a picture with each palette
constexpr std::int32_t DitheringCount = 16;

struct Palette {
    ColorPaletteType Type;
    const char* Name;
};

constexpr Palette Palettes[] = {{ColorPaletteType::Adaptive, "16 colours"}, {ColorPaletteType::WebSafe, "web-safe"}};

/// Cells of the size of a picture on white paper, each below a label.
class Sheet {
public:
    Sheet(std::int32_t columns, std::int32_t rows, std::int32_t cellHeight)
        : m_cellHeight(cellHeight), m_bitmap(Color::FromRgb(255, 255, 255), Left(columns), Top(rows), PixelFormat::Format24bppRgb) {}

    void Add(std::int32_t column, std::int32_t row, const std::string& label, Bitmap& picture) {
        Paste(picture, Left(column), Top(row) + LabelHeight);
        Write(label, Left(column), Top(row));
    }
    void Save(const char* fileName) { m_bitmap.Save(fileName); }

private:
    static std::int32_t Left(std::int32_t column) { return Gap + column * (CellWidth + Gap); }
    std::int32_t Top(std::int32_t row) const { return Gap + row * (m_cellHeight + LabelHeight + Gap); }

    void Paste(Bitmap& source, std::int32_t left, std::int32_t top) {
        const auto from = source.LockBits();
        const auto to = m_bitmap.LockBits(left, top, CellWidth, m_cellHeight);
        for (std::int32_t y = 0; y < m_cellHeight; ++y) {
            std::memcpy(to->get_Scan0() + std::ptrdiff_t{y} * to->get_Stride(),
                        from->get_Scan0() + std::ptrdiff_t{y} * from->get_Stride(), std::size_t{CellWidth} * 3);
        }
    }

    void Write(const std::string& text, std::int32_t left, std::int32_t top) {
        const auto view = m_bitmap.LockBits();
        PixelLetters::ForEachDot(text, [&](std::int32_t x, std::int32_t y) {
            for (std::int32_t line = 0; line < DotSize; ++line) {
                std::memset(view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * (top + y * DotSize + line) +
                                std::ptrdiff_t{3} * (left + x * DotSize),
                            0, std::size_t{3} * DotSize);
            }
        });
    }

    std::int32_t m_cellHeight;
    Bitmap m_bitmap;
};

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

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::cerr << "usage: dithering_sheet IN OUT\n";
        return 2;
    }
    Bitmap picture{std::filesystem::path(argv[1])};
    picture.get_Transforms()->Resize(CellWidth, 0, Transforms::InterpolationMode::Lanczos3Filter);
    Transforms::PixelFormatConverter(PixelFormat::Format24bppRgb).ApplyTransform(picture);

    Sheet sheet(PairsInARow * 2, DitheringCount / PairsInARow, picture.get_Height());
    for (const auto& [dithering, name] : EnumNames<DitheringType>()) {
        const auto number = static_cast<std::int32_t>(dithering);
        std::int32_t column = number % PairsInARow * 2;
        for (const Palette& palette : Palettes) {
            sheet.Add(column++, number / PairsInARow, std::string(name) + ", " + palette.Name,
                      *Dither(picture, dithering, palette.Type));
        }
        std::cerr << name << '\n';
    }
    sheet.Save(argv[2]);
    return 0;
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
