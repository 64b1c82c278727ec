#include "colorconversion/Dithering.h"

namespace ImagingFramework {

std::unique_ptr<Dithering> CreateDithering(PixelFormat sourceFormat, PixelFormat destinationFormat,
                                           DitheringType type) {
    if (sourceFormat != PixelFormat::Format32bppArgb || !PixelFormatIsIndexed(destinationFormat)) {
        throw UnsupportedPixelFormatException();
    }
    if (type < DitheringType::Original || type > DitheringType::Noise) {
        throw ArgumentException("enDitheringType");
    }
    throw Exception("Dithering is not available.");
}

} // namespace ImagingFramework
