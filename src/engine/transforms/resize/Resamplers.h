#pragma once

#include "Common/BitmapData.h"
#include "Common/InterpolationMode.h"
#include "transforms/resize/RowTeam.h"

#include <cstdint>

namespace ImagingFramework {

/// One resize run: the source, the zeroed destination, which holds the part of the new size that begins at (`CropLeft`,
/// `CropTop`), the mode, and the team that runs the loops.
struct ResizeJob {
    const BitmapData& Source;
    BitmapData& Destination;
    std::uint32_t NewWidth;
    std::uint32_t NewHeight;
    std::uint32_t CropLeft;
    std::uint32_t CropTop;
    InterpolationMode Mode;
    RowTeam& Team;
};

/// Point sampling, any format; whole pixels are copied.
void ResampleNearest(const ResizeJob& job);

/// Fixed-point bilinear, whole-channel formats.
void ResampleBilinear(const ResizeJob& job);

/// Bilinear between two levels of a pyramid of halved rasters; plain bilinear when neither axis shrinks.
void ResampleTrilinear(const ResizeJob& job);

/// The mean of 2 by 2 or 3 by 3 point samples.
void ResampleAnisotropic(const ResizeJob& job);
/// Fails with `OverflowException` for a height that the row index of `Anisotropic9` cannot hold.
void CheckAnisotropicHeight(std::uint32_t height);

/// The three-lobe sinc filter in doubles, rows first, rounded to samples after each pass.
void ResampleLanczos(const ResizeJob& job);

/// The six contributor filters with 16.16 weights.
void ResampleWithContributors(const ResizeJob& job);

/// Palette rasters into colours of the palette: means when an axis shrinks, bilinear blends otherwise. An index beyond the
/// palette counts as entry 0.
void DoIndexedScaleToGray(const ResizeJob& job);

} // namespace ImagingFramework
