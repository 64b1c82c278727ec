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

/// Maps scanlines of `Format32bppArgb` to palette indices of one byte each, and spreads the error that this makes. Rows
/// come in order, from the top down; pixels are visited from left to right in every row. An index above 255 is written as
/// 255. Not for two threads at once.
class Dithering {
public:
    virtual ~Dithering() = default;
    Dithering(const Dithering&) = delete;
    Dithering& operator=(const Dithering&) = delete;

    /// Begins a picture. `intensity` is in percent, and more than 100 counts as 100; the palette is borrowed and searched.
    /// Fails with `ArgumentException`: "uintScanlineWidth" for a width of zero, "dithering type" for a type that is not of
    /// this class.
    virtual void Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) = 0;
    /// Fails with `ArgumentNullPointerException` on null, and with `PaletteException` without a palette. Allocates nothing
    /// after the first row.
    virtual void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) = 0;

protected:
    explicit Dithering(DitheringType type) : m_enType(type) {}

    /// Fails with `ArgumentException` unless the type lies between the two.
    void CheckType(DitheringType first, DitheringType last) const;
    void RequirePalette() const;

    std::uint32_t m_uintScanlineWidth = 0;
    std::uint32_t m_uintRow = 0;
    DitheringType m_enType;
    ColorMap* m_pPalette = nullptr; ///< borrowed
    const std::uint8_t* m_pSrcScanline = nullptr;
    std::uint8_t* m_pDestScanline = nullptr;
    std::int32_t m_intIntensity = 100; ///< percent
};

/// A dithering of `type`, to be opened. Fails with `UnsupportedPixelFormatException` unless it goes from
/// `Format32bppArgb` to an indexed format, and with `ArgumentException` ("enDitheringType") for a type outside 1 to 15.
std::unique_ptr<Dithering> CreateDithering(PixelFormat sourceFormat, PixelFormat destinationFormat, DitheringType type);

} // namespace ImagingFramework
