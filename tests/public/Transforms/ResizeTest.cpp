#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/Transforms/Resize.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include "Ramp.h"
#include "Throws.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

using Transforms::InterpolationMode;
using Transforms::ResizeMode;

TEST(Resize, TheProviderRunsTheWholeChainOfEvents) {
    Bitmap bitmap(20, 10, PixelFormat::Format24bppRgb);
    Ramp(bitmap);
    std::vector<std::string> told;
    int lastProgress = -1;
    const auto changing = bitmap.Changing.Subscribe([&](BitmapChangingEventArgs& args) {
        EXPECT_EQ(args.get_Change(), BitmapChange::Resize);
        EXPECT_EQ(bitmap.get_Width(), 20);
        told.emplace_back("changing");
    });
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
        EXPECT_EQ(args.get_Maximum(), 200);
        EXPECT_GE(args.get_Current(), lastProgress);
        if (lastProgress < 0) {
            EXPECT_EQ(args.get_Current(), 0);
            EXPECT_THROW(bitmap.get_Width(), ObjectLockedException); // locked on this very thread
            told.emplace_back("progress begins");
        }
        lastProgress = args.get_Current();
    });
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) {
        EXPECT_EQ(args.get_Change(), BitmapChange::Resize);
        EXPECT_EQ(bitmap.get_Width(), 10);
        EXPECT_EQ(lastProgress, 200);
        told.emplace_back("changed");
    });
    bitmap.get_Transforms()->Resize(10, 5, InterpolationMode::Bilinear);
    EXPECT_EQ(told, (std::vector<std::string>{"changing", "progress begins", "changed"}));
    EXPECT_EQ(bitmap.get_Height(), 5);
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_FALSE(bitmap.get_BitsLocked());
}

TEST(Resize, TheTransformTellsItsOwnLife) {
    Bitmap bitmap(20, 10, PixelFormat::Format24bppRgb);
    Transforms::Resize resize(10, 0, InterpolationMode::NearestNeighbour);
    std::string told;
    const auto starting = resize.Starting.Subscribe([&](EventArgs&) { told += "starting "; });
    const auto started = resize.Started.Subscribe([&](EventArgs&) { told += "started "; });
    const auto stopping = resize.Stopping.Subscribe([&](ErrorEventArgs&) { told += "stopping "; });
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) { told += "changed "; });
    const auto stopped = resize.Stopped.Subscribe([&](ErrorEventArgs& args) {
        EXPECT_EQ(args.get_Exception(), nullptr);
        told += "stopped";
    });
    resize.ApplyTransform(bitmap);
    EXPECT_EQ(told.find("starting started "), 0U) << told;
    EXPECT_LT(told.find("changed"), told.find("stopped"));
    EXPECT_EQ(bitmap.get_Height(), 5);
    resize.ApplyTransform(bitmap); // once more, from 10 x 5
    EXPECT_EQ(bitmap.get_Width(), 10);
}

TEST(Resize, AFailureLeavesTheBitmapAndFreesEverything) {
    Bitmap bitmap(8, 8, PixelFormat::Format8bppIndexed);
    int changes = 0;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) { ++changes; });
    EXPECT_THROW(bitmap.get_Transforms()->Resize(4, 4, InterpolationMode::Bilinear), Host::ArgumentException);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(bitmap.get_Width(), 8);
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_FALSE(bitmap.get_Transforms()->get_Locked());
    bitmap.get_Transforms()->Resize(4, 4);
    EXPECT_EQ(bitmap.get_PixelFormat(), PixelFormat::Format32bppArgb); // scaled to colours
    EXPECT_EQ(changes, 1);
    EXPECT_THROW(bitmap.get_Transforms()->Resize(0, 0), Host::ArgumentOutOfRangeException);
    EXPECT_THROW(bitmap.get_Transforms()->Resize(-1, 5), Host::ArgumentOutOfRangeException);
    EXPECT_THROW(bitmap.get_Transforms()->Resize(1, 5, static_cast<InterpolationMode>(99)), Host::ArgumentException);
}

TEST(Resize, AHandlerThatFailsStopsItBeforeItBegins) {
    Bitmap bitmap(8, 8, PixelFormat::Format24bppRgb);
    Transforms::Resize resize(4, 4);
    {
        const auto starting = resize.Starting.Subscribe([](EventArgs&) { throw std::runtime_error("no"); });
        EXPECT_THROW(resize.ApplyTransform(bitmap), std::runtime_error);
    }
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_FALSE(resize.get_Locked());
    resize.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.get_Width(), 4);
}

