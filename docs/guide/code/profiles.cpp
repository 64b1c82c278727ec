// The code of ../profiles.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <cstring>
#include <fstream>
#include <utility>

using namespace Corvane::Rasterloom;

namespace {

std::uint32_t BigEndian(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

/// A profile of strong primaries, for the page to have one: sRGB with the colorants of a wide display put in.
void WriteWideProfile() {
    const auto stream = std::make_shared<Host::MemoryStream>();
    ColorProfile::FromSrgb()->Save(stream);
    std::vector<std::uint8_t> bytes = stream->GetBuffer();
    // X, Y and Z of each in 1/65536, adapted to D50.
    const struct {
        const char* Tag;
        std::uint32_t Xyz[3];
    } colorants[] = {{"rXYZ", {39960, 20389, 1276}}, {"gXYZ", {13453, 41004, 3989}}, {"bXYZ", {9777, 4143, 48796}}};
    for (std::uint32_t i = 0; i < BigEndian(&bytes[128]); ++i) {
        const std::uint8_t* const entry = &bytes[132 + 12 * i];
        for (const auto& colorant : colorants) {
            if (std::memcmp(entry, colorant.Tag, 4) == 0) {
                std::uint8_t* value = &bytes[BigEndian(entry + 4) + 8];
                for (const std::uint32_t number : colorant.Xyz) {
                    for (int shift = 24; shift >= 0; shift -= 8) {
                        *value++ = static_cast<std::uint8_t>(number >> shift);
                    }
                }
            }
        }
    }
    std::ofstream("wide.icc", std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void Look() {
    // [look]
    const auto srgb = ColorProfile::FromSrgb();
    srgb->get_Description();
    srgb->get_ColorSpace();  // ColorSpace::Rgb
    srgb->get_DeviceClass(); // ColorProfileClass::Display

    ColorProfile wide("wide.icc"); // CMOpenProfileException for what is no profile
    // [look end]
    Expect(srgb->get_ColorSpace() == ColorSpace::Rgb && srgb->get_DeviceClass() == ColorProfileClass::Display);
    Expect(wide.get_ColorSpace() == ColorSpace::Rgb);
}

void Attach() {
    // [attach]
    Bitmap picture("lake.bmp");
    picture.set_ColorProfile(std::make_shared<ColorProfile>("wide.icc")); // the pixels stay as they are
    picture.Save("lake-wide.png");                                        // the file has the profile

    Bitmap again("lake-wide.png");
    again.get_ColorProfile(); // null for a file without one
    // [attach end]
    Expect(again.get_ColorProfile() != nullptr);
}

void Convert() {
    // [convert]
    Bitmap picture("lake-wide.png");
    const auto management = picture.get_ColorManagement();
    management->set_ColorManagementEngine(ColorManagementEngine::LittleCms); // None at first: plain formulas
    management->set_RgbColorProfile(ColorProfile::FromSrgb());               // what an RGB result is described by
    management->set_TransformationIntent(ColorTransformationIntent::RelativeColorimetric);
    management->Convert(PixelFormat::Format24bppRgb);
    picture.get_ColorProfile(); // sRGB now
    // [convert end]
    Bitmap before("lake-wide.png");
    Expect(!(before.GetPixel(360, 300) == picture.GetPixel(360, 300)));
    for (const auto& [bitmap, name] : {std::pair{&before, "before.png"}, std::pair{&picture, "after.png"}}) {
        bitmap->set_ColorProfile(nullptr);
        bitmap->get_Transforms()->Resize(240, 160);
        bitmap->Save(name);
    }
}

void OneColour() {
    // [colour]
    Transforms::PixelFormatConverter converter(PixelFormat::Format24bppRgb);
    converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    converter.set_RgbColorProfile(ColorProfile::FromSrgb());
    const auto wide = std::make_shared<ColorProfile>("wide.icc");
    const RgbColor shown = converter.ConvertColor(Color::FromRgb(60, 160, 60), wide); // in sRGB
    // [colour end]
    Expect(shown.get_G() > 160 || shown.get_R() < 60);
}

void Mistakes() {
    bool refused = false;
    // [wrong]
    Transforms::PixelFormatConverter converter(PixelFormat::Format32bppCmyk);
    try {
        converter.set_CmykColorProfile(ColorProfile::FromSrgb());
    } catch (const CMInappropriateProfileException&) {
        refused = true; // an RGB profile describes no CMYK pixels
    }
    // [wrong end]
    Expect(refused);
}

} // namespace

int main() { return RunPage({WriteWideProfile, Look, Attach, Convert, OneColour, Mistakes}); }
