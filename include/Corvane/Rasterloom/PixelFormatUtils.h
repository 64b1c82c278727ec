#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>

namespace Corvane::Rasterloom {

/// What a pixel format tells. All members fail with `Host::ArgumentException` ("format") for a value that is no format.
class RASTERLOOM_API PixelFormatUtils {
public:
    PixelFormatUtils() = delete;

    /// Alpha and unused bits included.
    static std::int32_t BitsPerPixel(PixelFormat format);
    /// Whether there is an alpha channel.
    static bool HasAlpha(PixelFormat format);
    /// Indexed formats are RGB.
    static bool IsRgb(PixelFormat format);
    /// Whether channels are black, yellow, magenta and cyan.
    static bool IsCmyk(PixelFormat format);
    /// Whether there is one channel of gray.
    static bool IsGrayScale(PixelFormat format);
    /// Whether pixels are indices into a palette.
    static bool IsIndexed(PixelFormat format);
    /// True for 16 bits per channel.
    static bool IsExtended(PixelFormat format);
    /// RGB for indexed formats.
    static Rasterloom::ColorSpace ColorSpace(PixelFormat format);
    /// Channels with alpha. Fails with `UnsupportedPixelFormatException` for `FormatUnknown`, as the next one does.
    static std::int32_t ChannelCount(PixelFormat format);
    /// The colour channels alone.
    static std::int32_t ChannelCountWithoutAlpha(PixelFormat format);
    /// Fails with `Host::ArgumentException` ("format") for a format without alpha.
    static std::int32_t AlphaChannelIndex(PixelFormat format);
};

/// The number of a format in the platform's own numbering. Twelve formats have one (1, 4, 8 bits indexed, 16-bit gray,
/// the packed ones, 24, 32, 48 and 64-bit RGB); the others fail with `UnsupportedPixelFormatException`.
RASTERLOOM_API std::uint32_t TransformPixelFormatGdi(PixelFormat format);
/// The format of a number of the platform; fails as above for any other number.
RASTERLOOM_API PixelFormat TransformPixelFormatGdi(std::uint32_t gdiPixelFormat);

} // namespace Corvane::Rasterloom
