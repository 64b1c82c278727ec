#pragma once

#include "Common/ColorMap.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// Receives the colours of a picture one by one and hands back a palette of a limited number of entries.
///
/// It is opened, fed and asked; `Open` starts it over, and more colours may follow after a palette. Serves one thread.
class ColorQuantizer {
public:
    virtual ~ColorQuantizer() = default;

    /// `bits` (1 to 8) of each channel count; else it fails with `ArgumentException` and changes nothing. The palette
    /// gets at most `maxColors` entries and at most 2^bits; 0 stands for 2^bits.
    virtual void Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors);
    /// Alpha is dropped by a quantizer that knows none.
    virtual void AddColor(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    /// An opaque colour.
    virtual void AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) = 0;
    /// The entry that an added colour went into, after `GetPalette`.
    virtual std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) = 0;

    /// Makes `colorMap` the palette; a null one is made. Without colours it gets no entries.
    void GetPalette(std::unique_ptr<ColorMap>& colorMap);
    /// Adds `count` pixels of `Format32bppArgb`. Null fails with `ArgumentNullPointerException` ("pPixels").
    void AddColorsArgb(const std::uint8_t* pPixels, std::size_t count);
    /// The same without the fourth byte: all pixels are opaque.
    void AddColorsRgb(const std::uint8_t* pPixels, std::size_t count);

protected:
    /// Makes the palette in `m_palette` and the count of its entries that are filled. Here: the most entries there may
    /// be, none filled, opaque where there is alpha.
    virtual void FillPalette();
    PixelFormat GetPaletteFormat() const;
    /// The mean of `count` values that sum up to `sum`. Fails with `OverflowException` when it is no byte.
    static std::uint8_t Mean(std::uint64_t sum, std::uint64_t count);

    std::uint32_t m_uintMaximumEntryCount = 256;
    std::uint32_t m_uintBits = 8;
    bool m_bWithAlpha = false;
    ColorMap m_palette;
    std::uint32_t m_uintFilledEntryCount = 0;
};

} // namespace ImagingFramework
