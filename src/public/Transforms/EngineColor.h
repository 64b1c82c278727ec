#pragma once

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "EnumTransforms.h"
#include "colorconversion/ColorSpaceManager.h"

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Host/Errors.h>

#include <array>
#include <cstdint>

namespace Corvane::Rasterloom::Transforms {

/// What backgrounds are at first: white, and transparent where there is alpha.
inline Color DefaultBackground() { return Color::FromArgb(0, 255, 255, 255); }

/// Fails with `Host::ArgumentNullException` ("backgroundColor") for "no colour".
inline const Color& RequireBackground(const Color& backgroundColor) {
    if (backgroundColor.IsNull()) {
        throw Host::ArgumentNullException("backgroundColor");
    }
    return backgroundColor;
}

/// The channels of a colour for an engine transform of `raster`: in its colour space, RGB for an indexed one. As
/// `Color::ConvertColorSpace`, but by a manager of its own: operations on different bitmaps do not wait for each other.
inline std::array<std::uint16_t, 5> EngineColor(const Color& color, const ImagingFramework::BitmapData& raster) {
    const ImagingFramework::ColorSpace space = ImagingFramework::PixelFormatColorSpace(raster.GetPixelFormat());
    const auto channels = TransformColor(color).Channels;
    const ImagingFramework::ColorSpace colorSpace = TransformColorSpace(color.get_ColorSpace());
    if (colorSpace == space) {
        return channels;
    }
    auto converted = channels;
    CallEngine([&] {
        ImagingFramework::ColorSpaceManager().TransformColor(channels, colorSpace, nullptr, converted, space);
    });
    return converted;
}

} // namespace Corvane::Rasterloom::Transforms
