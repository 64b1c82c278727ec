#pragma once

#include "Common/BitmapData.h"
#include "EnumTransforms.h"

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

/// The channels of a colour for an engine transform of `raster`: in its colour space, RGB for an indexed one.
inline std::array<std::uint16_t, 5> EngineColor(const Color& color, const ImagingFramework::BitmapData& raster) {
    const ImagingFramework::ColorSpace space = ImagingFramework::PixelFormatColorSpace(raster.GetPixelFormat());
    return TransformColor(color.ConvertColorSpace(TransformColorSpace(space))).Channels;
}

} // namespace Corvane::Rasterloom::Transforms