TEST(Resize, AnAbortBeforeTheFirstStepIsNotLost) {
    Bitmap bitmap(64, 600, PixelFormat::Format24bppRgb);
    Transforms::Resize resize(32, 500);
    {
        const auto started = resize.Started.Subscribe([&](EventArgs&) { resize.Abort(); });
        EXPECT_THROW(resize.ApplyTransform(bitmap), AbortedException);
    }
    EXPECT_EQ(bitmap.get_Height(), 600);
    EXPECT_FALSE(bitmap.get_Locked());
    resize.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.get_Height(), 500);
}

TEST(ResizeThreading, AbortFromAnotherThreadAndWaitingForTheLock) {
    Bitmap bitmap(400, 2000, PixelFormat::Format24bppRgb);
    std::atomic<bool> running{false};
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs&) {
        running = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    });
    std::thread worker([&] {
        EXPECT_THROW(bitmap.get_Transforms()->Resize(300, 1900, InterpolationMode::Bilinear), AbortedException);
    });
    while (!running) {
        std::this_thread::yield();
    }
    bitmap.set_Timeout(1);
    EXPECT_EQ(ThrownText<TimeoutException>([&] { bitmap.get_Width(); }), "The time is out.");
    bitmap.set_Timeout(-1);
    bitmap.Abort();
    EXPECT_EQ(bitmap.get_Width(), 400); // waits for the end
    worker.join();
}

TEST(Resize, GoesFromOneBitmapToAnother) {
    Bitmap source(6, 4, PixelFormat::Format24bppRgb);
    Bitmap destination;
    int changes = 0;
    const auto changed = destination.Changed.Subscribe([&](BitmapChangedEventArgs&) { ++changes; });
    Transforms::Resize resize(3, 2, InterpolationMode::Anisotropic4);
    resize.ApplyTransform(source, destination);
    EXPECT_EQ(source.get_Width(), 6);
    EXPECT_EQ(destination.get_Width(), 3);
    EXPECT_EQ(changes, 1);
    EXPECT_THROW(resize.ApplyTransform(source, source), ObjectLockedException);
    Bitmap empty;
    EXPECT_EQ(ThrownText<BitmapEmptyException>([&] { resize.ApplyTransform(empty, destination); }),
              "Bitmap \"source\" has not been filled up with data.");
    const auto view = source.LockBits(0, 0, 4, 4);
    resize.ApplyTransform(*view, destination);
    EXPECT_EQ(destination.get_Width(), 3);
    EXPECT_TRUE(source.get_BitsLocked());
    // Neither its own bitmap nor one with a view out can take the result, which is told before the work.
    const auto starting = resize.Starting.Subscribe([](EventArgs&) { ADD_FAILURE() << "begun"; });
    EXPECT_THROW(resize.ApplyTransform(*view, source), ObjectLockedException);
    const auto other = destination.LockBits();
    EXPECT_THROW(resize.ApplyTransform(*view, destination), BitmapLockedException);
    EXPECT_EQ(changes, 2);
    for (const ILockable* const object : std::initializer_list<const ILockable*>{&source, &destination, view.get(), &resize}) {
        EXPECT_FALSE(object->get_Locked());
    }
}

TEST(Resize, ProportionsFollowTheMode) {
    const auto sized = [](std::int32_t width, std::int32_t height, ResizeMode mode) {
        Transforms::Resize::CalculateProportionalDimensions(300, 200, &width, &height, mode);
        return std::pair(width, height);
    };
    EXPECT_EQ(sized(100, 100, ResizeMode::Fit), std::pair(100, 66));
    EXPECT_EQ(sized(600, 100, ResizeMode::Fit), std::pair(150, 100));
    EXPECT_EQ(sized(900, 900, ResizeMode::Shrink), std::pair(300, 200));
    EXPECT_EQ(sized(900, 900, ResizeMode::Fit), std::pair(900, 600));
    EXPECT_EQ(sized(10, 20, ResizeMode::Resize), std::pair(10, 20));
    EXPECT_EQ(sized(1, 1, ResizeMode::Fit), std::pair(1, 1));
    EXPECT_THROW(sized(0, 5, ResizeMode::Fit), Host::ArgumentOutOfRangeException);
    Bitmap bitmap(300, 200, PixelFormat::Format24bppRgb);
    bitmap.get_Transforms()->Resize(100, 100, ResizeMode::Fit);
    EXPECT_EQ(bitmap.get_Height(), 66);
    // The product comes before the division: 1 / 49 is less than a 49th in doubles.
    Bitmap wide(98, 49, PixelFormat::Format24bppRgb);
    wide.get_Transforms()->Resize(0, 1);
    EXPECT_EQ(wide.get_Width(), 2);
    Bitmap thin(10, 1000, PixelFormat::Format24bppRgb);
    thin.get_Transforms()->Resize(0, 50);
    EXPECT_EQ(thin.get_Width(), 1);
}

