#include "Common/ColorTreater.h"

#include <utility>

namespace ImagingFramework {

namespace {

constexpr auto NotImplementedCode = static_cast<std::int32_t>(0x80004001U);

void RefusePalette(bool refused) {
    if (refused) {
        throw Exception(NotImplementedCode, "Work with palettes is not implemented by now");
    }
}

} // namespace

void ColorTreater::TreatForOutside(const Argb32& color, Argb32* pResult, PixelFormat format) const {
    if (!pResult) {
        throw ArgumentNullPointerException("pResult");
    }
    Argb32 treated = color;
    switch (m_enColorTreatment) {
    case ColorTreatment::AsIs:
        RefusePalette(PixelFormatIsIndexed(format));
        break;
    case ColorTreatment::ExchangeRedBlue:
        RefusePalette(PixelFormatIsIndexed(format));
        if (!HasFlag(format, PixelFormatFlag::ByteRgb)) {
            throw UnsupportedPixelFormatException();
        }
        std::swap(treated.Blue, treated.Red);
        break;
    case ColorTreatment::ClearAlpha:
        RefusePalette(PixelFormatIsIndexed(format));
        treated.Alpha = 0;
        break;
    case ColorTreatment::PaletteIndex:
        RefusePalette(true);
        break;
    default:
        throw UnexpectedException("ColorTreatment error: m_enColorTreatment has wrong value.");
    }
    *pResult = treated;
}

} // namespace ImagingFramework
