// The code of ../bitmaps.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <string>

using namespace Corvane::Rasterloom;

namespace {

void LoadAndLook() {
    // [load]
    Bitmap picture("lake.bmp");
    const std::int32_t width = picture.get_Width();      // 720
    const std::int32_t height = picture.get_Height();    // 480
    const PixelFormat format = picture.get_PixelFormat(); // Format24bppRgb
    const std::int64_t bytes = picture.get_MemoryUsed();  // 1036800
    // [load end]
    Expect(width == 720 && height == 480 && format == PixelFormat::Format24bppRgb && bytes == 1036800);
}

void Create() {
    // [create]
    Bitmap empty;                                                              // no raster yet
    Bitmap black(320, 200, PixelFormat::Format24bppRgb);                       // all samples 0
    Bitmap gold(RgbColor::Gold, 320, 200, PixelFormat::Format32bppArgb);       // filled
    black.Create(RgbColor::Navy, 64, 64, PixelFormat::Format24bppRgb);         // another raster, same object
    black.Clear(RgbColor::White);
    black.Unload(); // empty again
    // [create end]
    Expect(empty.get_IsEmpty() && black.get_IsEmpty() && gold.get_HasAlpha());
}

void DirectAccess() {
    // [direct]
    Bitmap picture(256, 128, PixelFormat::Format24bppRgb);
    {
        const auto view = picture.LockBits();
        for (std::int32_t y = 0; y < view->get_Height(); ++y) {
            std::uint8_t* row = view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y;
            for (std::int32_t x = 0; x < view->get_Width(); ++x) {
                row[3 * x + 0] = static_cast<std::uint8_t>(255 - x); // blue
                row[3 * x + 1] = static_cast<std::uint8_t>(2 * y);   // green
                row[3 * x + 2] = static_cast<std::uint8_t>(x);       // red
            }
        }
    } // the view ends here, and the bitmap can be used again
    picture.Save("direct.png");
    // [direct end]

    // [part]
    const auto part = picture.LockBits(64, 32, 128, 64); // left, top, width, height
    part->SetPixel(0, 0, RgbColor::White);               // positions count from the corner of the view
    picture.UnlockBits(part);
    const RgbColor corner = picture.GetPixel(64, 32);    // white
    // [part end]
    Expect(corner.ToInt32() == 0xFFFFFFFFU);
}

void Arrays() {
    Bitmap picture("lake.bmp");
    // [arrays]
    PixelArray samples = picture.Export(); // [x, y, channel]
    for (std::int32_t y = 0; y < samples.GetLength(1); ++y) {
        for (std::int32_t x = 0; x < samples.GetLength(0); ++x) {
            samples(x, y, 0) = samples(x, y, 2); // blue becomes what red was
        }
    }
    picture.Import(samples);
    Bitmap other(samples, PixelFormat::Format24bppRgb); // or a bitmap of its own
    // [arrays end]
    Expect(other.GetPixel(300, 200) == picture.GetPixel(300, 200));
    picture.get_Transforms()->Resize(240, 0);
    picture.Save("arrays.png");
}

void Units() {
    Bitmap picture("lake.bmp");
    // [units]
    picture.set_HorizontalResolution(300); // pixels per inch
    picture.set_VerticalResolution(300);
    picture.set_Unit(Unit::Mm);
    const float printed = picture.get_LogicalWidth();   // 720 / 300 * 25.4 = 60.96
    picture.get_Transforms()->Crop(10.0F, 10.0F, 40.0F, 20.0F); // millimetres: 118, 118, 472, 236 pixels
    // [units end]
    Expect(printed > 60.95F && printed < 60.97F);
    Expect(picture.get_Width() == 472 && picture.get_Height() == 236);
}

void Events() {
    std::string log;
    Bitmap picture("lake.bmp");
    // [events]
    const auto before = picture.Changing.Subscribe([&](BitmapChangingEventArgs& args) {
        if (args.get_Change() == BitmapChange::Crop) {
            args.set_Cancel(true); // the operation fails with AbortedException
        }
    });
    const auto after = picture.Changed.Subscribe([&](BitmapChangedEventArgs& args) {
        log += args.get_Change() == BitmapChange::Resize ? "resized " : "changed ";
    });
    picture.get_Transforms()->Resize(360, 240);
    // [events end]
    try {
        picture.get_Transforms()->Crop(0, 0, 10, 10);
    } catch (const Host::Exception&) {
        log += "refused";
    }
    Expect(log == "resized refused" && picture.get_Width() == 360);
}

void Copies() {
    Bitmap picture("lake.bmp");
    // [copies]
    Bitmap copy(picture);                              // a deep copy
    const std::unique_ptr<Bitmap> clone = picture.Clone(); // the same
    picture.Dispose();                                 // gives the memory back now; the copies live on
    // [copies end]
    Expect(copy.get_Width() == 720 && clone->get_Height() == 480);
}

} // namespace

int main() { return RunPage({LoadAndLook, Create, DirectAccess, Arrays, Units, Events, Copies}); }
