#include "Sheet.h"

#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <cstring>
#include <sstream>

using namespace Corvane::Rasterloom;

namespace {

constexpr std::int32_t Gap = 12;
constexpr std::int32_t LetterWidth = 9;
constexpr std::int32_t LetterHeight = 18;
constexpr std::uint8_t Ink[3] = {48, 32, 24}; // blue, green, red

Color Paper() { return Color::FromRgb(240, 242, 246); }

std::uint8_t* Row(BitmapData& view, std::int32_t y) { return view.get_Scan0() + std::ptrdiff_t{view.get_Stride()} * y; }

/// Lays a picture with alpha over the squares that stand for nothing.
void LayOverChecks(Bitmap& picture) {
    if (!picture.get_HasAlpha()) {
        return;
    }
    picture.get_ColorManagement()->Convert(PixelFormat::Format32bppArgb);
    const auto view = picture.LockBits();
    for (std::int32_t y = 0; y < view->get_Height(); ++y) {
        for (std::int32_t x = 0; x < view->get_Width(); ++x) {
            std::uint8_t* const pixel = Row(*view, y) + std::ptrdiff_t{4} * x;
            const std::int32_t square = (x / 8 + y / 8) % 2 == 0 ? 255 : 215;
            for (std::int32_t i = 0; i < 3; ++i) {
                pixel[i] = static_cast<std::uint8_t>((pixel[i] * pixel[3] + square * (255 - pixel[3])) / 255);
            }
            pixel[3] = 255;
        }
    }
}

void Paste(Bitmap& sheet, Bitmap& picture, std::int32_t left, std::int32_t top) {
    const auto from = picture.LockBits();
    const auto to = sheet.LockBits(left, top, from->get_Width(), from->get_Height());
    for (std::int32_t y = 0; y < from->get_Height(); ++y) {
        std::memcpy(Row(*to, y), Row(*from, y), std::size_t{3} * static_cast<std::size_t>(from->get_Width()));
    }
}

} // namespace

Sheet::Sheet(const std::filesystem::path& letters, std::int32_t columns, std::int32_t cellWidth, std::int32_t cellHeight)
    : m_columns(columns), m_cellWidth(cellWidth), m_cellHeight(cellHeight), m_letters(letters) {
    m_letters.get_ColorManagement()->Convert(PixelFormat::Format8bppGrayScale);
}

void Sheet::AddHeading(const std::string& text) { m_cells.push_back({nullptr, text}); }

void Sheet::Add(Bitmap& picture, const std::string& label) {
    auto copy = picture.Clone();
    LayOverChecks(*copy);
    copy->get_ColorManagement()->Convert(PixelFormat::Format24bppRgb);
    const std::int32_t width = std::min(m_cellWidth, copy->get_Width());
    const std::int32_t height = std::min(m_cellHeight, copy->get_Height());
    copy->get_Transforms()->Crop((copy->get_Width() - width) / 2, (copy->get_Height() - height) / 2, width, height);
    m_labelLines = std::max(m_labelLines, 1 + static_cast<std::int32_t>(std::count(label.begin(), label.end(), '\n')));
    m_cells.push_back({std::move(copy), label});
}

/// Goes through the cells, draws them when there is a sheet, and gives the height that they need.
std::int32_t Sheet::PlaceCells(Bitmap* sheet) {
    std::int32_t column = 0;
    std::int32_t top = Gap;
    const std::int32_t rowHeight = m_cellHeight + 4 + m_labelLines * LetterHeight + Gap;
    const auto endRow = [&] {
        top += column > 0 ? rowHeight : 0;
        column = 0;
    };
    for (const Cell& cell : m_cells) {
        if (!cell.Picture) {
            endRow();
            if (sheet != nullptr) {
                Write(*sheet, cell.Text, Gap, top);
            }
            top += LetterHeight + Gap / 2;
            continue;
        }
        if (sheet != nullptr) {
            const std::int32_t left = Gap + column * (m_cellWidth + Gap);
            Paste(*sheet, *cell.Picture, left + (m_cellWidth - cell.Picture->get_Width()) / 2,
                  top + (m_cellHeight - cell.Picture->get_Height()) / 2);
            std::istringstream lines(cell.Text);
            std::string line;
            for (std::int32_t y = top + m_cellHeight + 4; std::getline(lines, line); y += LetterHeight) {
                Write(*sheet, line, left, y);
            }
        }
        if (++column == m_columns) {
            endRow();
        }
    }
    endRow();
    return top;
}

void Sheet::Write(Bitmap& sheet, const std::string& text, std::int32_t left, std::int32_t top) {
    const auto letters = m_letters.LockBits();
    const auto to = sheet.LockBits();
    for (const char letter : text) {
        const std::int32_t source = (std::clamp(letter, ' ', '~') - ' ') * LetterWidth;
        if (left + LetterWidth > to->get_Width()) {
            return;
        }
        for (std::int32_t y = 0; y < LetterHeight; ++y) {
            const std::uint8_t* const from = Row(*letters, y) + source;
            std::uint8_t* const row = Row(*to, top + y) + std::ptrdiff_t{3} * left;
            for (std::int32_t i = 0; i < LetterWidth * 3; ++i) {
                row[i] = static_cast<std::uint8_t>((row[i] * from[i / 3] + Ink[i % 3] * (255 - from[i / 3])) / 255);
            }
        }
        left += LetterWidth;
    }
}

void Sheet::Save(const std::filesystem::path& fileName) {
    Bitmap sheet(Paper(), Gap + m_columns * (m_cellWidth + Gap), PlaceCells(nullptr), PixelFormat::Format24bppRgb);
    PlaceCells(&sheet);
    Codecs::PngEncoderOptions options;
    options.set_CompressionLevel(9);
    sheet.Save(fileName, &options);
}
