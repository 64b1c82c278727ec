#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include "Throws.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

TEST(Bitmap, StartsEmptyAndRefusesWhatNeedsPixels) {
    Bitmap bitmap;
    EXPECT_TRUE(bitmap.get_IsEmpty());
    EXPECT_EQ(bitmap.get_Width(), 0);
    EXPECT_EQ(ThrownText<BitmapEmptyException>([&] { bitmap.Clear(RgbColor::White); }),
              "Bitmap object has not been filled up with data.");
    EXPECT_THROW(bitmap.GetPixel(0, 0), BitmapEmptyException);
    EXPECT_THROW(bitmap.LockBits(), BitmapEmptyException);
    EXPECT_THROW(bitmap.get_Transforms()->Resize(1, 1), BitmapEmptyException);
}

TEST(Bitmap, CreateChecksBeforeItDropsTheOldRaster) {
    Bitmap bitmap(RgbColor::Red, 3, 2, PixelFormat::Format24bppRgb);
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>(
                  [&] { bitmap.Create(0, 5, PixelFormat::Format24bppRgb); }),
              "width");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>(
                  [&] { bitmap.Create(5.0F, -1.0F, PixelFormat::Format24bppRgb); }),
              "height");
    EXPECT_THROW(bitmap.Create(5, 5, static_cast<PixelFormat>(77)), Host::ArgumentException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(
                  [&] { bitmap.Create(5, 5, PixelFormat::Format4bppIndexed, nullptr); }),
              "palette");
    const ColorPalette three(3, false);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { bitmap.Create(5, 5, PixelFormat::Format1bppIndexed, &three); }),
              "Count of palette entries is not supported by pixel format.");
    EXPECT_THROW(bitmap.Create(134217728, 1, PixelFormat::Format32bppArgb), Host::OverflowException);
    EXPECT_EQ(bitmap.get_Width(), 3);
    EXPECT_EQ(bitmap.GetPixel(2, 1).ToInt32(), 0xFFFF0000U);
    const ColorPalette two(2, false);
    EXPECT_NO_THROW(bitmap.Create(5, 5, PixelFormat::Format1bppIndexed, &two));
}

TEST(Bitmap, CreateKeepsResolutionsAndMakesDefaultPalettes) {
    Bitmap bitmap;
    bitmap.set_HorizontalResolution(300);
    bitmap.set_Unit(Unit::Inch);
    bitmap.Create(2.0F, 1.0F, PixelFormat::Format1bppIndexed);
    EXPECT_EQ(bitmap.get_Width(), 600);
    EXPECT_EQ(bitmap.get_Height(), 72);
    EXPECT_FLOAT_EQ(bitmap.get_HorizontalResolution(), 300);
    EXPECT_FLOAT_EQ(bitmap.get_LogicalWidth(), 2);
    EXPECT_EQ(bitmap.get_Palette()->get_Count(), 2);
    EXPECT_EQ(bitmap.get_Palette()->get_Item(1).get_R(), 255);
    bitmap.set_Unit(Unit::Pixel);
    bitmap.Create(1, 1, PixelFormat::Format4bppIndexed);
    EXPECT_EQ(bitmap.get_Palette()->get_Count(), 16);
}

TEST(Bitmap, ClearFillsEveryKindOfFormat) {
    Bitmap indexed(RgbColor::White, 5, 3, PixelFormat::Format1bppIndexed);
    EXPECT_EQ(indexed.GetPixel(4, 2).ToInt32(), 0xFFFFFFFFU);
    Bitmap gray(Color::FromRgb(0, 0, 255), 3, 3, PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(gray.GetPixel(2, 2).ToInt32(), 0xFF4CU); // 30 per cent of blue, alpha 255
    Bitmap extended(Color::FromArgb32(1, 2, 3, 4), 2, 2, PixelFormat::Format64bppArgb);
    EXPECT_EQ(extended.GetPixel(1, 1).ToInt64(), 0x0001000200030004U);
    Bitmap cmyk(Color::FromCmyk(10, 20, 30, 40), 2, 2, PixelFormat::Format32bppCmyk);
    EXPECT_EQ(cmyk.GetPixel(1, 0).ToInt32(), 0x0A141E28U);
    EXPECT_EQ(cmyk.GetPixel(1, 0).GetChannel32(ColorChannel::Alpha), 65535);
    Bitmap packed(2, 2, PixelFormat::Format16bppRgb565);
    EXPECT_EQ(ThrownText<UnsupportedPixelFormatException>([&] { packed.Clear(RgbColor::Red); }),
              "The pixel format doesn't support pixels manipulations.");
    EXPECT_THROW(packed.GetPixel(0, 0), UnsupportedPixelFormatException);
}

TEST(Bitmap, PixelsAreReadAndWrittenByPosition) {
    Bitmap bitmap(9, 2, PixelFormat::Format4bppIndexed);
    bitmap.get_Palette()->set_Item(5, RgbColor(Color::FromRgb(10, 200, 30)));
    bitmap.SetPixel(7, 1, Color::FromRgb(12, 198, 33));
    EXPECT_EQ(bitmap.GetPixel(7, 1).ToInt32(), 0xFF0AC81EU);
    EXPECT_EQ(bitmap.GetPixel(6, 1).ToInt32(), 0xFF000000U);
    EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([&] { bitmap.GetPixel(9, 0); }),
              "X value of pixel position is out of range.");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { bitmap.SetPixel(0, 2, RgbColor::Red); }), "y");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { bitmap.SetPixel(0, 0, Color()); }), "color");
}

