#include "metadata/Thumbnails/IThumbnailCreator.h"

namespace ImagingFramework {

void IThumbnailCreator::CreateThumbnailer(InterpolationMode, std::uint32_t, std::uint32_t, PixelFormat, const ColorMap*,
                                          BitmapData*, std::unique_ptr<IThumbnailCreator>*) {
    throw ArgumentException("thumbnail interpolation mode");
}

} // namespace ImagingFramework
