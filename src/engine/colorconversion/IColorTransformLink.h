#pragma once

#include "Common/ColorMap.h"
#include "Common/PixelFormat.h"
#include "MemoryManagement/MemPtr.h"
#include "colorconversion/CmsProvider.h"
#include "colorconversion/Dithering.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// Turns a run of pixels of one pixel format into a run of another. A link of an indexed format carries the bare flag
/// `IndexedFormat` in place of one of the three indexed formats, and the width of an index apart.
class IColorTransformLink {
public:
    virtual ~IColorTransformLink() = default;
    virtual PixelFormat GetSrcPixelFormat() const = 0;
    virtual PixelFormat GetDstPixelFormat() const = 0;
    /// A fresh link of the same class. Fails with `ArgumentNullPointerException` ("ppNewInstance") on null.
    virtual void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const = 0;
    /// Allocates one scanline of the link's output.
    virtual void AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const = 0;
    /// Width of a source index, clamped to 1 to 8.
    virtual void SetSrcBitsPerPixel(std::uint32_t count) = 0;
    /// Width of a destination index, clamped to 1 to 8.
    virtual void SetDstBitsPerPixel(std::uint32_t count) = 0;
    /// Pixels in a run.
    virtual void SetPixelCount(std::uint32_t count) = 0;
    /// Borrowed.
    virtual void SetSrcColorMap(const ColorMap* colorMap) = 0;
    /// Borrowed, and searched.
    virtual void SetDstColorMap(ColorMap* colorMap) = 0;
    virtual void SetColorProvider(std::unique_ptr<CmsProvider> provider) = 0;
    virtual void SetDitheringType(DitheringType type) = 0;
    /// Clamped to 1 to 100.
    virtual void SetDitheringIntensity(std::uint32_t percent) = 0;
    /// Alpha for pixels of formats without it; 8-bit destinations take the high byte.
    virtual void SetAlpha(std::uint16_t alpha16) = 0;
    /// How 16 bits are narrowed to 8: the value is shifted right by 16 - bits, `offset` is 0, `offset` + 2^scale - 1
    /// and above is 255, and what is between is shifted right by scale - 8. With 16 bits and scale 16 the high byte is
    /// taken.
    virtual void SetBitsUsedQuantizeTo8(std::uint8_t bits) = 0;
    virtual void SetOffsetQuantizeTo8(std::uint16_t offset) = 0;
    virtual void SetScaleQuantizeTo8(std::uint8_t scale) = 0;
    virtual std::uint8_t GetPaletteAlphaThreshold() const = 0;
    virtual void SetPaletteAlphaThreshold(std::uint8_t value) = 0;
    virtual bool GetUsePaletteAlphaThreshold() const = 0;
    virtual void SetUsePaletteAlphaThreshold(bool flag) = 0;
    virtual void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) = 0;
    /// True when a colour management provider has done the whole run, false when the link's own formula must.
    virtual bool ApplyProviderTransform(const std::uint8_t* source, std::uint8_t* destination) = 0;
    /// The same from and to formats that stand in for the link's own: those without the alpha that it has.
    virtual bool ApplyProviderTransform(const std::uint8_t* source, PixelFormat sourceFormat, std::uint8_t* destination,
                                        PixelFormat destinationFormat) = 0;
    /// True while the link would only copy its run; the chain then spares the copy and calls `SkipRun`.
    virtual bool IsPassThrough() const = 0;
    /// What a run of a link that passes its pixels through does besides the copy.
    virtual void SkipRun() = 0;
};

/// Stands for the three indexed formats in a link.
inline constexpr auto IndexedFormat = static_cast<PixelFormat>(PixelFormatFlag::Indexed);

} // namespace ImagingFramework
