#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include "Throws.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace Corvane::Rasterloom {
namespace {

TEST(BitmapDataView, SharesTheBitmapsMemory) {
    Bitmap bitmap(10, 6, PixelFormat::Format24bppRgb);
    auto view = bitmap.LockBits(2, 1, 3, 4);
    EXPECT_EQ(view->get_Left(), 2);
    EXPECT_EQ(view->get_Top(), 1);
    EXPECT_EQ(view->get_Width(), 3);
    EXPECT_EQ(view->get_Stride(), 32);
    EXPECT_EQ(view->get_MemoryUsed(), 128);
    EXPECT_EQ(&view->get_Bitmap(), &bitmap);
    view->get_Scan0()[view->get_Stride() + 2] = 77; // red of (2, 2)
    view->SetPixel(1, 0, Color::FromRgb(1, 2, 3));
    bitmap.UnlockBits(view);
    EXPECT_EQ(RgbColor(bitmap.GetPixel(2, 2)).get_R(), 77);
    EXPECT_EQ(bitmap.GetPixel(3, 1).ToInt32(), 0xFF010203U);
}

TEST(BitmapDataView, IsOneAndShutsTheBitmap) {
    Bitmap bitmap(4, 4, PixelFormat::Format24bppRgb);
    auto view = bitmap.LockBits();
    EXPECT_TRUE(bitmap.get_BitsLocked());
    EXPECT_THROW(bitmap.LockBits(), BitmapLockedException);
    EXPECT_THROW(bitmap.get_Width(), BitmapLockedException);
    EXPECT_THROW(bitmap.Create(1, 1, PixelFormat::Format24bppRgb), BitmapLockedException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { bitmap.UnlockBits(nullptr); }), "bitmapData");
    Bitmap other(4, 4, PixelFormat::Format24bppRgb);
    const auto foreign = other.LockBits();
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { bitmap.UnlockBits(foreign); }),
              "The specified bitmap data has not been created from this bitmap.");
    view->Dispose();
    view->Dispose();
    EXPECT_FALSE(bitmap.get_BitsLocked());
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_NO_THROW(bitmap.UnlockBits(nullptr));
    EXPECT_EQ(bitmap.get_Width(), 4);
    EXPECT_THROW(view->get_Width(), Host::ObjectDisposedException);
    bitmap.LockBits(); // dropped at once, which ends it
    EXPECT_FALSE(bitmap.get_BitsLocked());
}

TEST(BitmapDataView, RectanglesAreCheckedAndFollowTheUnit) {
    Bitmap bitmap(8, 8, PixelFormat::Format4bppIndexed);
    const auto parameter = [&](std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
        return ThrownParameter<Host::ArgumentOutOfRangeException>([&] { bitmap.LockBits(left, top, width, height); });
    };
    EXPECT_EQ(parameter(8, 0, 1, 1), "left");
    EXPECT_EQ(parameter(0, -1, 1, 1), "top");
    EXPECT_EQ(parameter(0, 0, 0, 1), "width");
    EXPECT_EQ(parameter(0, 0, 1, -5), "height");
    EXPECT_THROW(bitmap.LockBits(1, 0, 2, 2), Host::ArgumentException); // not on whole bytes
    EXPECT_FALSE(bitmap.get_BitsLocked());
    EXPECT_EQ(bitmap.LockBits(2, 0, 2147483647, 2147483647)->get_Width(), 6);
    bitmap.set_HorizontalResolution(2);
    bitmap.set_VerticalResolution(2);
    bitmap.set_Unit(Unit::Inch);
    const auto view = bitmap.LockBits(1.0F, 1.0F, 2.0F, 1.0F);
    EXPECT_EQ(view->get_Left(), 2);
    EXPECT_EQ(view->get_Width(), 4);
    EXPECT_EQ(view->get_Height(), 2);
}

TEST(BitmapDataView, OutlivesItsBitmapHarmlessly) {
    auto bitmap = std::make_unique<Bitmap>(4, 4, PixelFormat::Format24bppRgb);
    const auto view = bitmap->LockBits();
    bitmap.reset();
    EXPECT_THROW(view->GetPixel(0, 0), Host::ObjectDisposedException);
    EXPECT_NO_THROW(view->Dispose());
}

TEST(BitmapDataView, ImportTellsTheBitmap) {
    Bitmap bitmap(2, 2, PixelFormat::Format8bppGrayScale);
    std::vector<BitmapChange> changes;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs& args) { changes.push_back(args.get_Change()); });
    const auto view = bitmap.LockBits();
    PixelArray array(2, 2, 1);
    array(1, 0, 0) = 300; // clamped to the sample
    view->Import(array);
    EXPECT_EQ(view->Export()(1, 0, 0), 255);
    EXPECT_EQ(changes, std::vector{BitmapChange::ImportData});
}

TEST(BitmapDataViewThreading, UnlockingAndDisposingFromManyThreads) {
    for (int round = 0; round < 50; ++round) {
        Bitmap bitmap(8, 8, PixelFormat::Format24bppRgb);
        const auto view = bitmap.LockBits();
        std::thread reader([&] {
            for (int i = 0; i < 20; ++i) {
                try {
                    view->GetPixel(i % 8, 0);
                } catch (const Host::Exception&) {
                    // disposed meanwhile
                }
            }
        });
        std::thread unlocker([&] { bitmap.UnlockBits(view); });
        view->Dispose();
        reader.join();
        unlocker.join();
        EXPECT_FALSE(bitmap.get_BitsLocked());
        EXPECT_FALSE(bitmap.get_Locked());
        EXPECT_EQ(bitmap.get_Width(), 8);
    }
}

} // namespace
} // namespace Corvane::Rasterloom
