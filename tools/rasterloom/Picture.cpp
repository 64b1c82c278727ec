#include "Picture.h"

#include "Conversions.h"
#include "Files.h"

#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <cstddef>
#include <utility>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

/// The box before the picture is turned.
RequestedSize BoxFor(const RequestedSize& box, const Metadata& metadata, bool autoOrient) {
    return autoOrient && IsLyingOrientation(GetOrientation(metadata)) ? RequestedSize{box.Height, box.Width, 0} : box;
}

/// Whether a `Format32bppArgb` bitmap shows nothing of what is behind it.
bool IsOpaque(Bitmap& bitmap) {
    constexpr std::int32_t alphaOffset = 3;
    constexpr std::int32_t pixelSize = 4;
    const std::int32_t width = bitmap.get_Width();
    const std::int32_t height = bitmap.get_Height();
    const auto view = bitmap.LockBits();
    bool opaque = true;
    for (std::int32_t y = 0; y < height && opaque; ++y) {
        const std::uint8_t* const row = view->get_Scan0() + static_cast<std::ptrdiff_t>(y) * view->get_Stride();
        for (std::int32_t x = 0; x < width && opaque; ++x) {
            opaque = row[static_cast<std::ptrdiff_t>(x) * pixelSize + alphaOffset] == 255;
        }
    }
    bitmap.UnlockBits(view);
    return opaque;
}

void LoadReduced(Picture& picture, Codecs::IFrame& frame, const RequestedSize& box, const Settings& settings) {
    auto* const own = dynamic_cast<Codecs::Frame*>(&frame);
    if (own != nullptr && settings.Interpolation) {
        own->GetThumbnail(&picture.Pixels, box.Width, box.Height, *settings.Interpolation);
    } else {
        frame.GetThumbnail(&picture.Pixels, box.Width, box.Height);
    }
    // A thumbnail is RGB with alpha and knows nothing of its frame. It is brought back to what the frame has.
    picture.Pixels.set_HorizontalResolution(frame.get_HorizontalResolution());
    picture.Pixels.set_VerticalResolution(frame.get_VerticalResolution());
    const bool gray = frame.get_IsGrayScale();
    const bool opaque = frame.get_IsIndexed() ? IsOpaque(picture.Pixels) : !frame.get_HasAlpha();
    if (opaque) {
        ConvertPixels(picture.Pixels, gray ? PixelFormat::Format8bppGrayScale : PixelFormat::Format24bppRgb,
                      settings.Colors);
    }
    const auto profile = frame.get_ColorProfile();
    if (profile && profile->get_ColorSpace() == picture.Pixels.get_ColorSpace()) {
        picture.Pixels.set_ColorProfile(profile);
    }
}

/// Inks look right through their profile alone, and thumbnails are made without one.
void LoadReducedInks(Picture& picture, Codecs::IFrame& frame, const RequestedSize& box, const Settings& settings) {
    frame.GetBitmap(&picture.Pixels);
    ConvertPixels(picture.Pixels, PixelFormat::Format24bppRgb, settings.Colors);
    const RequestedSize size = box.Within(frame.get_Width(), frame.get_Height());
    if (size.Width != frame.get_Width() || size.Height != frame.get_Height()) {
        picture.Pixels.get_Transforms()->Resize(
            size.Width, size.Height, settings.Interpolation.value_or(Transforms::InterpolationMode::HighQuality));
    }
}

void LoadFrame(Picture& picture, Codecs::IFormatReader& reader, const LoadChoices& choices, const Settings& settings) {
    const auto frame = reader.LoadFrame(0);
    if (!choices.Box) {
        frame->GetBitmap(&picture.Pixels);
        return;
    }
    if (auto* const jpeg = dynamic_cast<Codecs::JpegReader*>(&reader)) {
        jpeg->set_FastThumbnails(choices.Fast);
    }
    picture.Changed = true;
    const RequestedSize box = BoxFor(*choices.Box, picture.Metadata, choices.AutoOrient);
    if (frame->get_IsCmyk() && frame->get_ColorProfile()) {
        LoadReducedInks(picture, *frame, box, settings);
    } else {
        LoadReduced(picture, *frame, box, settings);
    }
}

} // namespace

void LoadPicture(Picture& picture, const std::filesystem::path& file, const LoadChoices& choices,
                 const Settings& settings, const ReaderProgress& progress, const Note& note) {
    const auto reader = OpenPicture(file);
    Host::Subscription forward;
    if (auto* const handler = dynamic_cast<ISyncHandler*>(reader.get())) {
        forward =
            handler->Progress.Subscribe([handler, &progress](ProgressEventArgs& args) { progress(*handler, args); });
    }
    if (!choices.Strip || choices.AutoOrient) {
        picture.Metadata = ReadMetadata(*reader, note);
    }
    LoadFrame(picture, *reader, choices, settings);
    if (settings.Colors.ProfileIn) {
        picture.Pixels.set_ColorProfile(settings.Colors.ProfileIn);
    }
    if (choices.AutoOrient) {
        picture.Changed |= TurnUpright(picture.Pixels, picture.Metadata);
    }
}

} // namespace Tool
