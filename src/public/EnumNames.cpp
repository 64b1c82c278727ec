#include <Corvane/Rasterloom/EnumNames.h>

#include <array>

namespace Corvane::Rasterloom {

namespace {

// clang-format off
// The enumerators of one enumeration in the order of their values, aliases last.
#define RASTERLOOM_NAME(Name) {E::Name, #Name},

constexpr auto PixelFormatNames = [] {
    using E = PixelFormat;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(FormatUnknown) RASTERLOOM_NAME(Format1bppIndexed) RASTERLOOM_NAME(Format4bppIndexed)
        RASTERLOOM_NAME(Format8bppIndexed) RASTERLOOM_NAME(Format16bppGrayScale) RASTERLOOM_NAME(Format16bppRgb555)
        RASTERLOOM_NAME(Format16bppRgb565) RASTERLOOM_NAME(Format16bppArgb1555) RASTERLOOM_NAME(Format24bppRgb)
        RASTERLOOM_NAME(Format32bppRgb) RASTERLOOM_NAME(Format32bppArgb) RASTERLOOM_NAME(Format48bppRgb)
        RASTERLOOM_NAME(Format64bppArgb) RASTERLOOM_NAME(Format32bppCmyk) RASTERLOOM_NAME(Format8bppGrayScale)
        RASTERLOOM_NAME(Format16bppAGrayScale) RASTERLOOM_NAME(Format32bppAGrayScale) RASTERLOOM_NAME(Format64bppCmyk)
        RASTERLOOM_NAME(Format40bppAcmyk) RASTERLOOM_NAME(Format80bppAcmyk)
    });
}();

constexpr auto ColorSpaceNames = [] {
    using E = ColorSpace;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Unknown) RASTERLOOM_NAME(Rgb) RASTERLOOM_NAME(GrayScale) RASTERLOOM_NAME(Cmyk)
    });
}();

constexpr auto ColorChannelNames = [] {
    using E = ColorChannel;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Alpha) RASTERLOOM_NAME(Blue) RASTERLOOM_NAME(Green) RASTERLOOM_NAME(Red) RASTERLOOM_NAME(Black)
        RASTERLOOM_NAME(Yellow) RASTERLOOM_NAME(Magenta) RASTERLOOM_NAME(Cyan) RASTERLOOM_NAME(Gray)
    });
}();

constexpr auto UnitNames = [] {
    using E = Unit;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Pixel) RASTERLOOM_NAME(Inch) RASTERLOOM_NAME(Mm) RASTERLOOM_NAME(Cm) RASTERLOOM_NAME(M)
        RASTERLOOM_NAME(Point) RASTERLOOM_NAME(Pica) RASTERLOOM_NAME(Column) RASTERLOOM_NAME(Twip)
        RASTERLOOM_NAME(Document)
    });
}();

constexpr auto ColorPaletteTypeNames = [] {
    using E = ColorPaletteType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Adaptive) RASTERLOOM_NAME(Custom) RASTERLOOM_NAME(WebSafe) RASTERLOOM_NAME(Windows)
        RASTERLOOM_NAME(Mac) RASTERLOOM_NAME(GrayScale) RASTERLOOM_NAME(Bicolor)
    });
}();

constexpr auto ColorQuantizationAlgorithmNames = [] {
    using E = ColorQuantizationAlgorithm;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Octree) RASTERLOOM_NAME(MedianCut)
    });
}();

constexpr auto DitheringTypeNames = [] {
    using E = DitheringType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(None) RASTERLOOM_NAME(Original) RASTERLOOM_NAME(FloydSteinberg) RASTERLOOM_NAME(Fan)
        RASTERLOOM_NAME(Jarvis) RASTERLOOM_NAME(Stucki) RASTERLOOM_NAME(Sierra) RASTERLOOM_NAME(Burkes)
        RASTERLOOM_NAME(Stephenson) RASTERLOOM_NAME(OrderedBayer2) RASTERLOOM_NAME(OrderedBayer3)
        RASTERLOOM_NAME(OrderedBayer4) RASTERLOOM_NAME(OrderedSpiral2) RASTERLOOM_NAME(OrderedSpiral3)
        RASTERLOOM_NAME(OrderedSpiral4) RASTERLOOM_NAME(Noise)
    });
}();

