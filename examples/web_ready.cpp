// Makes a picture ready for the web: upright, in sRGB, no larger than it must be, as a JPEG without what strangers need not
// know. Shows readers and frames, EXIF, colour management and encoder options at work.
// Usage: web_ready IN OUT.jpg [LONGEST_SIDE [QUALITY [keep]]]
//
// Without "keep" the file gets no metadata; the place where a photograph was taken is part of them.
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Codecs/IMetadataReadSupport.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <variant>

using namespace Corvane::Rasterloom;
using Codecs::ExifDictionary;

namespace {

/// How the camera was held: the number of EXIF, from 1 to 8. 1 for a picture that does not tell, or whose EXIF is broken.
std::uint32_t OrientationOf(ExifDictionary* exif) {
    if (exif == nullptr || !exif->Contains(ExifDictionary::Orientation)) {
        return 1;
    }
    const auto value = exif->get_Item(ExifDictionary::Orientation);
    const auto* const number = std::get_if<std::uint32_t>(&value);
    return number != nullptr && *number >= 1 && *number <= 8 ? *number : 1;
}

void TurnUpright(Bitmap& bitmap, std::uint32_t orientation) {
    using enum Host::RotateFlipType;
    constexpr Host::RotateFlipType turns[8] = {RotateNoneFlipNone, RotateNoneFlipX, Rotate180FlipNone, RotateNoneFlipY,
                                               Rotate90FlipX,      Rotate90FlipNone, Rotate270FlipX,   Rotate270FlipNone};
    if (orientation != 1) {
        bitmap.get_Transforms()->RotateAndFlip(turns[orientation - 1]);
    }
}

/// By the picture's own profile where it has one, else by the library's formulas.
void ConvertToSRgb(Bitmap& bitmap) {
    Transforms::PixelFormatConverter converter(PixelFormat::Format24bppRgb);
    converter.set_BackgroundEnabled(true); // white, where the picture is transparent
    if (bitmap.get_ColorProfile() != nullptr) {
        converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
        converter.set_RgbColorProfile(ColorProfile::FromSrgb());
    }
    converter.ApplyTransform(bitmap);
    bitmap.set_ColorProfile(nullptr); // a picture without a profile is taken for sRGB everywhere
}

void Reduce(Bitmap& bitmap, std::int32_t longestSide) {
    const std::int32_t width = bitmap.get_Width();
    const std::int32_t height = bitmap.get_Height();
    if (std::max(width, height) > longestSide) {
        // A side of 0 follows the other.
        bitmap.get_Transforms()->Resize(width >= height ? longestSide : 0, width >= height ? 0 : longestSide,
                                        Transforms::InterpolationMode::HighQuality);
    }
}

/// What was true of the old picture and is not of the new one.
void Correct(ExifDictionary& exif, Bitmap& bitmap) {
    exif.set_Item(ExifDictionary::Orientation, std::uint32_t{1});
    exif.set_Item(ExifDictionary::PixelXDimension, static_cast<std::uint32_t>(bitmap.get_Width()));
    exif.set_Item(ExifDictionary::PixelYDimension, static_cast<std::uint32_t>(bitmap.get_Height()));
    if (exif.Contains(ExifDictionary::Thumbnail)) {
        exif.Remove(ExifDictionary::Thumbnail);
    }
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 3 || argc > 6 || (argc == 6 && argv[5] != std::string("keep"))) {
        std::cerr << "usage: web_ready IN OUT.jpg [LONGEST_SIDE [QUALITY [keep]]]\n";
        return 2;
    }
    const auto reader = Codecs::FormatManager::CreateFormatReader(std::filesystem::path(argv[1]));
    Bitmap bitmap;
    reader->LoadFrame(0)->GetBitmap(&bitmap);
    // Only some formats hold metadata; their readers say so by this interface.
    auto* const metadata = dynamic_cast<Codecs::IMetadataReadSupport*>(reader.get());
    const auto exif = metadata != nullptr ? metadata->get_Exif() : nullptr;

    TurnUpright(bitmap, OrientationOf(exif.get()));
    ConvertToSRgb(bitmap);
    Reduce(bitmap, argc > 3 ? std::stoi(argv[3]) : 1600);

    Codecs::JpegEncoderOptions options(argc > 4 ? std::stoi(argv[4]) : 82, true); // progressive
    if (argc > 5 && metadata != nullptr) {
        if (exif != nullptr) {
            Correct(*exif, bitmap);
        }
        options.set_Exif(exif);
        options.set_Iptc(metadata->get_Iptc());
        options.set_Xmp(metadata->get_Xmp());
    }
    bitmap.Save(argv[2], &options);
    std::cout << argv[2] << ": " << bitmap.get_Width() << " x " << bitmap.get_Height() << '\n';
    return 0;
} catch (const std::exception& failure) { // the library's own failures among them
    std::cerr << failure.what() << '\n';
    return 1;
}
