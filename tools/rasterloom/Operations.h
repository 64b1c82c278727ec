#pragma once

#include "ColorChoices.h"
#include "Values.h"

#include <Corvane/Rasterloom/Bitmap.h>
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
    ColorChoices Colors;
};

/// One step between load and save.
struct Operation {
    std::string Name;
    /// Changes the bitmap and tells in a few words what became of it.
    std::function<std::string(Corvane::Rasterloom::Bitmap&, const Settings&)> Run;
    /// The format that it leads to, where it is there for that.
    std::optional<Corvane::Rasterloom::PixelFormat> Format = {};
};

Operation MakeResize(const RequestedSize& size);
Operation MakeCrop(const RequestedBox& box);
Operation MakeRotateFlip(Corvane::Rasterloom::Host::RotateFlipType mode);
/// Degrees clockwise.
Operation MakeRotate(double angle);
Operation MakePixelFormat(Corvane::Rasterloom::PixelFormat format);
/// To the smallest indexed format that holds the palette of choice.
Operation MakeIndexed();
/// To the profile of choice.
Operation MakeProfile();

/// "800 x 600 Format24bppRgb".
std::string Describe(Corvane::Rasterloom::Bitmap& bitmap);

} // namespace Tool
