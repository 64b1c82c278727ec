#pragma once

#include "Common/BitmapData.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ImagingFramework::Testing {

using Int = std::int64_t;
/// The samples of a pixel, alpha last where there is some; those behind them are 0.
using Pixel = std::array<Int, 5>;

/// Samples of a whole raster as integers, for formulas that are written as they are printed.
struct SamplePlane {
    Int Width = 0;
    Int Height = 0;
    std::size_t Samples = 0;
    bool Alpha = false; ///< and colours are weighted by it
    bool Wide = false;
    std::vector<Pixel> Pixels;

    Pixel& At(Int x, Int y) { return Pixels[static_cast<std::size_t>(y * Width + x)]; }
    const Pixel& At(Int x, Int y) const { return Pixels[static_cast<std::size_t>(y * Width + x)]; }
    std::size_t Colors() const { return Samples - (Alpha ? 1 : 0); }
    Int Maximum() const { return Wide ? 65535 : 255; }
    /// Another size, zeroed.
    SamplePlane Sized(Int width, Int height) const;
    SamplePlane Transposed() const;
    /// The blend by a 16.16 weight of `b`, cut off; invisible pixels have no colour.
    Pixel Blend(const Pixel& a, const Pixel& b, Int weight) const;
};

/// Whole-channel formats.
SamplePlane ReadPlane(const BitmapData& raster);
BitmapData WritePlane(const SamplePlane& plane, PixelFormat format);

} // namespace ImagingFramework::Testing
