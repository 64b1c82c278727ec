#pragma once

#include "Common/ColorMap.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

enum class DitheringType : std::uint32_t {
    None = 0,
    Original = 1,
    FloydSteinberg = 2,
    Fan = 3,
    Jarvis = 4,
    Stucki = 5,
    Sierra = 6,
    Burkes = 7,
    Stephenson = 8,
    OrderedBayer2 = 9,
    OrderedBayer3 = 10,
    OrderedBayer4 = 11,
    OrderedSpiral2 = 12,
    OrderedSpiral3 = 13,
    OrderedSpiral4 = 14,
    Noise = 15,
};

/// Maps scanlines of `Format32bppArgb`, from the top row down, to palette indices of one byte each, and spreads the
/// error that this makes.
class Dithering {
public:
    virtual ~Dithering() = default;
    /// `intensity` is in percent; the palette is borrowed and searched. Fails with `ArgumentException`
    /// ("uintScanlineWidth") for a width of zero.
    virtual void Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) = 0;
    /// Fails with `ArgumentNullPointerException` on null, `PaletteException` without a palette.
    virtual void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) = 0;
};

/// A dithering of `type`, to be opened. Fails with `UnsupportedPixelFormatException` unless it goes from
/// `Format32bppArgb` to an indexed format, and with `ArgumentException` ("enDitheringType") for a type outside 1 to 15.
std::unique_ptr<Dithering> CreateDithering(PixelFormat sourceFormat, PixelFormat destinationFormat, DitheringType type);

} // namespace ImagingFramework
