#include "colorconversion/AdaptivePaletteCreator.h"

namespace ImagingFramework {

void AdaptivePaletteCreator::GetPalette(const BitmapData&, ColorMap&) {
    throw Exception("Adaptive palettes are not available.");
}

} // namespace ImagingFramework
