// Draws the sheets of the gallery: one for each family of operations. Usage: gallery PICTURES LETTERS OUT
// PICTURES is the folder of lake.bmp and text.bmp, LETTERS the picture of the letters, OUT a folder that exists.
#include "Sheet.h"

#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <array>
#include <cmath>
#include <cstring>
#include <iostream>
#include <numbers>
#include <utility>
#include <variant>
#include <vector>

using namespace Corvane::Rasterloom;
using Transforms::InterpolationMode;

namespace {

std::filesystem::path s_pictures;
std::filesystem::path s_letters;
std::filesystem::path s_out;

std::unique_ptr<Bitmap> Lake(std::int32_t width) {
    auto lake = std::make_unique<Bitmap>(s_pictures / "lake.bmp");
    lake->get_Transforms()->Resize(width, 0, InterpolationMode::Lanczos3Filter);
    return lake;
}

/// The modes proper, each once: the other names stand for one of them.
std::vector<EnumName<InterpolationMode>> Modes() {
    std::vector<EnumName<InterpolationMode>> modes;
    for (const auto& mode : EnumNames<InterpolationMode>()) {
        if (mode.Value >= InterpolationMode::NearestNeighbour && mode.Value < InterpolationMode::ScaleToGray) {
            modes.push_back(mode);
        }
    }
    return modes;
}

/// Rings that grow finer from the middle to the edge, up to what a pixel can show.
std::unique_ptr<Bitmap> ZonePlate(std::int32_t size) {
    auto plate = std::make_unique<Bitmap>(size, size, PixelFormat::Format24bppRgb);
    const auto view = plate->LockBits();
    for (std::int32_t y = 0; y < size; ++y) {
        std::uint8_t* const row = view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y;
        for (std::int32_t x = 0; x < size; ++x) {
            const double distance = (x - size / 2) * (x - size / 2) + (y - size / 2) * (y - size / 2);
            std::memset(row + 3 * x, static_cast<int>(127.5 + 127.5 * std::cos(std::numbers::pi * distance / size)), 3);
        }
    }
    return plate;
}

void DrawResizing() {
    Sheet sheet(s_letters, 7, 160, 120);
    Bitmap detail(s_pictures / "lake.bmp");
    detail.get_Transforms()->Crop(130, 246, 40, 30);
    Bitmap text(s_pictures / "text.bmp");
    text.get_Transforms()->Crop(30, 40, 480, 360);
    const auto resize = [&](Bitmap& source, InterpolationMode mode, std::int32_t width) {
        auto result = source.Clone();
        result->get_Transforms()->Resize(width, 120, mode);
        return result;
    };
    sheet.AddHeading("Four times larger: 40 x 30 to 160 x 120");
    for (const auto& mode : Modes()) {
        sheet.Add(*resize(detail, mode.Value, 160), std::string(mode.Name));
    }
    sheet.AddHeading("A third of the size: a page of text");
    sheet.Add(*resize(text, InterpolationMode::ScaleToGray, 160), "ScaleToGray, 1 bit");
    text.get_ColorManagement()->Convert(PixelFormat::Format8bppGrayScale);
    for (const auto& mode : Modes()) {
        sheet.Add(*resize(text, mode.Value, 160), std::string(mode.Name));
    }
    sheet.Save(s_out / "resizing.png");

    Sheet rings(s_letters, 6, 160, 120);
    rings.AddHeading("A third of the size: rings up to the finest that pixels can show. What is not gray outside is false");
    const auto plate = ZonePlate(360);
    for (const auto& mode : Modes()) {
        rings.Add(*resize(*plate, mode.Value, 120), std::string(mode.Name));
    }
    rings.Save(s_out / "resizing-rings.png");
}

std::shared_ptr<Host::Stream> ToStream(Bitmap& bitmap) {
    const auto stream = std::make_shared<Host::MemoryStream>();
    const Codecs::BmpEncoderOptions options;
    bitmap.Save(stream, &options);
    return stream;
}

void DrawThumbnails() {
    Sheet sheet(s_letters, 4, 220, 165);
    const auto plate = ZonePlate(660);
    Bitmap text(s_pictures / "text.bmp");
    Bitmap lake(s_pictures / "lake.bmp");
    for (const auto& [source, heading] : {std::pair{plate.get(), "Rings, 660 x 660"}, std::pair{&text, "A page of text, 1000 x 740, 1 bit"},
                                          std::pair{&lake, "A picture, 720 x 480"}}) {
        sheet.AddHeading(heading);
        for (const auto mode : {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic4,
                                InterpolationMode::Anisotropic9, InterpolationMode::Lanczos3Filter}) {
            Bitmap thumbnail;
            thumbnail.LoadThumbnail(ToStream(*source), 220, 165, mode);
            sheet.Add(thumbnail, std::string(ToString(mode)));
        }
    }
    sheet.Save(s_out / "thumbnails.png");
}

void DrawRotation() {
    const auto lake = Lake(120);
    Sheet sheet(s_letters, 8, 146, 146);
    sheet.AddHeading("RotateAndFlip: exact, in every format");
    for (std::uint32_t number = 0; number < 8; ++number) {
        const auto mode = static_cast<Host::RotateFlipType>(number);
        const auto turned = lake->Clone();
        turned->get_Transforms()->RotateAndFlip(mode);
        sheet.Add(*turned, std::string(ToString(mode)).substr(6));
    }
    for (const auto mode : {InterpolationMode::Bilinear, InterpolationMode::NearestNeighbour}) {
        sheet.AddHeading("Rotate, " + std::string(ToString(mode)) + ", over khaki");
        for (const int angle : {2, 17, 45, 73, 110, 180, 235, -30}) {
            const auto turned = lake->Clone();
            turned->get_Transforms()->Rotate(static_cast<float>(angle), RgbColor::Khaki, mode);
            sheet.Add(*turned, std::to_string(angle) + " degrees");
        }
    }
    sheet.Save(s_out / "rotation.png");
}

void DrawCrop() {
    const auto lake = Lake(240);
    Sheet sheet(s_letters, 4, 280, 200);
    sheet.Add(*lake, "the picture, 240 x 160");
    const auto add = [&](const char* label, std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height,
                         const Color& background) {
        const auto part = lake->Clone();
        part->get_Transforms()->Crop(left, top, width, height, background);
        sheet.Add(*part, label);
    };
    add("Crop(60, 40, 120, 80)\ninside", 60, 40, 120, 80, RgbColor::White);
    add("Crop(120, 80, 160, 120)\nbeyond the corner, over khaki", 120, 80, 160, 120, RgbColor::Khaki);
    add("Crop(-20, -20, 280, 200)\na frame, in steel blue", -20, -20, 280, 200, RgbColor::SteelBlue);
    const auto clear = lake->Clone();
    clear->get_ColorManagement()->Convert(PixelFormat::Format32bppArgb);
    clear->get_Transforms()->Crop(-20, -20, 280, 200);
    sheet.Add(*clear, "the same with alpha,\ntransparent around the picture");
    const auto indexed = lake->Clone();
    indexed->get_ColorManagement()->Convert(PixelFormat::Format4bppIndexed);
    indexed->get_Transforms()->Crop(-20, -20, 280, 200, RgbColor::OrangeRed);
    sheet.Add(*indexed, "of 16 colours, around it the\nentry nearest to orange red");
    sheet.Save(s_out / "crop.png");
}

void DrawPixelFormats() {
    const auto lake = Lake(210);
    Sheet sheet(s_letters, 4, 210, 140);
    sheet.AddHeading("Converted to each format, and back to be shown: by formula, inks come back weaker");
    for (const auto& format : EnumNames<PixelFormat>()) {
        const auto converted = lake->Clone();
        try {
            converted->get_ColorManagement()->Convert(format.Value);
        } catch (const Host::Exception&) {
            continue; // no conversion leads to the packed formats
        }
        sheet.Add(*converted, std::string(format.Name));
    }
    for (const auto& [format, names] : {std::pair{PixelFormat::Format24bppRgb, std::array{"Blue", "Green", "Red", ""}},
                                        std::pair{PixelFormat::Format32bppCmyk, std::array{"Black", "Yellow", "Magenta", "Cyan"}}}) {
        const auto converted = lake->Clone();
        converted->get_ColorManagement()->Convert(format);
        sheet.AddHeading("Channels of " + std::string(ToString(format)));
        for (std::int32_t i = 0; i < converted->get_Channels()->get_Count(); ++i) {
            sheet.Add(*converted->get_Channels()->get_Channel(i), names[static_cast<std::size_t>(i)]);
        }
    }
    sheet.Save(s_out / "pixel-formats.png");
}

void DrawQuantizers() {
    const auto lake = Lake(240);
    Sheet sheet(s_letters, 5, 240, 160);
    const auto add = [&](const std::string& label, ColorPaletteType type, std::int32_t entries,
                         ColorQuantizationAlgorithm algorithm) {
        Transforms::PixelFormatConverter converter(PixelFormat::Format8bppIndexed);
        converter.set_PaletteType(type);
        converter.set_PaletteEntryCount(entries);
        converter.set_ColorQuantizationAlgorithm(algorithm);
        converter.set_Dithering(DitheringType::None);
        const auto indexed = lake->Clone();
        converter.ApplyTransform(*indexed);
        sheet.Add(*indexed, label);
    };
    for (const auto& algorithm : EnumNames<ColorQuantizationAlgorithm>()) {
        sheet.AddHeading("Adaptive palettes by " + std::string(algorithm.Name) + ", without dithering");
        for (const std::int32_t entries : {256, 64, 32, 16, 8}) {
            add(std::to_string(entries) + " entries", ColorPaletteType::Adaptive, entries, algorithm.Value);
        }
    }
    sheet.AddHeading("Fixed palettes, without dithering");
    for (const auto& type : EnumNames<ColorPaletteType>()) {
        if (type.Value != ColorPaletteType::Adaptive && type.Value != ColorPaletteType::Custom) {
            add(std::string(type.Name), type.Value, 0, ColorQuantizationAlgorithm::MedianCut);
        }
    }
    sheet.Save(s_out / "quantizers.png");
}

void DrawDithering() {
    const auto lake = Lake(200);
    Sheet sheet(s_letters, 6, 200, 133);
    const auto addAll = [&](const std::string& heading, PixelFormat format, ColorPaletteType palette) {
        sheet.AddHeading(heading);
        for (const auto& dithering : EnumNames<DitheringType>()) {
            Transforms::PixelFormatConverter converter(format);
            converter.set_Dithering(dithering.Value);
            converter.set_PaletteType(palette);
            const auto indexed = lake->Clone();
            converter.ApplyTransform(*indexed);
            sheet.Add(*indexed, std::string(dithering.Name));
        }
    };
    addAll("To 16 colours of its own", PixelFormat::Format4bppIndexed, ColorPaletteType::Adaptive);
    addAll("To the web-safe palette", PixelFormat::Format8bppIndexed, ColorPaletteType::WebSafe);
    addAll("To black and white", PixelFormat::Format1bppIndexed, ColorPaletteType::Adaptive);
    sheet.Save(s_out / "dithering.png");
}

std::uint32_t BigEndian(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

/// sRGB with other primaries: X, Y and Z of red, green and blue in 1/65536, adapted to D50.
std::shared_ptr<ColorProfile> WithPrimaries(const std::array<std::array<std::uint32_t, 3>, 3>& primaries) {
    constexpr const char* tags[] = {"rXYZ", "gXYZ", "bXYZ"};
    const auto stream = std::make_shared<Host::MemoryStream>();
    ColorProfile::FromSrgb()->Save(stream);
    std::vector<std::uint8_t> bytes = stream->GetBuffer();
    for (std::uint32_t entry = 0; entry < BigEndian(&bytes[128]); ++entry) {
        const std::uint8_t* const header = &bytes[132 + std::size_t{12} * entry];
        for (std::size_t primary = 0; primary < 3; ++primary) {
            if (std::memcmp(header, tags[primary], 4) == 0) {
                std::uint8_t* value = &bytes[BigEndian(header + 4) + 8];
                for (const std::uint32_t number : primaries[primary]) {
                    for (int shift = 24; shift >= 0; shift -= 8) {
                        *value++ = static_cast<std::uint8_t>(number >> shift);
                    }
                }
            }
        }
    }
    return std::make_shared<ColorProfile>(std::span<const std::uint8_t>(bytes));
}

void DrawProfiles() {
    const auto wide = WithPrimaries({{{39960, 20389, 1276}, {13453, 41004, 3989}, {9777, 4143, 48796}}});
    const auto narrow = WithPrimaries({{{23400, 14700, 4600}, {24300, 35500, 14300}, {15490, 15336, 35161}}});
    const std::shared_ptr<ColorProfile> srgb = ColorProfile::FromSrgb();
    const auto lake = Lake(240);
    Sheet sheet(s_letters, 4, 240, 160);
    const auto convert = [&](const std::shared_ptr<ColorProfile>& from, const std::shared_ptr<ColorProfile>& to,
                             const std::shared_ptr<ColorProfile>& proof) {
        auto picture = lake->Clone();
        picture->set_ColorProfile(from);
        const auto management = picture->get_ColorManagement();
        management->set_ColorManagementEngine(ColorManagementEngine::LittleCms);
        management->set_RgbColorProfile(to);
        management->set_TransformationIntent(ColorTransformationIntent::RelativeColorimetric);
        management->set_TargetColorProfile(proof);
        management->Convert(PixelFormat::Format24bppRgb);
        picture->set_ColorProfile(nullptr);
        return picture;
    };
    sheet.AddHeading("The same numbers, read by three profiles and shown in sRGB; a proof of the narrow space");
    sheet.Add(*lake, "sRGB");
    sheet.Add(*convert(wide, srgb, nullptr), "a wide space");
    sheet.Add(*convert(narrow, srgb, nullptr), "a narrow space");
    sheet.Add(*convert(srgb, srgb, narrow), "a proof of the narrow one");
    sheet.AddHeading("The numbers that each kind of screen must be sent to show the first picture");
    sheet.Add(*convert(srgb, srgb, nullptr), "sRGB");
    sheet.Add(*convert(srgb, wide, nullptr), "a wide space");
    sheet.Add(*convert(srgb, narrow, nullptr), "a narrow space");
    sheet.Save(s_out / "profiles.png");
}

void DrawMetadataThumbnails() {
    Bitmap lake(s_pictures / "lake.bmp");
    const auto thumbnail = std::make_shared<Bitmap>(*Lake(160));
    thumbnail->get_ColorManagement()->Convert(PixelFormat::Format24bppRgb);
    const auto exif = std::make_shared<Codecs::ExifDictionary>();
    exif->set_Item(Codecs::ExifDictionary::Thumbnail, thumbnail);
    Codecs::JpegEncoderOptions options(85);
    options.set_Exif(exif);
    const auto file = std::make_shared<Host::MemoryStream>();
    lake.Save(file, &options);

    Sheet sheet(s_letters, 3, 280, 190);
    Codecs::JpegReader reader(file);
    sheet.Add(*std::get<std::shared_ptr<Bitmap>>(reader.get_Exif()->get_Item(Codecs::ExifDictionary::Thumbnail)),
              "the one in the EXIF block,\n160 x 107");
    for (const bool fast : {false, true}) {
        reader.set_FastThumbnails(fast);
        Bitmap decoded;
        reader.LoadFrame(0)->GetThumbnail(&decoded, 280, 190);
        sheet.Add(decoded, fast ? "reduced by the decoder first,\n280 x 187" : "reduced while it was decoded,\n280 x 187");
    }
    sheet.Save(s_out / "metadata-thumbnails.png");
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 4) {
        std::cerr << "usage: gallery PICTURES LETTERS OUT\n";
        return 2;
    }
    s_pictures = argv[1];
    s_letters = argv[2];
    s_out = argv[3];
    DrawResizing();
    DrawThumbnails();
    DrawRotation();
    DrawCrop();
    DrawPixelFormats();
    DrawQuantizers();
    DrawDithering();
    DrawProfiles();
    DrawMetadataThumbnails();
    return 0;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
