#pragma once

#include "Common/BitmapData.h"
#include "Common/InterpolationMode.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace ImagingFramework::Testing {

/// Resizes by the formulas alone: one pixel after the other, full intermediates, no tables shared between pixels. Takes
/// whole-channel formats with the modes that filter, and palette formats with `ScaleToGray`.
BitmapData ReferenceResize(const BitmapData& source, std::uint32_t width, std::uint32_t height, InterpolationMode mode);

/// A raster of seeded noise. Alpha is drawn so that 0, the maximum and values between are all frequent; indexed formats
/// get a palette of `paletteFormat`.
BitmapData NoiseRaster(std::uint32_t width, std::uint32_t height, PixelFormat format, std::uint32_t seed,
                       PixelFormat paletteFormat = PixelFormat::Format24bppRgb);

/// Equal format, size and pixel bytes; bits behind the last pixel of a row are not compared.
::testing::AssertionResult SamePixels(const BitmapData& left, const BitmapData& right);

} // namespace ImagingFramework::Testing