constexpr auto ColorManagementEngineNames = [] {
    using E = ColorManagementEngine;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(None) RASTERLOOM_NAME(LittleCms) RASTERLOOM_NAME(AdobeCmm)
    });
}();

constexpr auto ColorTransformationIntentNames = [] {
    using E = ColorTransformationIntent;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Saturation) RASTERLOOM_NAME(RelativeColorimetric) RASTERLOOM_NAME(Perceptual)
        RASTERLOOM_NAME(AbsoluteColorimetric) RASTERLOOM_NAME(RelativeColorimetricBpc)
    });
}();

constexpr auto ColorProfileClassNames = [] {
    using E = ColorProfileClass;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Unknown) RASTERLOOM_NAME(Input) RASTERLOOM_NAME(Display) RASTERLOOM_NAME(Output)
        RASTERLOOM_NAME(Link) RASTERLOOM_NAME(ColorSpace) RASTERLOOM_NAME(Abstract) RASTERLOOM_NAME(NamedColor)
    });
}();

constexpr auto BitmapChangeNames = [] {
    using E = BitmapChange;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Custom) RASTERLOOM_NAME(Load) RASTERLOOM_NAME(LoadThumbnail) RASTERLOOM_NAME(Draw)
        RASTERLOOM_NAME(CreateNew) RASTERLOOM_NAME(Unload) RASTERLOOM_NAME(AddNoise) RASTERLOOM_NAME(AdjustHsl)
        RASTERLOOM_NAME(Blur) RASTERLOOM_NAME(Brightness) RASTERLOOM_NAME(BrightnessContrast) RASTERLOOM_NAME(Buttonize)
        RASTERLOOM_NAME(ChannelBalance) RASTERLOOM_NAME(ColorSpace) RASTERLOOM_NAME(Combine) RASTERLOOM_NAME(Contrast)
        RASTERLOOM_NAME(Crop) RASTERLOOM_NAME(Curves) RASTERLOOM_NAME(Cylindrize) RASTERLOOM_NAME(EdgeDetect)
        RASTERLOOM_NAME(Emboss) RASTERLOOM_NAME(RotateAndFlip) RASTERLOOM_NAME(FloodFill) RASTERLOOM_NAME(Glow)
        RASTERLOOM_NAME(MaximumFilter) RASTERLOOM_NAME(MedianFilter) RASTERLOOM_NAME(MinimumFilter)
        RASTERLOOM_NAME(Mosaic) RASTERLOOM_NAME(PageCurl) RASTERLOOM_NAME(Resize) RASTERLOOM_NAME(Rotate)
        RASTERLOOM_NAME(Shadow) RASTERLOOM_NAME(Sharpen) RASTERLOOM_NAME(Solarize) RASTERLOOM_NAME(Spray)
        RASTERLOOM_NAME(SwapChannels) RASTERLOOM_NAME(Swirl) RASTERLOOM_NAME(Texturize) RASTERLOOM_NAME(Transparentize)
        RASTERLOOM_NAME(UnsharpMask) RASTERLOOM_NAME(Waddle) RASTERLOOM_NAME(WaterDrop) RASTERLOOM_NAME(Wave)
        RASTERLOOM_NAME(ReplaceChannel) RASTERLOOM_NAME(ImportData) RASTERLOOM_NAME(HistogramEqualize)
        RASTERLOOM_NAME(ApplyLut) RASTERLOOM_NAME(Undo) RASTERLOOM_NAME(Redo) RASTERLOOM_NAME(Invert)
        RASTERLOOM_NAME(Levels) RASTERLOOM_NAME(ApplyMatrixTransform) RASTERLOOM_NAME(Deserialize)
        RASTERLOOM_NAME(AddAlphaChannel)
    });
}();

constexpr auto SynchronizationModeNames = [] {
    using E = SynchronizationMode;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Sync) RASTERLOOM_NAME(Async) RASTERLOOM_NAME(AsyncViaMessageLoop)
    });
}();

constexpr auto ActivityStatusNames = [] {
    using E = ActivityStatus;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(ThreadStopped) RASTERLOOM_NAME(ThreadStarted) RASTERLOOM_NAME(ThreadPaused)
        RASTERLOOM_NAME(ThreadContinued) RASTERLOOM_NAME(ThreadRequestedToStart)
    });
}();