TEST(Bitmap, ArraysCarryRawSamples) {
    PixelArray array(2, 1, 3);
    for (std::int32_t x = 0; x < 2; ++x) {
        for (std::int32_t channel = 0; channel < 3; ++channel) {
            array(x, 0, channel) = 1000 * x + channel;
        }
    }
    Bitmap bitmap(array, PixelFormat::Format48bppRgb);
    bitmap.set_HorizontalResolution(300);
    bitmap.Load(array, PixelFormat::Format48bppRgb);
    EXPECT_EQ(bitmap.get_HorizontalResolution(), 300.0F);
    EXPECT_EQ(bitmap.get_Width(), 2);
    EXPECT_EQ(bitmap.GetPixel(1, 0).GetChannel32(2), 1002);
    EXPECT_EQ(bitmap.Export(), array);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { bitmap.Import(PixelArray({2, 1})); }),
              "Number of dimensions should be 3.");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { bitmap.Import(PixelArray(2, 1, 4)); }),
              "Dimensions of array don't correspond to pixel format.");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { bitmap.Load(array, PixelFormat::Format8bppIndexed, nullptr); }),
              "You should specify palette for indexed pixel formats.");
    EXPECT_EQ(bitmap.Export(), array);
    Bitmap nibbles(2, 2, PixelFormat::Format4bppIndexed);
    EXPECT_EQ(ThrownText<UnsupportedPixelFormatException>([&] { nibbles.Export(); }),
              "The pixel format doesn't support channels manipulations.");
}

TEST(Bitmap, ChangesAreToldAndMayBeCancelled) {
    Bitmap bitmap(2, 2, PixelFormat::Format24bppRgb);
    std::vector<std::string> told;
    bool cancel = false;
    const auto changing = bitmap.Changing.Subscribe([&](BitmapChangingEventArgs& args) {
        told.push_back("changing " + std::to_string(static_cast<int>(args.get_Change())));
        EXPECT_FALSE(bitmap.get_Locked());
        args.set_Cancel(cancel);
    });
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) {
        told.push_back("changed " + std::to_string(static_cast<int>(args.get_Change())) + " " +
                       std::to_string(bitmap.get_Width()));
    });
    bitmap.Create(4, 4, PixelFormat::Format24bppRgb);
    bitmap.Unload();
    bitmap.Unload();
    EXPECT_EQ(told, (std::vector<std::string>{"changing 4", "changed 4 4", "changing 5", "changed 5 0", "changing 5",
                                              "changed 5 0"}));
    EXPECT_TRUE(bitmap.get_Modified());
    bitmap.Create(4, 4, PixelFormat::Format24bppRgb);
    cancel = true;
    EXPECT_EQ(ThrownText<AbortedException>([&] { bitmap.Unload(); }), "Operation is aborted.");
    EXPECT_EQ(bitmap.get_Width(), 4);
    EXPECT_FALSE(bitmap.get_Locked());
}

TEST(Bitmap, CopiesAreDeep) {
    Bitmap bitmap(RgbColor::Red, 2, 2, PixelFormat::Format24bppRgb);
    const auto copy = bitmap.Clone();
    copy->SetPixel(0, 0, RgbColor::Blue);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFFFF0000U);
    EXPECT_THROW(bitmap.Create(bitmap), ObjectLockedException);
    EXPECT_FALSE(bitmap.get_Locked());
    const auto mask = bitmap.GetEmptyMask();
    EXPECT_EQ(mask->get_PixelFormat(), PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(mask->GetPixel(1, 1).ToInt32() & 0xFFU, 0U);
}

