#pragma once

#include "Common/PixelFormat.h"

namespace ImagingFramework {

// The sets of formats that transforms accept. A whole-channel format has a byte or a 16-bit word of its own for each channel.

constexpr bool IsAnyFormat(PixelFormat) { return true; }

constexpr bool IsWholeFormat(PixelFormat format) { return PixelFormatIsWholeChannel(format); }

constexpr bool IsWholeNoCmykFormat(PixelFormat format) { return IsWholeFormat(format) && !PixelFormatIsCmyk(format); }

constexpr bool IsWholeRgbFormat(PixelFormat format) { return IsWholeFormat(format) && PixelFormatIsRgb(format); }

constexpr bool IsWholeOrBilevelFormat(PixelFormat format) {
    return IsWholeFormat(format) || format == PixelFormat::Format1bppIndexed;
}

constexpr bool IsWholeOrIndexedFormat(PixelFormat format) {
    return IsWholeFormat(format) || PixelFormatIsIndexed(format);
}

constexpr bool IsByteAlignedFormat(PixelFormat format) {
    return PixelFormatSize(format) != 0 && PixelFormatSize(format) % 8 == 0;
}

/// The five RGB formats that a host sees and whose channels are whole.
constexpr bool IsPlainRgbFormat(PixelFormat format) {
    return format == PixelFormat::Format24bppRgb || format == PixelFormat::Format32bppRgb ||
           format == PixelFormat::Format32bppArgb || format == PixelFormat::Format48bppRgb ||
           format == PixelFormat::Format64bppArgb;
}

constexpr bool IsNoAlphaFormat(PixelFormat format) {
    return format == PixelFormat::Format24bppRgb || format == PixelFormat::Format32bppRgb ||
           format == PixelFormat::Format48bppRgb || format == PixelFormat::Format8bppGrayScale ||
           format == PixelFormat::Format16bppGrayScale || format == PixelFormat::Format32bppCmyk ||
           format == PixelFormat::Format64bppCmyk;
}

} // namespace ImagingFramework
