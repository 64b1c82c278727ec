// The code of ../resizing.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/Transforms/Resize.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <utility>

using namespace Corvane::Rasterloom;
using Transforms::InterpolationMode;

namespace {

void Sizes() {
    Bitmap picture("lake.bmp");
    // [sizes]
    picture.get_Transforms()->Resize(360, 240);                                     // exactly
    picture.get_Transforms()->Resize(180, 0);                                       // the height follows: 120
    picture.get_Transforms()->Resize(100, 100, Transforms::ResizeMode::Fit);        // into the box: 100 x 66
    picture.get_Transforms()->Resize(90, 60, InterpolationMode::Lanczos3Filter);
    // [sizes end]
    Expect(picture.get_Width() == 90 && picture.get_Height() == 60);
    Bitmap fit("lake.bmp");
    fit.get_Transforms()->Resize(100, 100, Transforms::ResizeMode::Fit);
    Expect(fit.get_Width() == 100 && fit.get_Height() == 66);
}

void Reuse() {
    Bitmap picture("lake.bmp");
    // [reuse]
    Transforms::Resize half;
    half.set_Width(360);
    half.set_Height(240);
    half.set_InterpolationMode(InterpolationMode::MitchellFilter);
    Bitmap result;
    half.ApplyTransform(picture, result); // the source stays as it is
    // [reuse end]
    Expect(result.get_Width() == 360 && picture.get_Width() == 720);
}

void Compare() {
    Bitmap detail("lake.bmp");
    detail.get_Transforms()->Crop(126, 245, 48, 32);
    using Result = std::pair<InterpolationMode, const char*>;
    for (const auto& [mode, name] :
         {Result{InterpolationMode::NearestNeighbour, "up-nearest.png"}, Result{InterpolationMode::Bilinear, "up-bilinear.png"},
          Result{InterpolationMode::MitchellFilter, "up-mitchell.png"}, Result{InterpolationMode::Lanczos3Filter, "up-lanczos.png"}}) {
        Bitmap enlarged(detail);
        enlarged.get_Transforms()->Resize(240, 160, mode);
        enlarged.Save(name);
    }
    Bitmap page("text.bmp");
    page.get_Transforms()->Crop(30, 110, 480, 260);
    Bitmap colours(page);
    colours.get_ColorManagement()->Convert(PixelFormat::Format8bppGrayScale);
    for (const auto& [mode, name] :
         {Result{InterpolationMode::Bilinear, "down-bilinear.png"}, Result{InterpolationMode::Lanczos3Filter, "down-lanczos.png"}}) {
        Bitmap reduced(colours);
        reduced.get_Transforms()->Resize(240, 130, mode);
        reduced.Save(name);
    }
    Bitmap nearest(page);
    nearest.get_Transforms()->Resize(240, 130, InterpolationMode::NearestNeighbour);
    nearest.Save("down-nearest.png");
    // [text]
    Bitmap& scan = page; // Format1bppIndexed
    scan.get_Transforms()->Resize(240, 130, InterpolationMode::ScaleToGray);
    // [text end]
    Expect(!scan.get_IsIndexed());
    scan.Save("down-scaletogray.png");
}

} // namespace

int main() { return RunPage({Sizes, Reuse, Compare}); }
