#pragma once

#include "Common/Color.h"
#include "Common/PixelFormat.h"

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstddef>
#include <span>
#include <vector>

namespace Corvane::Rasterloom {

// Crossing the seam: the values are equal, so these are casts.

constexpr ImagingFramework::PixelFormat TransformPixelFormat(PixelFormat format) {
    return static_cast<ImagingFramework::PixelFormat>(format);
}
constexpr PixelFormat TransformPixelFormat(ImagingFramework::PixelFormat format) {
    return static_cast<PixelFormat>(format);
}
constexpr ImagingFramework::ColorSpace TransformColorSpace(ColorSpace space) {
    return static_cast<ImagingFramework::ColorSpace>(space);
}
constexpr ColorSpace TransformColorSpace(ImagingFramework::ColorSpace space) {
    return static_cast<ColorSpace>(space);
}

/// A list of formats of the engine, in the same order.
inline std::vector<PixelFormat> TransformPixelFormats(std::span<const ImagingFramework::PixelFormat> formats) {
    std::vector<PixelFormat> result;
    result.reserve(formats.size());
    for (const auto format : formats) {
        result.push_back(TransformPixelFormat(format));
    }
    return result;
}

/// The channels of a colour as the engine keeps them. Fails with `Host::ArgumentNullException` for "no colour".
inline ImagingFramework::Color TransformColor(const Color& color) {
    ImagingFramework::Color result;
    const std::vector<std::int32_t> channels = color.ToArray32();
    for (std::size_t i = 0; i < channels.size(); ++i) {
        result.Channels[i] = static_cast<std::uint16_t>(channels[i]);
    }
    return result;
}

} // namespace Corvane::Rasterloom
