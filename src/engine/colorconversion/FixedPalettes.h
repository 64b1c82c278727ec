#pragma once

#include "Common/ColorMap.h"
#include "colorconversion/ConversionTypes.h"

namespace ImagingFramework {

/// Makes `colorMap` the predefined palette of `type`, all alpha 255. Fails with `ArgumentException` ("enColorMapType")
/// for a type that is none.
void FillFixedPalette(ColorMap& colorMap, ColorMapType type, bool withAlpha);

} // namespace ImagingFramework