TEST(Bitmap, AbortStopsALoopOfItsOwn) {
    Bitmap bitmap(3, 10, PixelFormat::Format24bppRgb);
    int calls = 0;
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
        EXPECT_EQ(args.get_Maximum(), 10);
        if (++calls == 4) {
            bitmap.Abort();
        }
    });
    EXPECT_THROW(bitmap.Export(), AbortedException);
    EXPECT_EQ(std::exchange(calls, 0), 4);
    EXPECT_THROW(bitmap.Load(PixelArray(3, 10, 3), PixelFormat::Format24bppRgb), AbortedException);
    EXPECT_EQ(std::exchange(calls, 0), 4);
    EXPECT_THROW(bitmap.Import(PixelArray(3, 10, 4)), Host::ArgumentException);
    EXPECT_EQ(calls, 0); // refused before the work begins
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_NO_THROW(bitmap.get_Width());
}

TEST(BitmapThreading, AProviderWaitsAsLongAsItsBitmapTells) {
    Bitmap bitmap(2, 2, PixelFormat::Format24bppRgb);
    const auto transforms = bitmap.get_Transforms();
    transforms->Lock();
    bitmap.set_Timeout(0);
    std::thread([&] { EXPECT_THROW(transforms->Resize(1, 1), TimeoutException); }).join();
    transforms->Unlock();
    EXPECT_NO_THROW(transforms->Resize(1, 1));
}

// A dispose meets a transform, which has a view of its own, and a host's view that comes out at the last moment.
TEST(BitmapThreading, DisposesBesideTransformsAndViews) {
    const auto quietly = [](auto body) {
        return std::thread([body] {
            try {
                body();
            } catch (const Host::Exception&) {
                // disposed meanwhile, or a view is out
            }
        });
    };
    for (int round = 0; round < 200; ++round) {
        Bitmap bitmap(16, 16, PixelFormat::Format24bppRgb);
        std::shared_ptr<BitmapData> view;
        std::thread threads[] = {quietly([&] { bitmap.get_Transforms()->Resize(4, 4); }), quietly([&] {
                                     view = bitmap.LockBits();
                                     for (std::int32_t x = 0; x < 4; ++x) {
                                         view->GetPixel(x, 0);
                                     }
                                 }),
                                 quietly([&] { bitmap.Dispose(); })};
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_TRUE(bitmap.get_IsDisposed());
        EXPECT_FALSE(bitmap.get_BitsLocked());
        if (view) {
            EXPECT_THROW(view->get_Width(), Host::ObjectDisposedException);
        }
    }
}

TEST(Bitmap, HandlersOfChangesMayDisposeIt) {
    Bitmap first(8, 8, PixelFormat::Format24bppRgb);
    const auto changing = first.Changing.Subscribe([&](BitmapChangingEventArgs&) { first.Dispose(); });
    EXPECT_THROW(first.get_Transforms()->Resize(4, 4), Host::ObjectDisposedException);
    Bitmap second(8, 8, PixelFormat::Format24bppRgb);
    const auto changed = second.Changed.Subscribe([&](BitmapChangedEventArgs&) { second.Dispose(); });
    second.get_Transforms()->Resize(4, 4);
    EXPECT_TRUE(second.get_IsDisposed());
}

TEST(Bitmap, AfterDisposeEverythingIsRefused) {
    Bitmap bitmap(2, 2, PixelFormat::Format8bppIndexed);
    const auto palette = bitmap.get_Palette();
    const auto transforms = bitmap.get_Transforms();
    const auto view = bitmap.LockBits();
    bitmap.Dispose();
    bitmap.Dispose();
    EXPECT_THROW(bitmap.get_Width(), Host::ObjectDisposedException);
    EXPECT_THROW(transforms->Resize(3, 3), Host::ObjectDisposedException);
    EXPECT_THROW(view->get_Width(), Host::ObjectDisposedException);
    EXPECT_EQ(palette->get_Count(), 256); // the host's own share lives on
}

TEST(Bitmap, PreserveScaleFactorCompletesOneSide) {
    const auto complete = [](std::int32_t width, std::int32_t height) {
        Bitmap::PreserveScaleFactor(300, 200, &width, &height);
        return std::pair(width, height);
    };
    EXPECT_EQ(complete(0, 0), std::pair(300, 200));
    EXPECT_EQ(complete(0, 50), std::pair(75, 50));
    EXPECT_EQ(complete(100, -1), std::pair(100, 66));
    EXPECT_EQ(complete(1, 0), std::pair(1, 1));
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] {
                  std::int32_t width = 1;
                  Bitmap::PreserveScaleFactor(1, 1, &width, nullptr);
              }),
              "destinationHeight");
}

} // namespace
} // namespace Corvane::Rasterloom
