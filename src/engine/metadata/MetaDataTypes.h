#pragma once

#include <cstdint>

namespace ImagingFramework {

/// How the pixels of a frame are packed in its file.
enum class FrameCompressionType : std::uint32_t {
    Unknown = 0,
    None = 1,
    Rle = 2,
    Jpeg = 3,
    Zip = 4,
    CcittRle = 5,
    Ccitt3 = 6,
    Ccitt4 = 7,
    Lzw = 8,
    WaveletLossy = 9,
    WaveletLossless = 10,
};

/// What becomes of a frame before the next one of an animation is shown; the numbers are those of the GIF89a graphic
/// control extension.
enum class FrameDisposalMethod : std::uint32_t { None = 0, Leave = 1, Background = 2, Previous = 3 };

/// Progression orders of JPEG 2000, in the numbering of its coding style marker.
enum class Jpeg2kProgressionOrder : std::uint32_t { Lrcp = 0, Rlcp = 1, Rpcl = 2, Pcrl = 3, Cprl = 4 };

/// What an extra channel of a TIFF frame holds.
enum class TiffChannelType : std::uint32_t;

/// A dividend and a divider.
struct Rational {
    std::int32_t Dividend;
    std::int32_t Divider;
    bool operator==(const Rational&) const = default;
};

struct UnsignedRational {
    std::uint32_t Dividend;
    std::uint32_t Divider;
    bool operator==(const UnsignedRational&) const = default;
};

/// Names the item of an `ItemTag`.
enum class MetaDataId : std::uint32_t {
    FrameWidth = 1,
    FrameHeight = 2,
    FramePixelFormat = 3,
    MediaFormat = 4,
    CanReadFrames = 5,
    FrameLeft = 11,
    FrameTop = 12,
    FrameCount = 13,
    FrameDisposalMethod = 15,
    FrameCompression = 16,
    FrameDelay = 17,
    HorizontalResolution = 18,
    VerticalResolution = 19,
    ColorProfile = 20,
    FrameBitmap = 21,
    FrameThumbnail = 22,
    Interlaced = 23,
    JpegRestartOption = 27,
    GlobalPalette = 28,
    BackgroundEntryIndex = 29,
    ColorKeyIndex = 30,
    PlaybackCount = 31,
    LocalPaletteEnabled = 32,
    Optimized = 33,
    BasisOptimizationFrameCount = 34,
    TileWidth = 35,
    TileHeight = 36,
    TileOption = 37,
    ProgressionOrder = 38,
    Rate = 39,
    Jpeg2kOption40 = 40,
    Jpeg2kOption41 = 41,
    Jpeg2kOption42 = 42,
    Jpeg2kOption43 = 43,
    Progressive = 44,
    Quality = 45,
    ChromaSubsamplingEnabled = 46,
    SkipCrcCheck = 47,
    AlphaPremultiplied = 48,
    ExtraChannel = 49,
    ExtraChannels = 50,
    ExtraChannelCount = 51,
    ExtraChannelType = 52,
    FirstExtraChannelIsAlpha = 53,
    Background = 54,
    PsdLayerData = 55,
    Exif = 56,
    Iptc = 57,
    Xmp = 58,
    AdobeResources = 59,
    PdfPrintingEnabled = 86,
};

} // namespace ImagingFramework
