// Enumerations that both layers have cross the seam by a cast, so their values must be equal.

#include "Common/PixelFormat.h"
#include "metadata/FileFormat.h"
#include "metadata/MetaDataTypes.h"

#include <Corvane/Rasterloom/Codecs/CompressionType.h>
#include <Corvane/Rasterloom/Codecs/DisposalMethod.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
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

#define RASTERLOOM_SAME_CODE(Enum, EngineEnum, Name)                                                                   \
    static_assert(static_cast<std::underlying_type_t<Public::Codecs::Enum>>(Public::Codecs::Enum::Name) ==             \
                  static_cast<std::underlying_type_t<ImagingFramework::EngineEnum>>(                                   \
                      ImagingFramework::EngineEnum::Name))

RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Unknown);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, None);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Rle);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Jpeg);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Zip);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, CcittRle);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Ccitt3);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Ccitt4);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, Lzw);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, WaveletLossy);
RASTERLOOM_SAME_CODE(CompressionType, FrameCompressionType, WaveletLossless);

RASTERLOOM_SAME_CODE(DisposalMethod, FrameDisposalMethod, None);
RASTERLOOM_SAME_CODE(DisposalMethod, FrameDisposalMethod, Leave);
RASTERLOOM_SAME_CODE(DisposalMethod, FrameDisposalMethod, Background);
RASTERLOOM_SAME_CODE(DisposalMethod, FrameDisposalMethod, Previous);

#define RASTERLOOM_SAME_MEDIA(Name)                                                                                    \
    static_assert(Public::Codecs::FormatManager::Name##Format ==                                                       \
                  static_cast<std::int64_t>(ImagingFramework::FileFormat::Name))

RASTERLOOM_SAME_MEDIA(UnknownBeforeOpen);
RASTERLOOM_SAME_MEDIA(Unknown);
RASTERLOOM_SAME_MEDIA(Jpeg);
RASTERLOOM_SAME_MEDIA(Bmp);
RASTERLOOM_SAME_MEDIA(Png);
RASTERLOOM_SAME_MEDIA(Tiff);
RASTERLOOM_SAME_MEDIA(Pcx);
RASTERLOOM_SAME_MEDIA(Wbmp);
RASTERLOOM_SAME_MEDIA(Gif);
RASTERLOOM_SAME_MEDIA(Psd);
RASTERLOOM_SAME_MEDIA(Pdf);
RASTERLOOM_SAME_MEDIA(Swf);
RASTERLOOM_SAME_MEDIA(Jpeg2k);
RASTERLOOM_SAME_MEDIA(Avi);
RASTERLOOM_SAME_MEDIA(QuickTime);
RASTERLOOM_SAME_MEDIA(Asf);
RASTERLOOM_SAME_MEDIA(Mp3);
RASTERLOOM_SAME_MEDIA(Mpeg);

#undef RASTERLOOM_SAME
#undef RASTERLOOM_SAME_CODE
#undef RASTERLOOM_SAME_MEDIA

} // namespace
