// Enumerations that both layers have cross the seam by a cast, so their values must be equal.

#include "Common/InterpolationMode.h"
#include "Common/PixelFormat.h"
#include "Common/SpaceUnitConverter.h"
#include "colorconversion/ConversionTypes.h"
#include "colorconversion/Dithering.h"
#include "metadata/FileFormat.h"
#include "metadata/MetaDataTypes.h"
#include "metadata/Png/PngFilter.h"
#include "metadata/Xmp/XMPNodeType.h"
#include "transforms/FlipAndRotateTransform.h"

#include <Corvane/Rasterloom/Codecs/CompressionType.h>
#include <Corvane/Rasterloom/Codecs/DisposalMethod.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PngFilter.h>
#include <Corvane/Rasterloom/Codecs/XmpNodeType.h>
#include <Corvane/Rasterloom/ColorManagementEngine.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/ColorTransformationIntent.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>
#include <Corvane/Rasterloom/Unit.h>

#include <cstdint>
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

RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Default);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, None);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Sub);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Up);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Average);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Paeth);
RASTERLOOM_SAME_CODE(PngFilter, PngFilter, Adaptive);

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

#define RASTERLOOM_SAME_VALUE(PublicEnum, EngineEnum, Name)                                                            \
    static_assert(static_cast<std::int64_t>(Public::PublicEnum::Name) ==                                               \
                  static_cast<std::int64_t>(ImagingFramework::EngineEnum::Name))

RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, None);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Original);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, FloydSteinberg);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Fan);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Jarvis);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Stucki);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Sierra);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Burkes);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Stephenson);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedBayer2);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedBayer3);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedBayer4);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedSpiral2);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedSpiral3);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, OrderedSpiral4);
RASTERLOOM_SAME_VALUE(DitheringType, DitheringType, Noise);

RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, Adaptive);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, Custom);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, WebSafe);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, Windows);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, Mac);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, GrayScale);
RASTERLOOM_SAME_VALUE(ColorPaletteType, ColorMapType, Bicolor);

RASTERLOOM_SAME_VALUE(ColorManagementEngine, ColorManagementEngine, None);
RASTERLOOM_SAME_VALUE(ColorManagementEngine, ColorManagementEngine, LittleCms);
RASTERLOOM_SAME_VALUE(ColorManagementEngine, ColorManagementEngine, AdobeCmm);

RASTERLOOM_SAME_VALUE(ColorTransformationIntent, ColorTransformIntent, Saturation);
RASTERLOOM_SAME_VALUE(ColorTransformationIntent, ColorTransformIntent, RelativeColorimetric);
RASTERLOOM_SAME_VALUE(ColorTransformationIntent, ColorTransformIntent, Perceptual);
RASTERLOOM_SAME_VALUE(ColorTransformationIntent, ColorTransformIntent, AbsoluteColorimetric);
RASTERLOOM_SAME_VALUE(ColorTransformationIntent, ColorTransformIntent, RelativeColorimetricBpc);

RASTERLOOM_SAME_VALUE(ColorQuantizationAlgorithm, ColorQuantizationAlgorithm, Octree);
RASTERLOOM_SAME_VALUE(ColorQuantizationAlgorithm, ColorQuantizationAlgorithm, MedianCut);

RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, LowQuality);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, MediumQuality);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, HighQuality);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, NearestNeighbour);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, Bilinear);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, Trilinear);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, Anisotropic4);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, Anisotropic9);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, HermiteFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, BoxFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, TriangleFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, BellFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, SplineFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, Lanczos3Filter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, MitchellFilter);
RASTERLOOM_SAME_VALUE(Transforms::InterpolationMode, InterpolationMode, ScaleToGray);

RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, RotateNoneFlipNone);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate90FlipNone);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate180FlipNone);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate270FlipNone);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, RotateNoneFlipX);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate90FlipX);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate180FlipX);
RASTERLOOM_SAME_VALUE(Host::RotateFlipType, RotateFlipType, Rotate270FlipX);

RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Pixel);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Inch);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Mm);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Cm);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, M);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Point);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Pica);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Column);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Twip);
RASTERLOOM_SAME_VALUE(Unit, LinearUnit, Document);

RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, SimpleProperty);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, UnorderedArray);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, OrderedArray);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, AlternativeArray);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, LocalizedText);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, Structure);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, Qualifier);
RASTERLOOM_SAME_VALUE(Codecs::XmpNodeType, XMPNodeType, LocalizedTextItem);

#undef RASTERLOOM_SAME_VALUE

} // namespace
