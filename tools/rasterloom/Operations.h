#pragma once

#include "Values.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

#include <functional>
#include <optional>
#include <string>

namespace Tool {

/// Choices that hold for all operations of a run, wherever they stand on the command line.
struct Settings {
    std::optional<Corvane::Rasterloom::Transforms::InterpolationMode> Interpolation;
    /// What shows where a picture does not reach, as 0xAARRGGBB.
    std::uint32_t Background = 0xFFFFFFFFU;
    // How palettes are made when a picture becomes indexed.
    Corvane::Rasterloom::ColorPaletteType Palette = Corvane::Rasterloom::ColorPaletteType::Adaptive;
    std::int32_t PaletteEntryCount = 0; ///< 0: as many as the format holds
    Corvane::Rasterloom::ColorQuantizationAlgorithm Quantizer =
        Corvane::Rasterloom::ColorQuantizationAlgorithm::MedianCut;
    Corvane::Rasterloom::DitheringType Dithering = Corvane::Rasterloom::DitheringType::FloydSteinberg;
    double DitheringPercent = 100;
};

/// One step between load and save.
struct Operation {
    std::string Name;
    /// Changes the bitmap and tells in a few words what became of it.
    std::function<std::string(Corvane::Rasterloom::Bitmap&, const Settings&)> Run;
};

Operation MakeResize(const RequestedSize& size);
Operation MakeCrop(const RequestedBox& box);
Operation MakeRotateFlip(Corvane::Rasterloom::Host::RotateFlipType mode);
/// Degrees clockwise.
Operation MakeRotate(double angle);
Operation MakePixelFormat(Corvane::Rasterloom::PixelFormat format);

/// "800 x 600 Format24bppRgb".
std::string Describe(Corvane::Rasterloom::Bitmap& bitmap);

} // namespace Tool
