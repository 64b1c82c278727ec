// The code of ../thumbnails.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <variant>

using namespace Corvane::Rasterloom;

namespace {

void Load() {
    // [load]
    Bitmap thumbnail;
    thumbnail.LoadThumbnail("lake.bmp", 160, 160); // fits into the box, keeps the proportions: 160 x 107
    thumbnail.Save("thumbnail.png");
    // [load end]
    Expect(thumbnail.get_Width() == 160 && thumbnail.get_Height() == 107);
}

void Mode() {
    // [mode]
    Bitmap page;
    page.LoadThumbnail("text.bmp", 250, 0, Transforms::InterpolationMode::Anisotropic9);
    // [mode end]
    page.Save("page.png");
    Expect(page.get_Width() == 250);
    Bitmap nearest;
    nearest.LoadThumbnail("text.bmp", 250, 0, Transforms::InterpolationMode::NearestNeighbour);
    nearest.Save("page-nearest.png");
}

void Embedded() {
    Bitmap lake("lake.bmp");
    // [write]
    const auto exif = std::make_shared<Codecs::ExifDictionary>();
    const auto small = std::make_shared<Bitmap>();
    small->LoadThumbnail("lake.bmp", 160, 120);
    exif->set_Item(Codecs::ExifDictionary::Thumbnail, small);
    Codecs::JpegEncoderOptions options(90);
    options.set_Exif(exif);
    lake.Save("with-thumbnail.jpg", &options);
    // [write end]

    // [embedded]
    Codecs::JpegReader reader("with-thumbnail.jpg");
    std::shared_ptr<Bitmap> preview;
    const auto tags = reader.get_Exif(); // null without EXIF
    if (tags && tags->Contains(Codecs::ExifDictionary::Thumbnail)) {
        preview = std::get<std::shared_ptr<Bitmap>>(tags->get_Item(Codecs::ExifDictionary::Thumbnail));
    }
    // [embedded end]
    Expect(preview && preview->get_Width() == 160);

    // [fast]
    reader.set_FastThumbnails(true); // the decoder itself reduces by 2, 4 or 8 first
    Bitmap thumbnail;
    reader.LoadFrame(0)->GetThumbnail(&thumbnail, 90, 60);
    // [fast end]
    Expect(thumbnail.get_Width() == 90 && thumbnail.get_Height() == 60);
}

} // namespace

int main() { return RunPage({Load, Mode, Embedded}); }
