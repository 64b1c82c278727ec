#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include "CallEngine.h"
#include "Common/ColorMap.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "colorconversion/ColorSpaceManager.h"
#include "transforms/Transform.h"

#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorPalette.h>

#include <algorithm>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

struct PixelFormatConverter::Settings {
    PixelFormat m_enDestination = PixelFormat::Format24bppRgb;
    ColorPaletteType m_enPaletteType = ColorPaletteType::Adaptive;
    engine::ColorMap m_customPalette;
    std::int32_t m_intPaletteEntryCount = 0;
    bool m_bAdaptivePaletteWithAlpha = false;
    std::uint8_t m_paletteAlphaThreshold = 255;
    bool m_bPaletteAlphaThresholdUsed = true;
    DitheringType m_enDithering = DitheringType::FloydSteinberg;
    float m_fDitheringIntensity = 1.0F;
    float m_fOpacity = 1.0F;
    Color m_backgroundColor = Color::FromRgb(255, 255, 255);
    bool m_bBackgroundEnabled = false;
    std::int32_t m_intBitsUsed = 16;
    std::int32_t m_intOffset = 0;
    std::int32_t m_intScale = 16;
    engine::ColorSpaceManager m_manager;
};

namespace {

void CheckFraction(float value, const char* name, const char* text) {
    if (!(value >= 0.0F && value <= 1.0F)) {
        throw Host::ArgumentOutOfRangeException(name, text);
    }
}

} // namespace

PixelFormatConverter::PixelFormatConverter()
    : BitmapTransform(BitmapChange::ColorSpace, nullptr), m_pSettings(std::make_unique<Settings>()) {}

PixelFormatConverter::PixelFormatConverter(PixelFormat destinationPixelFormat) : PixelFormatConverter() {
    set_DestinationPixelFormat(destinationPixelFormat);
}

PixelFormatConverter::~PixelFormatConverter() { DisposeFinally(); }

template <class Value> Value PixelFormatConverter::Read(Value Settings::*pField) {
    const ObjectGuard guard(*this);
    return (*m_pSettings).*pField;
}

template <class Value> void PixelFormatConverter::Write(Value Settings::*pField, Value value) {
    const ObjectGuard guard(*this);
    (*m_pSettings).*pField = std::move(value);
}

PixelFormat PixelFormatConverter::get_DestinationPixelFormat() { return Read(&Settings::m_enDestination); }

void PixelFormatConverter::set_DestinationPixelFormat(PixelFormat destinationPixelFormat) {
    Validator::ValidateEnum("destinationPixelFormat", destinationPixelFormat);
    Write(&Settings::m_enDestination, destinationPixelFormat);
}

ColorPaletteType PixelFormatConverter::get_PaletteType() { return Read(&Settings::m_enPaletteType); }

void PixelFormatConverter::set_PaletteType(ColorPaletteType paletteType) {
    Validator::ValidateEnum("paletteType", paletteType);
    Write(&Settings::m_enPaletteType, paletteType);
}

std::unique_ptr<ColorPalette> PixelFormatConverter::get_CustomPalette() {
    const ObjectGuard guard(*this);
    return std::make_unique<ColorPalette>(std::make_shared<engine::ColorMap>(m_pSettings->m_customPalette));
}

void PixelFormatConverter::set_CustomPalette(ColorPalette& customPalette) {
    const auto copy = customPalette.Clone();
    Write(&Settings::m_customPalette, *copy->get__ColorMap());
}

std::int32_t PixelFormatConverter::get_PaletteEntryCount() { return Read(&Settings::m_intPaletteEntryCount); }

void PixelFormatConverter::set_PaletteEntryCount(std::int32_t count) {
    if (count < 0) {
        throw Host::ArgumentOutOfRangeException("count", "Palette entries count should be non-negative.");
    }
    Write(&Settings::m_intPaletteEntryCount, count);
}

bool PixelFormatConverter::get_BuildAdaptivePaletteWithAlpha() { return Read(&Settings::m_bAdaptivePaletteWithAlpha); }

void PixelFormatConverter::set_BuildAdaptivePaletteWithAlpha(bool value) {
    Write(&Settings::m_bAdaptivePaletteWithAlpha, value);
}

std::uint8_t PixelFormatConverter::get_PaletteAlphaThreshold() { return Read(&Settings::m_paletteAlphaThreshold); }

void PixelFormatConverter::set_PaletteAlphaThreshold(std::uint8_t value) {
    Write(&Settings::m_paletteAlphaThreshold, value);
}

bool PixelFormatConverter::get_PaletteAlphaThresholdUsed() { return Read(&Settings::m_bPaletteAlphaThresholdUsed); }

void PixelFormatConverter::set_PaletteAlphaThresholdUsed(bool value) {
    Write(&Settings::m_bPaletteAlphaThresholdUsed, value);
}

DitheringType PixelFormatConverter::get_Dithering() { return Read(&Settings::m_enDithering); }

