#pragma once

#include "Common/Color.h"
#include "Common/PixelFormat.h"

#include <cstdint>

namespace ImagingFramework {

/// What a call of the drawing system expects of a 32-bit colour.
enum class ColorTreatment : std::int32_t {
    AsIs = 0,
    ExchangeRedBlue = 1, ///< the system's own word order, red first
    ClearAlpha = 2,      ///< the fourth byte must be 0
    PaletteIndex = 3,    ///< always refused
};

/// Prepares colours for calls of the drawing system.
class ColorTreater {
public:
    explicit ColorTreater(ColorTreatment treatment) : m_enColorTreatment(treatment) {}

    /// Writes `color`, a pixel of `format`, to `pResult` as the system expects it; the two may be one object. An
    /// indexed format, or the mode `PaletteIndex`, fails with `Exception` 0x80004001; `ExchangeRedBlue` on a format
    /// that is not plain byte RGB fails with `UnsupportedPixelFormatException`, an unknown mode with
    /// `UnexpectedException`.
    void TreatForOutside(const Argb32& color, Argb32* pResult, PixelFormat format) const;

private:
    ColorTreatment m_enColorTreatment;
};

} // namespace ImagingFramework
