#include "Conversions.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatWriter.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include <algorithm>
#include <stdexcept>

namespace Tool {

using namespace Corvane::Rasterloom;
using Transforms::PixelFormatConverter;

namespace {

constexpr std::int32_t SixteenEntries = 16;

/// What a whole-channel format tells.
struct Channels {
    ColorSpace Space;
    bool Alpha;
    bool Extended;

    PixelFormat Format() const {
        switch (Space) {
        case ColorSpace::GrayScale:
            return Extended ? (Alpha ? PixelFormat::Format32bppAGrayScale : PixelFormat::Format16bppGrayScale)
                            : (Alpha ? PixelFormat::Format16bppAGrayScale : PixelFormat::Format8bppGrayScale);
        case ColorSpace::Cmyk:
            return Extended ? (Alpha ? PixelFormat::Format80bppAcmyk : PixelFormat::Format64bppCmyk)
                            : (Alpha ? PixelFormat::Format40bppAcmyk : PixelFormat::Format32bppCmyk);
        default:
            return Extended ? (Alpha ? PixelFormat::Format64bppArgb : PixelFormat::Format48bppRgb)
                            : (Alpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
        }
    }
};

Channels ChannelsOf(Bitmap& bitmap) {
    return {bitmap.get_ColorSpace(), HasAlpha(bitmap), bitmap.get_IsExtended()};
}

void SetProfile(PixelFormatConverter& converter, const std::shared_ptr<ColorProfile>& profile) {
    converter.set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    switch (profile->get_ColorSpace()) {
    case ColorSpace::GrayScale:
        return converter.set_GrayScaleColorProfile(profile);
    case ColorSpace::Cmyk:
        return converter.set_CmykColorProfile(profile);
    default:
        return converter.set_RgbColorProfile(profile);
    }
}

void Run(PixelFormatConverter& converter, Bitmap& bitmap) {
    const auto forward =
        converter.Progress.Subscribe([&](ProgressEventArgs& args) { bitmap._OnProgress(&converter, args); });
    converter.ApplyTransform(bitmap);
}

/// The profile of the picture where it is one for its pixels.
std::shared_ptr<ColorProfile> OwnProfile(Bitmap& bitmap) {
    auto profile = bitmap.get_ColorProfile();
    return profile && profile->get_ColorSpace() == bitmap.get_ColorSpace() ? std::move(profile) : nullptr;
}

/// Whether the palette that is made for a picture with alpha has alpha.
bool MakesAlphaPalette(PixelFormat format, const ColorChoices& choices) {
    const bool isTooSmall = format == PixelFormat::Format1bppIndexed ||
                            (choices.Palette.EntryCount != 0 && choices.Palette.EntryCount < SmallestAlphaPalette);
    return !choices.Background && choices.Palette.Type == ColorPaletteType::Adaptive && !isTooSmall;
}

void SetPalette(PixelFormatConverter& converter, bool alpha, const ColorChoices& choices) {
    converter.set_PaletteType(choices.Palette.Type);
    converter.set_PaletteEntryCount(choices.Palette.EntryCount);
    if (choices.Custom) {
        converter.set_CustomPalette(*choices.Custom);
    }
    converter.set_ColorQuantizationAlgorithm(choices.Quantizer);
    converter.set_Dithering(choices.Dithering);
    converter.set_DitheringIntensity(static_cast<float>(choices.DitheringPercent / 100));
    converter.set_BuildAdaptivePaletteWithAlpha(alpha);
    converter.set_PaletteAlphaThresholdUsed(alpha && choices.AlphaThreshold.has_value());
    converter.set_PaletteAlphaThreshold(choices.AlphaThreshold.value_or(0));
}

void ConvertDirectly(Bitmap& bitmap, PixelFormat format, const ColorChoices& choices) {
    const ProfileKeeper keeper(bitmap);
    const bool indexed = PixelFormatUtils::IsIndexed(format);
    const bool hasAlpha = HasAlpha(bitmap);
    PixelFormatConverter converter(format);
    if (indexed) {
        SetPalette(converter, hasAlpha, choices);
    }
    converter.set_BackgroundEnabled(hasAlpha && !indexed && !PixelFormatUtils::HasAlpha(format));
    converter.set_BackgroundColor(choices.GetBackground());
    if (!bitmap.get_IsRgb() && PixelFormatUtils::IsRgb(format) && OwnProfile(bitmap)) {
        SetProfile(converter, ColorProfile::FromSrgb());
        converter.set_TransformationIntent(choices.GetIntent());
    }
    Run(converter, bitmap);
    keeper.Restore();
}

/// Lets the background through the transparent entries, and leaves the indices as they are.
void FlattenPalette(Bitmap& bitmap, const ColorChoices& choices) {
    const auto palette = bitmap.get_Palette();
    const RgbColor background = choices.GetBackground();
    for (std::int32_t i = 0; i < palette->get_Count(); ++i) {
        const RgbColor entry = palette->get_Item(i);
        const std::int32_t alpha = entry.get_A();
        const auto blend = [alpha](std::int32_t over, std::int32_t under) {
            return static_cast<std::uint8_t>((over * alpha + under * (255 - alpha) + 127) / 255);
        };
        palette->set_Item(i, Host::ArgbColor{255, blend(entry.get_R(), background.get_R()),
                                             blend(entry.get_G(), background.get_G()),
                                             blend(entry.get_B(), background.get_B())});
    }
}

} // namespace

ProfileKeeper::ProfileKeeper(Bitmap& bitmap)
    : m_bitmap(bitmap), m_space(bitmap.get_ColorSpace()), m_profile(bitmap.get_ColorProfile()) {}

void ProfileKeeper::Restore() const {
    if (m_profile && m_bitmap.get_ColorSpace() == m_space && !m_bitmap.get_ColorProfile()) {
        m_bitmap.set_ColorProfile(m_profile);
    }
}

bool HasAlpha(Bitmap& bitmap) {
    if (!bitmap.get_IsIndexed()) {
        return bitmap.get_HasAlpha();
    }
    const auto palette = bitmap.get_Palette();
    return palette && palette->get_HasAlpha();
}

void ConvertPixels(Bitmap& bitmap, PixelFormat format, const ColorChoices& choices) {
    const bool becomesIndexed = PixelFormatUtils::IsIndexed(format);
    if (format == bitmap.get_PixelFormat() && !(becomesIndexed && choices.WantsIndexed)) {
        return;
    }
    if (bitmap.get_IsIndexed() && (becomesIndexed || HasAlpha(bitmap))) {
        // Another palette means other indices, and the alpha of entries shows in whole pixels alone.
        ConvertDirectly(bitmap, HasAlpha(bitmap) ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb, choices);
    }
    if (becomesIndexed && HasAlpha(bitmap) && !MakesAlphaPalette(format, choices)) {
        ConvertDirectly(bitmap, PixelFormat::Format24bppRgb, choices);
    }
    if (format != bitmap.get_PixelFormat()) {
        ConvertDirectly(bitmap, format, choices);
    }
}

void ConvertToProfile(Bitmap& bitmap, const ColorChoices& choices) {
    Channels channels = ChannelsOf(bitmap);
    if (bitmap.get_IsIndexed()) {
        ConvertPixels(bitmap, channels.Format(), choices);
    }
    if (!OwnProfile(bitmap)) {
        if (!bitmap.get_IsRgb()) {
            throw std::runtime_error("the picture has no profile for its colours; --profile-in can tell it");
        }
        bitmap.set_ColorProfile(ColorProfile::FromSrgb());
    }
    channels.Space = choices.ProfileOut->get_ColorSpace();
    PixelFormatConverter converter(channels.Format());
    SetProfile(converter, choices.ProfileOut);
    converter.set_TargetColorProfile(choices.ProfileProof);
    converter.set_TransformationIntent(choices.GetIntent());
    Run(converter, bitmap);
}

PixelFormat SmallestIndexedFormat(const ColorChoices& choices) {
    const ColorPaletteType type = choices.Palette.Type;
    if (type == ColorPaletteType::Bicolor) {
        return PixelFormat::Format1bppIndexed;
    }
    std::int32_t count = choices.Palette.EntryCount;
    if (count == 0 && type != ColorPaletteType::Adaptive) {
        count = choices.Custom ? choices.Custom->get_Count() : ColorPalette(type).get_Count();
    }
    return count > 0 && count <= SixteenEntries ? PixelFormat::Format4bppIndexed : PixelFormat::Format8bppIndexed;
}

void FitToFormat(Bitmap& bitmap, std::int64_t mediaFormat, const ColorChoices& choices) {
    const auto writer = Codecs::FormatManager::CreateFormatWriter(mediaFormat);
    auto* const own = dynamic_cast<Codecs::FormatWriter*>(writer.get());
    if (own == nullptr) {
        return;
    }
    const PixelFormat format = bitmap.get_PixelFormat();
    if (own->IsPixelFormatSupported(format)) {
        const bool holdsAlpha = mediaFormat == Codecs::FormatManager::PngFormat;
        if (bitmap.get_IsIndexed() && HasAlpha(bitmap) && !holdsAlpha) {
            FlattenPalette(bitmap, choices);
        }
        return;
    }
    const Channels from = ChannelsOf(bitmap);
    // The closest first. What is left for none of them is the writer's to convert.
    for (const ColorSpace space : {from.Space, ColorSpace::Rgb}) {
        for (const Channels to : {Channels{space, from.Alpha, from.Extended}, Channels{space, from.Alpha, false},
                                  Channels{space, false, from.Extended}, Channels{space, false, false}}) {
            if (own->IsPixelFormatSupported(to.Format())) {
                return ConvertPixels(bitmap, to.Format(), choices);
            }
        }
    }
    if (from.Alpha) {
        ConvertPixels(bitmap, Channels{from.Space, false, false}.Format(), choices);
    }
}

} // namespace Tool
