#pragma once

#include "Common/BitmapData.h"

#include <Corvane/Rasterloom/Host/Geometry.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Corvane::Rasterloom::Transforms {

/// The inclusive corners of a rectangle. A far corner beyond 32 bits is cut, and lies outside of every raster still.
inline ImagingFramework::RegionRect EngineRegion(const Host::Rectangle& rectangle) {
    const auto far = [](std::int64_t near, std::int32_t size) {
        using Limits = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(near + size - 1, Limits::min(), Limits::max()));
    };
    return {rectangle.Left, rectangle.Top, far(rectangle.Left, rectangle.Width), far(rectangle.Top, rectangle.Height)};
}

} // namespace Corvane::Rasterloom::Transforms
