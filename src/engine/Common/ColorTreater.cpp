#include "Common/ColorTreater.h"

#include <utility>

namespace ImagingFramework {

namespace {

constexpr auto NotImplementedCode = static_cast<std::int32_t>(0x80004001U);

[[noreturn]] void RefusePalette() {
    throw Exception(NotImplementedCode, "Work with palettes is not implemented by now");
}

} // namespace

void ColorTreater::TreatForOutside(const Argb32& color, Argb32* pResult, PixelFormat format) const {
    if (!pResult) {
        throw ArgumentNullPointerException("pResult");
    }
    switch (m_enColorTreatment) {
    case ColorTreatment::AsIs:
    case ColorTreatment::ExchangeRedBlue:
    case ColorTreatment::ClearAlpha:
        break;
    case ColorTreatment::PaletteIndex:
        RefusePalette();
    default:
        throw UnexpectedException("ColorTreatment error: m_enColorTreatment has wrong value.");
    }
    if (PixelFormatIsIndexed(format)) {
        RefusePalette();
    }
    Argb32 treated = color;
    if (m_enColorTreatment == ColorTreatment::ExchangeRedBlue) {
        if (!HasFlag(format, PixelFormatFlag::ByteRgb)) {
            throw UnsupportedPixelFormatException();
        }
        std::swap(treated.Blue, treated.Red);
    } else if (m_enColorTreatment == ColorTreatment::ClearAlpha) {
        treated.Alpha = 0;
    }
    *pResult = treated;
}

} // namespace ImagingFramework
