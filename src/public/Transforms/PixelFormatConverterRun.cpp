// What a PixelFormatConverter does with its settings: whole bitmaps, arrays of samples, single colours.

#include "Transforms/PixelFormatConverterImpl.h"

#include "CallEngine.h"
#include "EngineColor.h"
#include "PixelAccess.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include <algorithm>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

namespace {

/// The format of which a colour of that space consists.
PixelFormat FormatOfColor(ColorSpace space) {
    switch (space) {
    case ColorSpace::Rgb:
        return PixelFormat::Format64bppArgb;
    case ColorSpace::GrayScale:
        return PixelFormat::Format32bppAGrayScale;
    case ColorSpace::Cmyk:
        return PixelFormat::Format80bppAcmyk;
    default:
        throw UnsupportedPixelFormatException();
    }
}

void CheckNotIndexed(PixelFormat destination) {
    if (PixelFormatUtils::IsIndexed(destination)) {
        throw UnsupportedPixelFormatException(
            "This operation doesn't support destination pixel formats of indexed types.");
    }
}

/// Gives the converter its destination format back.
class DestinationGuard {
public:
    DestinationGuard(PixelFormatConverter& converter, PixelFormat temporary)
        : m_converter(converter), m_enOld(converter.get_DestinationPixelFormat()) {
        converter.set_DestinationPixelFormat(temporary);
    }
    ~DestinationGuard() {
        try {
            m_converter.set_DestinationPixelFormat(m_enOld);
        } catch (...) {
            // Disposed, or held by another thread for longer than the time limit: there is no one to tell.
        }
    }
    DestinationGuard(const DestinationGuard&) = delete;
    DestinationGuard& operator=(const DestinationGuard&) = delete;

private:
    PixelFormatConverter& m_converter;
    PixelFormat m_enOld;
};

} // namespace

void PixelFormatConverter::ExportSettings() {
    const Settings& settings = *m_pSettings;
    engine::ColorSpaceManager& manager = m_pSettings->m_manager;
    CallEngine([&] {
        manager.SetColorManagementEngine(static_cast<engine::ColorManagementEngine>(settings.m_enEngine));
        manager.SetColorTransformIntent(static_cast<engine::ColorTransformIntent>(settings.m_enIntent));
        manager.SetColorMapType(static_cast<engine::ColorMapType>(settings.m_enPaletteType));
        manager.SetCustomColorMap(settings.m_customPalette);
        manager.SetColorMapEntryCount(static_cast<std::uint32_t>(settings.m_intPaletteEntryCount));
        manager.SetCreateColorMapWithAlpha(settings.m_bAdaptivePaletteWithAlpha);
        manager.SetPaletteAlphaThreshold(settings.m_paletteAlphaThreshold);
        manager.SetUsePaletteAlphaThreshold(settings.m_bPaletteAlphaThresholdUsed);
        manager.SetColorQuantizationAlgorithm(static_cast<engine::ColorQuantizationAlgorithm>(settings.m_enAlgorithm));
        manager.SetDitheringType(static_cast<engine::DitheringType>(settings.m_enDithering));
        manager.SetDitheringIntensity(settings.m_fDitheringIntensity);
        manager.SetConvertAlpha(settings.m_fOpacity);
        manager.SetBitsUsedQuantizeTo8(static_cast<std::uint8_t>(settings.m_intBitsUsed));
        manager.SetOffsetQuantizeTo8(static_cast<std::uint16_t>(settings.m_intOffset));
        manager.SetScaleQuantizeTo8(static_cast<std::uint8_t>(settings.m_intScale));
    });
    InitializeAlphaBlend();
}

void PixelFormatConverter::InitializeAlphaBlend() {
    const Settings& settings = *m_pSettings;
    engine::ColorSpaceManager& manager = m_pSettings->m_manager;
    const bool blend = settings.m_bBackgroundEnabled && !settings.m_backgroundColor.IsNull();
    manager.SetBlendWithBackground(blend);
    if (!blend) {
        return;
    }
    // The engine composes in the colour space of the source.
    manager.SetBackgroundColor(
        EngineColor(settings.m_backgroundColor, get__Run().m_pSrcBitmapData->get__InternalBitmapData()));
}

engine::IInternalEventsHost& PixelFormatConverter::_GetEngineEventsHost() { return m_pSettings->m_manager; }

const engine::IPixelFormatSupport& PixelFormatConverter::_GetEngineFormatSupport() const {
    return m_pSettings->m_manager;
}

void PixelFormatConverter::_RunEngine(const engine::BitmapData& source, const engine::RegionRect*,
                                      std::unique_ptr<engine::BitmapData>& destination) {
    m_pSettings->m_manager.TransformBitmapData(source, static_cast<engine::PixelFormat>(m_pSettings->m_enDestination),
                                               destination);
}

PixelArray PixelFormatConverter::ConvertArray(const PixelArray& values, PixelFormat format, const ColorPalette* palette,
                                              const std::shared_ptr<ColorProfile>& profile) {
    const PixelFormat destination = get_DestinationPixelFormat();
    CheckNotIndexed(destination);
    // Told before the work, which would be of no use.
    if (!PixelAccess::HasWholeSamples(static_cast<engine::PixelFormat>(destination))) {
        throw UnsupportedPixelFormatException("Pixel format is not supported channels manipulations.");
    }
    Bitmap bitmap(values, format, palette);
    if (profile) {
        bitmap.set_ColorProfile(profile);
    }
    ApplyTransform(bitmap);
    return bitmap.Export();
}

Color PixelFormatConverter::ConvertColor(const Color& color, const std::shared_ptr<ColorProfile>& profile) {
    if (color.IsNull()) {
        throw Host::ArgumentNullException("color");
    }
    const PixelFormat destination = get_DestinationPixelFormat();
    CheckNotIndexed(destination);
    const ColorSpace space = PixelFormatUtils::ColorSpace(destination);
    const DestinationGuard guard(*this, FormatOfColor(space));
    const std::vector<std::int32_t> channels = color.ToArray32();
    PixelArray pixel(1, 1, static_cast<std::int32_t>(channels.size()));
    for (std::size_t i = 0; i < channels.size(); ++i) {
        pixel(0, 0, static_cast<std::int32_t>(i)) = channels[i];
    }
    const PixelArray converted = ConvertArray(pixel, FormatOfColor(color.get_ColorSpace()), nullptr, profile);
    std::array<std::int32_t, 5> result{};
    std::ranges::copy(converted.get_Values(), result.begin());
    return MakeColor(space, result);
}

} // namespace Corvane::Rasterloom::Transforms
