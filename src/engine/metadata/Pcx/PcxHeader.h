#pragma once

#include <cstdint>

namespace ImagingFramework {

/// The beginning of a PCX file, as it stands there; little-endian.
struct tagPCXHEADER {
    std::uint8_t Manufacturer;
    std::uint8_t Version;
    std::uint8_t Encoding;     ///< 1: run-length coded
    std::uint8_t BitsPerPixel; ///< per plane
    std::uint16_t XMin;
    std::uint16_t YMin;
    std::uint16_t XMax;
    std::uint16_t YMax;
    std::uint16_t HorizontalDpi;
    std::uint16_t VerticalDpi;
    std::uint8_t Palette[16][3]; ///< red, green, blue
    std::uint8_t Reserved;
    std::uint8_t PlaneCount;
    std::uint16_t BytesPerLine; ///< of one plane
    std::uint16_t PaletteType;
    std::uint8_t Filler[58];
};
static_assert(sizeof(tagPCXHEADER) == 128);

} // namespace ImagingFramework
