#include "Transforms/PixelFormatConverterImpl.h"

#include "CallEngine.h"
#include "ColorProfileFile.h"
#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/ColorPalette.h>

#include <utility>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

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

// --- Colour management

ColorManagementEngine PixelFormatConverter::get_ColorManagementEngine() { return Read(&Settings::m_enEngine); }

void PixelFormatConverter::set_ColorManagementEngine(ColorManagementEngine colorManagementEngine) {
    Validator::ValidateEnum("colorManagementEngine", colorManagementEngine);
    Write(&Settings::m_enEngine, colorManagementEngine);
}

ColorTransformationIntent PixelFormatConverter::get_TransformationIntent() { return Read(&Settings::m_enIntent); }

void PixelFormatConverter::set_TransformationIntent(ColorTransformationIntent transformationIntent) {
    Validator::ValidateEnum("transformationIntent", transformationIntent);
    Write(&Settings::m_enIntent, transformationIntent);
}

/// The engine forgets the old profile before it looks at the new one, and so does the property.
template <class Apply>
void PixelFormatConverter::SetProfile(std::shared_ptr<ColorProfile> Settings::*pField,
                                      const std::shared_ptr<ColorProfile>& profile, Apply apply) {
    const std::shared_ptr<const engine::ProfileFile> file = FileOf(profile);
    const ObjectGuard guard(*this);
    (*m_pSettings).*pField = nullptr;
    CallEngine([&] { (m_pSettings->m_manager.*apply)(file); });
    (*m_pSettings).*pField = profile;
}

std::shared_ptr<ColorProfile> PixelFormatConverter::get_RgbColorProfile() { return Read(&Settings::m_pRgbProfile); }

void PixelFormatConverter::set_RgbColorProfile(const std::shared_ptr<ColorProfile>& rgbColorProfile) {
    SetProfile(&Settings::m_pRgbProfile, rgbColorProfile, &engine::ColorSpaceManager::SetRgbColorProfileFile);
}

std::shared_ptr<ColorProfile> PixelFormatConverter::get_GrayScaleColorProfile() {
    return Read(&Settings::m_pGrayScaleProfile);
}

void PixelFormatConverter::set_GrayScaleColorProfile(const std::shared_ptr<ColorProfile>& grayScaleColorProfile) {
    SetProfile(&Settings::m_pGrayScaleProfile, grayScaleColorProfile,
               &engine::ColorSpaceManager::SetGrayColorProfileFile);
}

std::shared_ptr<ColorProfile> PixelFormatConverter::get_CmykColorProfile() { return Read(&Settings::m_pCmykProfile); }

void PixelFormatConverter::set_CmykColorProfile(const std::shared_ptr<ColorProfile>& cmykColorProfile) {
    SetProfile(&Settings::m_pCmykProfile, cmykColorProfile, &engine::ColorSpaceManager::SetCmykColorProfileFile);
}

std::shared_ptr<ColorProfile> PixelFormatConverter::get_TargetColorProfile() {
    return Read(&Settings::m_pTargetProfile);
}

void PixelFormatConverter::set_TargetColorProfile(const std::shared_ptr<ColorProfile>& targetColorProfile) {
    SetProfile(&Settings::m_pTargetProfile, targetColorProfile,
               &engine::ColorSpaceManager::SetTargetColorProfileFile);
}

// --- Palettes

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

ColorQuantizationAlgorithm PixelFormatConverter::get_ColorQuantizationAlgorithm() {
    return Read(&Settings::m_enAlgorithm);
}

void PixelFormatConverter::set_ColorQuantizationAlgorithm(ColorQuantizationAlgorithm value) {
    Validator::ValidateEnum("colorQuantizationAlgorithm", value);
    Write(&Settings::m_enAlgorithm, value);
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

// --- Narrowing

void PixelFormatConverter::SetQuantization(const char* name, std::int32_t bitsUsed, std::int32_t offset,
                                           std::int32_t scale) {
    const char* wrong = nullptr;
    if (bitsUsed < 8 || bitsUsed > 16) {
        wrong = "quantizationTo8bBitsUsed";
    } else if (scale < 8 || scale > bitsUsed) {
        wrong = "quantizationTo8bScale";
    } else if (offset < 0 || offset > ((1 << bitsUsed) - 1) - ((1 << scale) - 1)) {
        wrong = "quantizationTo8bOffset";
    }
    if (wrong != nullptr) {
        throw Host::ArgumentOutOfRangeException(name != nullptr ? name : wrong, "Parameter has invalid value.");
    }
    m_pSettings->m_intBitsUsed = bitsUsed;
    m_pSettings->m_intOffset = offset;
    m_pSettings->m_intScale = scale;
}

std::int32_t PixelFormatConverter::get_QuantizationTo8bBitsUsed() { return Read(&Settings::m_intBitsUsed); }

void PixelFormatConverter::set_QuantizationTo8bBitsUsed(std::int32_t quantizationTo8bBitsUsed) {
    const ObjectGuard guard(*this);
    SetQuantization("quantizationTo8bBitsUsed", quantizationTo8bBitsUsed, m_pSettings->m_intOffset,
                    m_pSettings->m_intScale);
}

std::int32_t PixelFormatConverter::get_QuantizationTo8bOffset() { return Read(&Settings::m_intOffset); }

void PixelFormatConverter::set_QuantizationTo8bOffset(std::int32_t quantizationTo8bOffset) {
    const ObjectGuard guard(*this);
    SetQuantization("quantizationTo8bOffset", m_pSettings->m_intBitsUsed, quantizationTo8bOffset,
                    m_pSettings->m_intScale);
}

std::int32_t PixelFormatConverter::get_QuantizationTo8bScale() { return Read(&Settings::m_intScale); }

void PixelFormatConverter::set_QuantizationTo8bScale(std::int32_t quantizationTo8bScale) {
    const ObjectGuard guard(*this);
    SetQuantization("quantizationTo8bScale", m_pSettings->m_intBitsUsed, m_pSettings->m_intOffset,
                    quantizationTo8bScale);
}

void PixelFormatConverter::SetQuantizationTo8b(std::int32_t bitsUsed, std::int32_t offset, std::int32_t scale) {
    const ObjectGuard guard(*this);
    SetQuantization(nullptr, bitsUsed, offset, scale);
}

} // namespace Corvane::Rasterloom::Transforms
