// Enumerations that both layers have cross the seam by a cast, so their values must be equal.

#include "Common/PixelFormat.h"

#include <Corvane/Rasterloom/PixelFormat.h>

#include <type_traits>

namespace {

namespace Public = Corvane::Rasterloom;

#define RASTERLOOM_SAME(Enum, Name)                                                                                    \
    static_assert(static_cast<std::underlying_type_t<Public::Enum>>(Public::Enum::Name) ==                             \
                  static_cast<std::underlying_type_t<ImagingFramework::Enum>>(ImagingFramework::Enum::Name))

RASTERLOOM_SAME(PixelFormat, FormatUnknown);
RASTERLOOM_SAME(PixelFormat, Format1bppIndexed);
RASTERLOOM_SAME(PixelFormat, Format4bppIndexed);
RASTERLOOM_SAME(PixelFormat, Format8bppIndexed);
RASTERLOOM_SAME(PixelFormat, Format16bppGrayScale);
RASTERLOOM_SAME(PixelFormat, Format16bppRgb555);
RASTERLOOM_SAME(PixelFormat, Format16bppRgb565);
RASTERLOOM_SAME(PixelFormat, Format16bppArgb1555);
RASTERLOOM_SAME(PixelFormat, Format24bppRgb);
RASTERLOOM_SAME(PixelFormat, Format32bppRgb);
RASTERLOOM_SAME(PixelFormat, Format32bppArgb);
RASTERLOOM_SAME(PixelFormat, Format48bppRgb);
RASTERLOOM_SAME(PixelFormat, Format64bppArgb);
RASTERLOOM_SAME(PixelFormat, Format32bppCmyk);
RASTERLOOM_SAME(PixelFormat, Format8bppGrayScale);
RASTERLOOM_SAME(PixelFormat, Format16bppAGrayScale);
RASTERLOOM_SAME(PixelFormat, Format32bppAGrayScale);
RASTERLOOM_SAME(PixelFormat, Format64bppCmyk);
RASTERLOOM_SAME(PixelFormat, Format40bppAcmyk);
RASTERLOOM_SAME(PixelFormat, Format80bppAcmyk);

RASTERLOOM_SAME(ColorSpace, Unknown);
RASTERLOOM_SAME(ColorSpace, Rgb);
RASTERLOOM_SAME(ColorSpace, GrayScale);
RASTERLOOM_SAME(ColorSpace, Cmyk);

RASTERLOOM_SAME(ColorChannel, Alpha);
RASTERLOOM_SAME(ColorChannel, Blue);
RASTERLOOM_SAME(ColorChannel, Green);
RASTERLOOM_SAME(ColorChannel, Red);
RASTERLOOM_SAME(ColorChannel, Black);
RASTERLOOM_SAME(ColorChannel, Yellow);
RASTERLOOM_SAME(ColorChannel, Magenta);
RASTERLOOM_SAME(ColorChannel, Cyan);
RASTERLOOM_SAME(ColorChannel, Gray);

#undef RASTERLOOM_SAME

} // namespace