constexpr auto ThreadPriorityNames = [] {
    using E = ThreadPriority;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Lowest) RASTERLOOM_NAME(BelowNormal) RASTERLOOM_NAME(Normal) RASTERLOOM_NAME(AboveNormal)
        RASTERLOOM_NAME(Highest)
    });
}();

constexpr auto InterpolationModeNames = [] {
    using E = Transforms::InterpolationMode;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(LowQuality) RASTERLOOM_NAME(MediumQuality) RASTERLOOM_NAME(HighQuality)
        RASTERLOOM_NAME(NearestNeighbour) RASTERLOOM_NAME(Bilinear) RASTERLOOM_NAME(Trilinear)
        RASTERLOOM_NAME(Anisotropic4) RASTERLOOM_NAME(Anisotropic9) RASTERLOOM_NAME(HermiteFilter)
        RASTERLOOM_NAME(BoxFilter) RASTERLOOM_NAME(TriangleFilter) RASTERLOOM_NAME(BellFilter)
        RASTERLOOM_NAME(SplineFilter) RASTERLOOM_NAME(Lanczos3Filter) RASTERLOOM_NAME(MitchellFilter)
        RASTERLOOM_NAME(ScaleToGray) RASTERLOOM_NAME(HighSpeed) RASTERLOOM_NAME(MediumSpeed) RASTERLOOM_NAME(LowSpeed)
        RASTERLOOM_NAME(ScaleToColor)
    });
}();

constexpr auto ResizeModeNames = [] {
    using E = Transforms::ResizeMode;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Resize) RASTERLOOM_NAME(Shrink) RASTERLOOM_NAME(Fit)
    });
}();

constexpr auto RotateFlipTypeNames = [] {
    using E = Host::RotateFlipType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(RotateNoneFlipNone) RASTERLOOM_NAME(Rotate90FlipNone) RASTERLOOM_NAME(Rotate180FlipNone)
        RASTERLOOM_NAME(Rotate270FlipNone) RASTERLOOM_NAME(RotateNoneFlipX) RASTERLOOM_NAME(Rotate90FlipX)
        RASTERLOOM_NAME(Rotate180FlipX) RASTERLOOM_NAME(Rotate270FlipX) RASTERLOOM_NAME(RotateNoneFlipY)
        RASTERLOOM_NAME(Rotate90FlipY) RASTERLOOM_NAME(Rotate180FlipY) RASTERLOOM_NAME(Rotate270FlipY)
        RASTERLOOM_NAME(RotateNoneFlipXY) RASTERLOOM_NAME(Rotate90FlipXY) RASTERLOOM_NAME(Rotate180FlipXY)
        RASTERLOOM_NAME(Rotate270FlipXY)
    });
}();

constexpr auto ActionTypeNames = [] {
    using E = Codecs::ActionType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(None) RASTERLOOM_NAME(BitmapLoading) RASTERLOOM_NAME(ThumbnailLoading)
    });
}();

constexpr auto CompressionTypeNames = [] {
    using E = Codecs::CompressionType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Unknown) RASTERLOOM_NAME(None) RASTERLOOM_NAME(Rle) RASTERLOOM_NAME(Jpeg) RASTERLOOM_NAME(Zip)
        RASTERLOOM_NAME(CcittRle) RASTERLOOM_NAME(Ccitt3) RASTERLOOM_NAME(Ccitt4) RASTERLOOM_NAME(Lzw)
        RASTERLOOM_NAME(WaveletLossy) RASTERLOOM_NAME(WaveletLossless)
    });
}();

constexpr auto DisposalMethodNames = [] {
    using E = Codecs::DisposalMethod;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(None) RASTERLOOM_NAME(Leave) RASTERLOOM_NAME(Background) RASTERLOOM_NAME(Previous)
    });
}();

constexpr auto PngFilterNames = [] {
    using E = Codecs::PngFilter;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Default) RASTERLOOM_NAME(None) RASTERLOOM_NAME(Sub) RASTERLOOM_NAME(Up)
        RASTERLOOM_NAME(Average) RASTERLOOM_NAME(Paeth) RASTERLOOM_NAME(Adaptive)
    });
}();

