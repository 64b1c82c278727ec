#include <Corvane/Rasterloom/ColorManagementProvider.h>

#include "BitmapLink.h"
#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include <utility>

namespace Corvane::Rasterloom {

using Transforms::PixelFormatConverter;

namespace {

std::shared_ptr<BitmapLink> RequireLink(std::shared_ptr<BitmapLink> link) {
    if (!link) {
        throw Host::ArgumentNullException("bitmap");
    }
    return link;
}

PixelFormat IndexedFormat(std::int32_t bpp) {
    switch (bpp) {
    case 1:
        return PixelFormat::Format1bppIndexed;
    case 4:
        return PixelFormat::Format4bppIndexed;
    case 8:
        return PixelFormat::Format8bppIndexed;
    default:
        throw Host::ArgumentOutOfRangeException("bpp", "Bits per pixel should have values 1, 4 or 8.");
    }
}

/// The formats of a colour space by alpha and depth.
struct ContinuousFormats {
    ColorSpace Space;
    PixelFormat Plain;
    PixelFormat Alpha;
    PixelFormat Extended;
    PixelFormat ExtendedAlpha;
};

constexpr ContinuousFormats Continuous[] = {
    {ColorSpace::Rgb, PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb, PixelFormat::Format48bppRgb,
     PixelFormat::Format64bppArgb},
    {ColorSpace::Cmyk, PixelFormat::Format32bppCmyk, PixelFormat::Format40bppAcmyk, PixelFormat::Format64bppCmyk,
     PixelFormat::Format80bppAcmyk},
    {ColorSpace::GrayScale, PixelFormat::Format8bppGrayScale, PixelFormat::Format16bppAGrayScale,
     PixelFormat::Format16bppGrayScale, PixelFormat::Format32bppAGrayScale},
};

PixelFormat ContinuousFormat(ColorSpace space, bool hasAlpha, bool extended) {
    for (const ContinuousFormats& formats : Continuous) {
        if (formats.Space == space) {
            return extended ? (hasAlpha ? formats.ExtendedAlpha : formats.Extended)
                            : (hasAlpha ? formats.Alpha : formats.Plain);
        }
    }
    throw UnsupportedPixelFormatException();
}

} // namespace

ColorManagementProvider::ColorManagementProvider(std::shared_ptr<BitmapLink> link)
    : BitmapProvider(RequireLink(std::move(link))) {}

ColorManagementProvider::~ColorManagementProvider() { DisposeFinally(); }

void ColorManagementProvider::Dispose(bool disposing) {
    if (m_pConverter) {
        m_pConverter->Dispose();
    }
    BitmapProvider::Dispose(disposing);
}

template <class Body>
auto ColorManagementProvider::With(Body body) {
    const ObjectGuard guard(*this);
    get__Bitmap(); // fails when it is gone
    if (!m_pConverter) {
        m_pConverter = std::make_unique<PixelFormatConverter>();
    }
    return body(*m_pConverter);
}

// --- Conversions

void ColorManagementProvider::ConvertTo(PixelFormatConverter& converter, PixelFormat format) {
    ValidateRuntimeData();
    converter.set_DestinationPixelFormat(format);
    Apply(converter);
}

void ColorManagementProvider::Convert(PixelFormat format) {
    With([&](PixelFormatConverter& converter) {
        Validator::ValidateEnum("format", format);
        ConvertTo(converter, format);
    });
}

void ColorManagementProvider::ConvertToIndexed(std::int32_t bpp, ColorPaletteType paletteType,
                                               ColorPalette* customPalette) {
    With([&](PixelFormatConverter& converter) {
        const PixelFormat format = IndexedFormat(bpp);
        Validator::ValidateEnum("paletteType", paletteType);
        ColorPalette none;
        // What the host had set is lost, on purpose: this call means the same whatever came before.
        converter.set_PaletteEntryCount(0);
        converter.set_Dithering(DitheringType::FloydSteinberg);
        converter.set_DitheringIntensity(1.0F);
        converter.set_PaletteType(paletteType);
        converter.set_CustomPalette(customPalette != nullptr ? *customPalette : none);
        ConvertTo(converter, format);
    });
}

void ColorManagementProvider::ConvertToContinuous(ColorSpace colorSpace, bool hasAlpha, bool extended) {
    With([&](PixelFormatConverter& converter) {
        Validator::ValidateEnum("colorSpace", colorSpace);
        ConvertTo(converter, ContinuousFormat(colorSpace, hasAlpha, extended));
    });
}

// --- Properties, which are the converter's

#define RASTERLOOM_FORWARD(Type, Argument, Name)                                                                       \
    Type ColorManagementProvider::get_##Name() {                                                                       \
        return With([](PixelFormatConverter& converter) { return converter.get_##Name(); });                           \
    }                                                                                                                  \
    void ColorManagementProvider::set_##Name(Argument value) {                                                         \
        With([&](PixelFormatConverter& converter) { converter.set_##Name(value); });                                   \
    }

RASTERLOOM_FORWARD(std::shared_ptr<ColorProfile>, const std::shared_ptr<ColorProfile>&, RgbColorProfile)
RASTERLOOM_FORWARD(std::shared_ptr<ColorProfile>, const std::shared_ptr<ColorProfile>&, CmykColorProfile)
RASTERLOOM_FORWARD(std::shared_ptr<ColorProfile>, const std::shared_ptr<ColorProfile>&, GrayScaleColorProfile)
RASTERLOOM_FORWARD(std::shared_ptr<ColorProfile>, const std::shared_ptr<ColorProfile>&, TargetColorProfile)
RASTERLOOM_FORWARD(ColorManagementEngine, ColorManagementEngine, ColorManagementEngine)
RASTERLOOM_FORWARD(ColorTransformationIntent, ColorTransformationIntent, TransformationIntent)
RASTERLOOM_FORWARD(DitheringType, DitheringType, Dithering)
RASTERLOOM_FORWARD(float, float, DitheringIntensity)
RASTERLOOM_FORWARD(std::int32_t, std::int32_t, PaletteEntryCount)
RASTERLOOM_FORWARD(bool, bool, BuildAdaptivePaletteWithAlpha)
RASTERLOOM_FORWARD(std::uint8_t, std::uint8_t, PaletteAlphaThreshold)
RASTERLOOM_FORWARD(bool, bool, PaletteAlphaThresholdUsed)
RASTERLOOM_FORWARD(ColorQuantizationAlgorithm, ColorQuantizationAlgorithm, ColorQuantizationAlgorithm)
RASTERLOOM_FORWARD(std::int32_t, std::int32_t, QuantizationTo8bBitsUsed)
RASTERLOOM_FORWARD(std::int32_t, std::int32_t, QuantizationTo8bOffset)
RASTERLOOM_FORWARD(std::int32_t, std::int32_t, QuantizationTo8bScale)

#undef RASTERLOOM_FORWARD

} // namespace Corvane::Rasterloom