TEST(Resize, CropsInCoordinatesOfTheResult) {
    Bitmap whole(40, 40, PixelFormat::Format24bppRgb);
    Ramp(whole);
    Bitmap part(whole);
    whole.get_Transforms()->Resize(20, 20, InterpolationMode::Lanczos3Filter);
    Transforms::Resize resize(20, 20, InterpolationMode::Lanczos3Filter);
    resize.set_CropEnabled(true);
    resize.set_CropRectangle({5, 6, 7, 8});
    resize.ApplyTransform(part);
    EXPECT_EQ(part.get_Width(), 7);
    EXPECT_EQ(part.get_Height(), 8);
    EXPECT_EQ(part.GetPixel(3, 4).ToInt32(), whole.GetPixel(8, 10).ToInt32());
    resize.set_CropRectangle({15, 15, 6, 6});
    EXPECT_THROW(resize.ApplyTransform(whole), Host::ArgumentOutOfRangeException);
    // In units, by 72 pixels to the inch while no bitmap tells another number.
    resize.set_Unit(Unit::Inch);
    resize.set_WidthInPixels(144);
    resize.set_HeightInPixels(36);
    EXPECT_EQ(resize.get_Width(), 2.0F);
    EXPECT_EQ(resize.get_Height(), 0.5F);
    resize.set_CropRectangleInPixels({18, 0, 36, 72});
    EXPECT_EQ(resize.get_CropRectangle(), Host::RectangleF(0.25F, 0, 0.5F, 1));
    EXPECT_EQ(resize.get_CropRectangleInPixels(), (Host::Rectangle{18, 0, 36, 72}));
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { resize.set_WidthInPixels(-1); }), "width");
}

TEST(Resize, ListsEveryFormatButOne) {
    Transforms::Resize resize;
    EXPECT_EQ(resize.get_SupportedPixelFormats().size(), 18U);
    EXPECT_FALSE(resize.IsPixelFormatSupported(PixelFormat::Format40bppAcmyk));
    EXPECT_TRUE(resize.IsPixelFormatSupported(PixelFormat::Format1bppIndexed));
    EXPECT_THROW(resize.IsPixelFormatSupported(static_cast<PixelFormat>(5)), Host::ArgumentException);
    Bitmap acmyk(4, 4, PixelFormat::Format40bppAcmyk);
    resize.set_Width(2);
    resize.ApplyTransform(acmyk); // not listed, and yet it works
    EXPECT_EQ(acmyk.get_Height(), 2);
}

TEST(PixelFormatConverter, ConvertsInPlace) {
    Bitmap bitmap(Color::FromArgb(128, 255, 0, 0), 2, 2, PixelFormat::Format32bppArgb);
    Transforms::PixelFormatConverter converter(PixelFormat::Format24bppRgb);
    converter.set_BackgroundEnabled(true);
    converter.set_BackgroundColor(Color::FromRgb(0, 0, 255));
    converter.ApplyTransform(bitmap);
    // (255 * 128 + 0 * 127) / 255 and (0 * 128 + 255 * 127) / 255
    EXPECT_EQ(bitmap.GetPixel(1, 1).ToInt32(), 0xFF80007FU);
    converter.set_DestinationPixelFormat(PixelFormat::Format8bppIndexed);
    converter.set_PaletteType(ColorPaletteType::WebSafe);
    converter.set_Dithering(DitheringType::None);
    converter.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.get_Palette()->get_Count(), 216);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFF990066U); // 128 -> 153, 127 -> 102
    converter.set_DestinationPixelFormat(PixelFormat::Format16bppRgb565);
    EXPECT_THROW(converter.ApplyTransform(bitmap), UnsupportedPixelFormatException);
    EXPECT_THROW(converter.set_Opacity(1.5F), Host::ArgumentOutOfRangeException);
    EXPECT_THROW(converter.SetQuantizationTo8b(12, 0, 16), Host::ArgumentOutOfRangeException);
}

} // namespace
} // namespace Corvane::Rasterloom
