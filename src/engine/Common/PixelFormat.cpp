#include "Common/PixelFormat.h"

namespace ImagingFramework {

namespace {

struct FormatRow {
    PixelFormat Format;
    std::uint32_t Channels;
};

constexpr FormatRow FormatTable[] = {
    {PixelFormat::Format1bppIndexed, 1},     {PixelFormat::Format4bppIndexed, 1},
    {PixelFormat::Format8bppIndexed, 1},     {PixelFormat::Format16bppGrayScale, 1},
    {PixelFormat::Format16bppRgb555, 3},     {PixelFormat::Format16bppRgb565, 3},
    {PixelFormat::Format16bppArgb1555, 4},   {PixelFormat::Format24bppRgb, 3},
    {PixelFormat::Format32bppRgb, 3},        {PixelFormat::Format32bppArgb, 4},
    {PixelFormat::Format32bppPArgb, 4},      {PixelFormat::Format48bppRgb, 3},
    {PixelFormat::Format64bppArgb, 4},       {PixelFormat::Format64bppPArgb, 4},
    {PixelFormat::Format32bppCmyk, 4},       {PixelFormat::Format8bppGrayScale, 1},
    {PixelFormat::Format16bppAGrayScale, 2}, {PixelFormat::Format32bppAGrayScale, 2},
    {PixelFormat::Format64bppCmyk, 4},       {PixelFormat::Format40bppAcmyk, 5},
    {PixelFormat::Format80bppAcmyk, 5},
};

/// The formats of one colour space by depth and alpha.
struct SpaceFormats {
    PixelFormat Plain;
    PixelFormat PlainAlpha;
    PixelFormat Extended;
    PixelFormat ExtendedAlpha;
};

const SpaceFormats& FormatsOfSpace(PixelFormat format) {
    static constexpr SpaceFormats rgb{PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb,
                                      PixelFormat::Format48bppRgb, PixelFormat::Format64bppArgb};
    static constexpr SpaceFormats cmyk{PixelFormat::Format32bppCmyk, PixelFormat::Format40bppAcmyk,
                                       PixelFormat::Format64bppCmyk, PixelFormat::Format80bppAcmyk};
    static constexpr SpaceFormats gray{PixelFormat::Format8bppGrayScale, PixelFormat::Format16bppAGrayScale,
                                       PixelFormat::Format16bppGrayScale, PixelFormat::Format32bppAGrayScale};
    switch (PixelFormatColorSpace(format)) {
    case ColorSpace::Rgb:
        return rgb;
    case ColorSpace::Cmyk:
        return cmyk;
    case ColorSpace::GrayScale:
        return gray;
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

std::uint32_t PixelFormatChannelCount(PixelFormat format) {
    for (const FormatRow& row : FormatTable) {
        if (row.Format == format) {
            return row.Channels;
        }
    }
    throw UnsupportedPixelFormatException();
}

std::uint32_t PixelFormatColorChannelCount(PixelFormat format) {
    return PixelFormatChannelCount(format) - (PixelFormatHasAlpha(format) ? 1U : 0U);
}

ColorSpace PixelFormatColorSpace(PixelFormat format) {
    if (format == PixelFormat::FormatUnknown) {
        return ColorSpace::Unknown;
    }
    for (const ColorSpace space : {ColorSpace::Rgb, ColorSpace::GrayScale, ColorSpace::Cmyk}) {
        if (PixelFormatIsInSpace(format, space)) {
            return space;
        }
    }
    throw UnsupportedPixelFormatException();
}

PixelFormat PixelFormatAddAlpha(PixelFormat format) {
    if (PixelFormatHasAlpha(format)) {
        return format;
    }
    const SpaceFormats& formats = FormatsOfSpace(format);
    return PixelFormatIsExtended(format) ? formats.ExtendedAlpha : formats.PlainAlpha;
}

PixelFormat PixelFormatDiscardAlpha(PixelFormat format) {
    if (!PixelFormatHasAlpha(format)) {
        return format;
    }
    const SpaceFormats& formats = FormatsOfSpace(format);
    return PixelFormatIsExtended(format) ? formats.Extended : formats.Plain;
}

std::uint32_t PixelFormatAlphaChannelIndex(PixelFormat format) {
    if (!PixelFormatHasAlpha(format)) {
        throw ArgumentException("format");
    }
    return PixelFormatChannelCount(format) - 1;
}

std::int32_t TranslateColorChannel(ColorChannel channel, ColorSpace space) {
    if (channel != ColorChannel::Alpha) {
        return static_cast<std::int32_t>(channel);
    }
    switch (space) {
    case ColorSpace::Rgb:
        return 3;
    case ColorSpace::Cmyk:
        return 4;
    case ColorSpace::GrayScale:
        return 1;
    default:
        return static_cast<std::int32_t>(channel);
    }
}

std::int32_t TranslateColorChannel(ColorChannel channel, PixelFormat format) {
    return TranslateColorChannel(channel, PixelFormatColorSpace(format));
}

std::uint32_t CalculateStride(std::uint32_t width, std::uint32_t bitsPerPixel, std::uint32_t alignment) {
    if (bitsPerPixel == 0) {
        return 0;
    }
    const std::uint64_t bits = std::uint64_t{width} * bitsPerPixel;
    if ((bits & ~std::uint64_t{7}) > 0x7FFFFFFF8U) {
        throw OverflowException();
    }
    // The check above lets products through that wrap here; the result is an interface of its own and stays so.
    return (((width * bitsPerPixel + 7U) >> 3) + alignment - 1U) & ~(alignment - 1U);
}

std::uint32_t CalculateStride(std::uint32_t width, PixelFormat format, std::uint32_t alignment) {
    return CalculateStride(width, PixelFormatSize(format), alignment);
}

std::uint32_t CheckedStride(std::uint32_t width, PixelFormat format, std::uint32_t alignment) {
    const std::uint32_t stride = CalculateStride(width, format, alignment);
    if (stride != CalculateStride64(width, PixelFormatSize(format), alignment)) {
        throw OverflowException();
    }
    return stride;
}

std::span<const PixelFormat> AllPixelFormats() {
    static constexpr auto formats = [] {
        struct {
            PixelFormat Values[std::size(FormatTable)];
        } result{};
        for (std::size_t i = 0; i < std::size(FormatTable); ++i) {
            result.Values[i] = FormatTable[i].Format;
        }
        return result;
    }();
    return formats.Values;
}

} // namespace ImagingFramework