void PixelFormatConverter::set_Dithering(DitheringType dithering) {
    Validator::ValidateEnum("dithering", dithering);
    Write(&Settings::m_enDithering, dithering);
}

float PixelFormatConverter::get_DitheringIntensity() { return Read(&Settings::m_fDitheringIntensity); }

void PixelFormatConverter::set_DitheringIntensity(float ditheringIntensity) {
    CheckFraction(ditheringIntensity, "ditheringIntensity", "Dithering intensity should be in the range [0, 1].");
    Write(&Settings::m_fDitheringIntensity, ditheringIntensity);
}

float PixelFormatConverter::get_Opacity() { return Read(&Settings::m_fOpacity); }

void PixelFormatConverter::set_Opacity(float opacity) {
    CheckFraction(opacity, "opacity", "Opacity should be in the values range [0, 1].");
    Write(&Settings::m_fOpacity, opacity);
}

Color PixelFormatConverter::get_BackgroundColor() { return Read(&Settings::m_backgroundColor); }

void PixelFormatConverter::set_BackgroundColor(const Color& backgroundColor) {
    Write(&Settings::m_backgroundColor, backgroundColor);
}

bool PixelFormatConverter::get_BackgroundEnabled() { return Read(&Settings::m_bBackgroundEnabled); }

void PixelFormatConverter::set_BackgroundEnabled(bool backgroundEnabled) {
    Write(&Settings::m_bBackgroundEnabled, backgroundEnabled);
}

std::int32_t PixelFormatConverter::get_QuantizationTo8bBitsUsed() { return Read(&Settings::m_intBitsUsed); }

std::int32_t PixelFormatConverter::get_QuantizationTo8bOffset() { return Read(&Settings::m_intOffset); }

std::int32_t PixelFormatConverter::get_QuantizationTo8bScale() { return Read(&Settings::m_intScale); }

void PixelFormatConverter::SetQuantizationTo8b(std::int32_t bitsUsed, std::int32_t offset, std::int32_t scale) {
    if (bitsUsed < 8 || bitsUsed > 16) {
        throw Host::ArgumentOutOfRangeException("quantizationTo8bBitsUsed");
    }
    if (scale < 8 || scale > bitsUsed) {
        throw Host::ArgumentOutOfRangeException("quantizationTo8bScale");
    }
    if (offset < 0 || offset > ((1 << bitsUsed) - 1) - ((1 << scale) - 1)) {
        throw Host::ArgumentOutOfRangeException("quantizationTo8bOffset");
    }
    const ObjectGuard guard(*this);
    m_pSettings->m_intBitsUsed = bitsUsed;
    m_pSettings->m_intOffset = offset;
    m_pSettings->m_intScale = scale;
}

void PixelFormatConverter::ExportSettings() {
    const Settings& settings = *m_pSettings;
    engine::ColorSpaceManager& manager = m_pSettings->m_manager;
    CallEngine([&] {
        manager.SetColorManagementEngine(engine::ColorManagementEngine::None);
        manager.SetColorMapType(static_cast<engine::ColorMapType>(settings.m_enPaletteType));
        manager.SetCustomColorMap(settings.m_customPalette);
        manager.SetColorMapEntryCount(static_cast<std::uint32_t>(settings.m_intPaletteEntryCount));
        manager.SetCreateColorMapWithAlpha(settings.m_bAdaptivePaletteWithAlpha);
        manager.SetPaletteAlphaThreshold(settings.m_paletteAlphaThreshold);
        manager.SetUsePaletteAlphaThreshold(settings.m_bPaletteAlphaThresholdUsed);
        manager.SetDitheringType(static_cast<engine::DitheringType>(settings.m_enDithering));
        manager.SetDitheringIntensity(settings.m_fDitheringIntensity);
        manager.SetConvertAlpha(settings.m_fOpacity);
        manager.SetBitsUsedQuantizeTo8(static_cast<std::uint8_t>(settings.m_intBitsUsed));
        manager.SetOffsetQuantizeTo8(static_cast<std::uint16_t>(settings.m_intOffset));
        manager.SetScaleQuantizeTo8(static_cast<std::uint8_t>(settings.m_intScale));
    });
    const bool blend = settings.m_bBackgroundEnabled && !settings.m_backgroundColor.IsNull();
    manager.SetBlendWithBackground(blend);
    if (blend) {
        // The engine composes in the colour space of the source.
        const auto format = get__Run().m_pSrcBitmapData->get__InternalBitmapData().GetPixelFormat();
        const auto space = static_cast<ColorSpace>(engine::PixelFormatColorSpace(format));
        const auto channels = settings.m_backgroundColor.ConvertColorSpace(space).ToArray32();
        engine::ColorSpaceManager::Channels background{};
        std::ranges::transform(channels, background.begin(),
                               [](std::int32_t channel) { return static_cast<std::uint16_t>(channel); });
        manager.SetBackgroundColor(background);
    }
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

} // namespace Corvane::Rasterloom::Transforms
