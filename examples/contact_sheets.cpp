// Two sheets of small pictures to look at: a picture turned by many angles, and thumbnails of a zone plate, of a page of text
// and of a picture in each mode. Usage: contact_sheets PICTURE TEXT ROTATIONS_OUT THUMBNAILS_OUT
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>
#include <numbers>
#include <utility>

using namespace Corvane::Rasterloom;
using Transforms::InterpolationMode;

namespace {

constexpr std::int32_t Gap = 12;

Color Paper() { return Color::FromRgb(225, 228, 235); }

/// Rows of cells of one size, each with a picture in its middle.
class Sheet {
public:
    Sheet(std::int32_t columns, std::int32_t rows, std::int32_t cellWidth, std::int32_t cellHeight)
        : m_cellWidth(cellWidth + Gap), m_cellHeight(cellHeight + Gap), m_columns(columns),
          m_bitmap(Paper(), columns * m_cellWidth + Gap, rows * m_cellHeight + Gap, PixelFormat::Format24bppRgb) {}

    /// Pixels with alpha are laid over the paper.
    void Add(Bitmap& picture) {
        Transforms::PixelFormatConverter converter(PixelFormat::Format24bppRgb);
        converter.set_BackgroundEnabled(true);
        converter.set_BackgroundColor(Paper());
        converter.ApplyTransform(picture);
        const auto from = picture.LockBits();
        const auto to = m_bitmap.LockBits();
        const std::int32_t left = Gap + m_count % m_columns * m_cellWidth + (m_cellWidth - Gap - from->get_Width()) / 2;
        const std::int32_t top = Gap + m_count / m_columns * m_cellHeight + (m_cellHeight - Gap - from->get_Height()) / 2;
        for (std::int32_t y = 0; y < from->get_Height(); ++y) {
            std::memcpy(to->get_Scan0() + std::ptrdiff_t{to->get_Stride()} * (top + y) + std::ptrdiff_t{3} * left,
                        from->get_Scan0() + std::ptrdiff_t{from->get_Stride()} * y, std::size_t(from->get_Width()) * 3);
        }
        ++m_count;
    }
    void Save(const char* fileName) { m_bitmap.Save(fileName); }

private:
    std::int32_t m_cellWidth;
    std::int32_t m_cellHeight;
    std::int32_t m_columns;
    std::int32_t m_count = 0;
    Bitmap m_bitmap;
};

/// Rings that grow finer from the middle to the edge, up to what a pixel can show.
void DrawZonePlate(Bitmap& bitmap) {
    constexpr std::int32_t size = 960;
    bitmap.Create(size, size, PixelFormat::Format24bppRgb);
    const auto view = bitmap.LockBits();
    for (std::int32_t y = 0; y < size; ++y) {
        std::uint8_t* const row = view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y;
        for (std::int32_t x = 0; x < size; ++x) {
            const double distance = (x - size / 2) * (x - size / 2) + (y - size / 2) * (y - size / 2);
            const double wave = std::cos(std::numbers::pi * distance / size);
            std::memset(row + 3 * x, static_cast<int>(127.5 + 127.5 * wave), 3);
        }
    }
}

/// The right-angle turns on top, then other angles in two ways of sampling.
void WriteRotations(const char* pictureName, const char* outName) {
    Bitmap picture{std::filesystem::path(pictureName)};
    picture.get_Transforms()->Resize(180, 0, InterpolationMode::Lanczos3Filter);
    const std::int32_t diagonal = static_cast<std::int32_t>(std::hypot(picture.get_Width(), picture.get_Height())) + 2;
    Sheet sheet(8, 3, diagonal, diagonal);
    for (std::uint32_t mode = 0; mode < 8; ++mode) {
        Bitmap turned(picture);
        turned.get_Transforms()->RotateAndFlip(static_cast<Host::RotateFlipType>(mode));
        sheet.Add(turned);
    }
    for (const auto mode : {InterpolationMode::Bilinear, InterpolationMode::NearestNeighbour}) {
        for (const float angle : {2.0F, 17.0F, 45.0F, 73.0F, 110.0F, 180.0F, 235.0F, -30.0F}) {
            Bitmap turned(picture);
            turned.get_Transforms()->Rotate(angle, Paper(), mode);
            sheet.Add(turned);
        }
    }
    sheet.Save(outName);
}

/// The form that a thumbnail is loaded from.
std::shared_ptr<Host::Stream> ToStream(Bitmap& bitmap) {
    const auto stream = std::make_shared<Host::MemoryStream>();
    const Codecs::BmpEncoderOptions options;
    bitmap.Save(stream, &options);
    return stream;
}

void WriteThumbnails(const char* pictureName, const char* textName, const char* outName) {
    constexpr InterpolationMode modes[] = {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic4,
                                           InterpolationMode::Anisotropic9, InterpolationMode::Lanczos3Filter};
    constexpr std::int32_t width = 320;
    constexpr std::int32_t height = 240;
    Sheet sheet(std::int32_t{std::size(modes)}, 3, width, height);
    Bitmap plate;
    DrawZonePlate(plate);
    for (const auto mode : modes) {
        Bitmap thumbnail;
        thumbnail.LoadThumbnail(ToStream(plate), width, height, mode);
        sheet.Add(thumbnail);
    }
    for (const char* const name : {textName, pictureName}) {
        for (const auto mode : modes) {
            Bitmap thumbnail;
            thumbnail.LoadThumbnail(std::filesystem::path(name), width, height, mode);
            sheet.Add(thumbnail);
        }
    }
    sheet.Save(outName);
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 5) {
        std::cerr << "usage: contact_sheets PICTURE TEXT ROTATIONS_OUT THUMBNAILS_OUT\n";
        return 2;
    }
    WriteRotations(argv[1], argv[3]);
    WriteThumbnails(argv[1], argv[2], argv[4]);
    return 0;
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
