#pragma once

#include "Values.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

#include <functional>
#include <string>

namespace Tool {

/// Choices that hold for all operations of a run, wherever they stand on the command line.
struct Settings {
    Corvane::Rasterloom::Transforms::InterpolationMode Interpolation =
        Corvane::Rasterloom::Transforms::InterpolationMode::HighQuality;
};

/// One step between load and save.
struct Operation {
    std::string Name;
    /// Changes the bitmap and tells in a few words what became of it.
    std::function<std::string(Corvane::Rasterloom::Bitmap&, const Settings&)> Run;
};

Operation MakeResize(const RequestedSize& size);
Operation MakePixelFormat(Corvane::Rasterloom::PixelFormat format);

/// "800 x 600 Format24bppRgb".
std::string Describe(Corvane::Rasterloom::Bitmap& bitmap);

} // namespace Tool