constexpr auto LoadingModeNames = [] {
    using E = Codecs::LoadingMode;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(Bitmap) RASTERLOOM_NAME(Thumbnail)
    });
}();

constexpr auto XmpNodeTypeNames = [] {
    using E = Codecs::XmpNodeType;
    return std::to_array<EnumName<E>>({
        RASTERLOOM_NAME(SimpleProperty) RASTERLOOM_NAME(UnorderedArray) RASTERLOOM_NAME(OrderedArray)
        RASTERLOOM_NAME(AlternativeArray) RASTERLOOM_NAME(LocalizedText) RASTERLOOM_NAME(Structure)
        RASTERLOOM_NAME(Qualifier) RASTERLOOM_NAME(LocalizedTextItem)
    });
}();

#undef RASTERLOOM_NAME
// clang-format on

} // namespace

template <>
std::span<const EnumName<PixelFormat>> EnumNames<PixelFormat>() {
    return PixelFormatNames;
}
template <>
std::span<const EnumName<ColorSpace>> EnumNames<ColorSpace>() {
    return ColorSpaceNames;
}
template <>
std::span<const EnumName<ColorChannel>> EnumNames<ColorChannel>() {
    return ColorChannelNames;
}
template <>
std::span<const EnumName<Unit>> EnumNames<Unit>() {
    return UnitNames;
}
template <>
std::span<const EnumName<ColorPaletteType>> EnumNames<ColorPaletteType>() {
    return ColorPaletteTypeNames;
}
template <>
std::span<const EnumName<ColorQuantizationAlgorithm>> EnumNames<ColorQuantizationAlgorithm>() {
    return ColorQuantizationAlgorithmNames;
}
template <>
std::span<const EnumName<DitheringType>> EnumNames<DitheringType>() {
    return DitheringTypeNames;
}
template <>
std::span<const EnumName<ColorManagementEngine>> EnumNames<ColorManagementEngine>() {
    return ColorManagementEngineNames;
}
template <>
std::span<const EnumName<ColorTransformationIntent>> EnumNames<ColorTransformationIntent>() {
    return ColorTransformationIntentNames;
}
template <>
std::span<const EnumName<ColorProfileClass>> EnumNames<ColorProfileClass>() {
    return ColorProfileClassNames;
}
template <>
std::span<const EnumName<BitmapChange>> EnumNames<BitmapChange>() {
    return BitmapChangeNames;
}
template <>
std::span<const EnumName<SynchronizationMode>> EnumNames<SynchronizationMode>() {
    return SynchronizationModeNames;
}
template <>
std::span<const EnumName<ActivityStatus>> EnumNames<ActivityStatus>() {
    return ActivityStatusNames;
}
template <>
std::span<const EnumName<ThreadPriority>> EnumNames<ThreadPriority>() {
    return ThreadPriorityNames;
}
template <>
std::span<const EnumName<Transforms::InterpolationMode>> EnumNames<Transforms::InterpolationMode>() {
    return InterpolationModeNames;
}
template <>
std::span<const EnumName<Transforms::ResizeMode>> EnumNames<Transforms::ResizeMode>() {
    return ResizeModeNames;
}
template <>
std::span<const EnumName<Host::RotateFlipType>> EnumNames<Host::RotateFlipType>() {
    return RotateFlipTypeNames;
}
template <>
std::span<const EnumName<Codecs::ActionType>> EnumNames<Codecs::ActionType>() {
    return ActionTypeNames;
}
template <>
std::span<const EnumName<Codecs::CompressionType>> EnumNames<Codecs::CompressionType>() {
    return CompressionTypeNames;
}
template <>
std::span<const EnumName<Codecs::DisposalMethod>> EnumNames<Codecs::DisposalMethod>() {
    return DisposalMethodNames;
}
template <>
std::span<const EnumName<Codecs::LoadingMode>> EnumNames<Codecs::LoadingMode>() {
    return LoadingModeNames;
}
template <>
std::span<const EnumName<Codecs::PngFilter>> EnumNames<Codecs::PngFilter>() {
    return PngFilterNames;
}
template <>
std::span<const EnumName<Codecs::XmpNodeType>> EnumNames<Codecs::XmpNodeType>() {
    return XmpNodeTypeNames;
}

} // namespace Corvane::Rasterloom
