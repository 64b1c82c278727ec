#pragma once

#include "Common/BitmapData.h"

#include <memory>

namespace Corvane::Rasterloom::Transforms {

/// Mixes the result of a transform into what it was made from.
class MaskBlender {
public:
    /// Copies every row of `result` over the source's. Another format or size fails with `Host::ArgumentException`.
    static void ReplaceRows(const ImagingFramework::BitmapData& result, ImagingFramework::BitmapData& target);
    /// target = ((255 - mask) * target + mask * result) / 255 for every sample, alpha included. All that can fail is
    /// checked before the first row is touched.
    static void Blend(const ImagingFramework::BitmapData& result, const ImagingFramework::BitmapData& mask,
                      ImagingFramework::BitmapData& target);
};

} // namespace Corvane::Rasterloom::Transforms
