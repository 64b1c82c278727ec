#pragma once

#include "Common/BitmapData.h"

#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// A reduced copy of a raster that is there as a whole: fits into the box (0 is a free side, never both), keeps the
/// proportions, never enlarges, and is never indexed. Null stands for the mode that resizing takes by itself. Raises
/// public failures.
std::unique_ptr<ImagingFramework::BitmapData> MakeThumbnail(const ImagingFramework::BitmapData& source,
                                                            std::int32_t width, std::int32_t height,
                                                            const Transforms::InterpolationMode* pInterpolationMode);

} // namespace Corvane::Rasterloom::Codecs
