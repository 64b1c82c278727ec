#include "TestFiles.h"
#include "TestFormat.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>
#include <Corvane/Rasterloom/Codecs/BmpWriter.h>
#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/ColorPalette.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace Corvane::Rasterloom::Codecs {
namespace {

class BitmapIo : public FilesTest {};

TEST_F(BitmapIo, LoadsInTheOrderChangingProgressChanged) {
    Bitmap bitmap(5, 5, PixelFormat::Format8bppGrayScale);
    std::string order;
    const auto changing = bitmap.Changing.Subscribe([&](BitmapChangingEventArgs& args) {
        EXPECT_EQ(args.get_Change(), BitmapChange::Load);
        EXPECT_EQ(bitmap.get_Width(), 5) << "outside the lock";
        order += "c";
    });
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
        EXPECT_THROW((void)bitmap.get_Width(), ObjectLockedException);
        order += args.get_Current() == 0 ? "0" : args.get_Current() == args.get_Maximum() ? "9" : "";
    });
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) {
        EXPECT_EQ(bitmap.get_Width(), 2);
        order += "C";
    });
    bitmap.set_Modified(false);
    bitmap.Load(Write("four.bmp", FourColors()));
    EXPECT_EQ(order, "c09C");
    EXPECT_TRUE(bitmap.get_Modified());
    EXPECT_NEAR(bitmap.get_HorizontalResolution(), 99.9998F, 1e-4);
    EXPECT_EQ(Bitmap(File("four.bmp")).GetPixel(1, 0).ToInt32(), 0xFF00FF00U);
    EXPECT_EQ(Bitmap(std::shared_ptr<Host::Stream>(std::make_shared<OneWayStream>(FourColors()))).get_Width(), 2);
}

TEST_F(BitmapIo, AFailedLoadLeavesTheBitmap) {
    Bitmap bitmap(RgbColor::Red, 5, 5, PixelFormat::Format24bppRgb);
    int changed = 0;
    const auto onChanged = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) { ++changed; });
    EXPECT_THROW(bitmap.Load(File("missing.bmp")), Host::FileNotFoundException);
    EXPECT_THROW(bitmap.Load(StreamOf({1, 2, 3})), MediaUnsupportedException);
    EXPECT_THROW(bitmap.Load(StreamOf(BmpFile(0, 2, 24, 0, {}, {}))), MediaCorruptedException);
    EXPECT_ANY_THROW(bitmap.Load(StreamOf(BmpFile(9, 9, 24, 0, {}, {1}))));
    EXPECT_THROW(bitmap.Load(StreamOf(BmpFile(9, 9, 7, 0, {}, {1}))), UnsupportedPixelFormatException);
    EXPECT_THROW(bitmap.LoadThumbnail(StreamOf(FourColors()), -1, 5), Host::ArgumentOutOfRangeException);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(bitmap.GetPixel(4, 4).ToInt32(), 0xFFFF0000U);
    bitmap.LoadThumbnail(StreamOf(BlackFile(30, 30)), 3, 0);
    EXPECT_EQ(bitmap.get_Width(), 3);
    EXPECT_EQ(changed, 1);
    bitmap.Dispose();
    EXPECT_THROW(bitmap.Load(StreamOf(FourColors())), Host::ObjectDisposedException);
}

// Rows are gray 0, 90, 180, 255. Nearest takes the first and the third; samples of Anisotropic4 stand at 0, 1 and 3, 3, those
// of Anisotropic9 at 0, 1, 2 and 3, 3, 3; the filter weighs the outer rows 0.5524 and the inner ones 0.4476.
TEST_F(BitmapIo, ThumbnailsInEachMode) {
    Bytes pixels;
    for (const int gray : {255, 180, 90, 0}) {
        pixels.insert(pixels.end(), {std::uint8_t(gray), std::uint8_t(gray), std::uint8_t(gray), 0});
    }
    const Bytes file = BmpFile(1, 4, 24, 0, {}, pixels);
    const auto grays = [&](Transforms::InterpolationMode mode) {
        Bitmap bitmap;
        bitmap.LoadThumbnail(StreamOf(file), 0, 2, mode);
        EXPECT_EQ(bitmap.get_Width(), 1);
        EXPECT_EQ(bitmap.get_PixelFormat(), PixelFormat::Format32bppArgb);
        return std::pair(bitmap.GetPixel(0, 0).GetChannel(0) + 0, bitmap.GetPixel(0, 1).GetChannel(0) + 0);
    };
    using enum Transforms::InterpolationMode;
    EXPECT_EQ(grays(NearestNeighbour), std::pair(0, 180));
    EXPECT_EQ(grays(Anisotropic4), std::pair(45, 255));
    EXPECT_EQ(grays(Anisotropic9), std::pair(90, 255));
    EXPECT_EQ(grays(Lanczos3Filter), std::pair(40, 221));
    for (const auto mode : {HighQuality, Bilinear, ScaleToGray, static_cast<Transforms::InterpolationMode>(99)}) {
        EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { grays(mode); }), "interpolationMode");
    }
    Bitmap bitmap;
    bitmap.LoadThumbnail(Write("gray.bmp", file), 1, 0, NearestNeighbour);
    EXPECT_EQ(bitmap.get_Height(), 4) << "the box is as wide as the image";
}

TEST_F(BitmapIo, SavesByExtensionAndByOptions) {
    RegisterTestFormat();
    Bitmap bitmap(StreamOf(FourColors()));
    bitmap.Save(File("plain.BMP"));
    Bytes expected = FourColors();
    expected[34] = 16;
    EXPECT_EQ(Read("plain.BMP"), expected);
    bitmap.Save(File("gray.tst"));
    // 30, 59 and 11 parts of blue, green and red.
    EXPECT_EQ(Read("gray.tst"), TestFile(1, 2, 2, {28, 150, 76, 255}));
    CustomEncoderOptions options(TestFormat);
    const auto stream = StreamOf({});
    bitmap.Save(stream, &options);
    EXPECT_EQ(stream->GetBuffer(), Read("gray.tst"));
    const BmpEncoderOptions rle(CompressionType::Rle);
    const ColorPalette gray(ColorPaletteType::GrayScale);
    Bitmap indexed(RgbColor::White, 6, 1, PixelFormat::Format8bppIndexed, &gray);
    indexed.Save(File("rle.bmp"), &rle);
    EXPECT_EQ(Read("rle.bmp")[30], 1);
    EXPECT_EQ(Bitmap(File("rle.bmp")).GetPixel(5, 0).ToInt32(), 0xFFFFFFFFU);
    EXPECT_THROW(bitmap.Save(File("other.xyz")), MediaUnsupportedException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { bitmap.Save(File("x.bmp"), nullptr); }), "options");
    EXPECT_EQ(CountFiles(), 3U);
}

TEST_F(BitmapIo, SavingEventsComeOutsideTheLock) {
    Bitmap bitmap(StreamOf(FourColors()));
    std::string order;
    const auto saving = bitmap.Saving.Subscribe([&](BitmapSavingEventArgs& args) {
        EXPECT_EQ(dynamic_cast<const BmpEncoderOptions&>(*args.get_Options()).get_Compression(), CompressionType::None);
        EXPECT_EQ(bitmap.get_Width(), 2);
        order += "s";
    });
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
        order += args.get_Current() == args.get_Maximum() ? "9" : "";
    });
    const auto saved = bitmap.Saved.Subscribe([&](EventArgs&) {
        EXPECT_EQ(bitmap.get_Width(), 2);
        order += "S";
    });
    bitmap.Save(File("a.bmp"));
    EXPECT_EQ(order, "s9S");
    const Bytes before = Read("a.bmp");
    bitmap.Clear(RgbColor::Black);
    const auto cancel = bitmap.Saving.Subscribe([](BitmapSavingEventArgs& args) { args.set_Cancel(true); });
    EXPECT_THROW(bitmap.Save(File("a.bmp")), AbortedException);
    EXPECT_EQ(Read("a.bmp"), before);
    EXPECT_EQ(order, "s9Ss");
    EXPECT_EQ(CountFiles(), 1U);
    EXPECT_FALSE(bitmap.get_Locked());
}

TEST_F(BitmapIo, AFailedOrAbortedSaveLeavesTheOldFile) {
    const Bytes old = {'o', 'l', 'd'};
    Write("a.bmp", old);
    const BmpEncoderOptions rle(CompressionType::Rle);
    Bitmap bitmap(RgbColor::Red, 300, 300, PixelFormat::Format24bppRgb);
    EXPECT_THROW(bitmap.Save(File("a.bmp"), &rle), Host::ArgumentException);
    Bitmap empty;
    EXPECT_THROW(empty.Save(File("a.bmp")), BitmapEmptyException);
    {
        const auto view = bitmap.LockBits();
        EXPECT_THROW(bitmap.Save(File("a.bmp")), BitmapLockedException);
        bitmap.UnlockBits(view);
    }
    const auto abort = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
        if (args.get_Current() > 50) {
            bitmap.Abort();
        }
    });
    EXPECT_THROW(bitmap.Save(File("a.bmp")), AbortedException);
    Bitmap wide(RgbColor::Red, 300, 300, PixelFormat::Format48bppRgb);
    const auto abortConversion = wide.Progress.Subscribe([&](ProgressEventArgs&) { wide.Abort(); });
    EXPECT_THROW(wide.Save(File("a.bmp")), AbortedException);
    EXPECT_EQ(Read("a.bmp"), old);
    EXPECT_EQ(CountFiles(), 1U);
    EXPECT_FALSE(bitmap.get_Locked() || wide.get_Locked());
}

TEST_F(BitmapIo, AHandlerAbortsALoad) {
    Bitmap bitmap(RgbColor::Red, 5, 5, PixelFormat::Format24bppRgb);
    auto abort = bitmap.Progress.Subscribe([&](ProgressEventArgs&) { bitmap.Abort(); });
    EXPECT_THROW(bitmap.Load(StreamOf(BlackFile(100, 400))), AbortedException);
    EXPECT_EQ(bitmap.get_Width(), 5);
    abort.Unsubscribe();
    EXPECT_NO_THROW(bitmap.Load(StreamOf(BlackFile(100, 400)))) << "the request ends with the operation";
    const auto fail = bitmap.Progress.Subscribe([](ProgressEventArgs&) { throw Host::IOException("mine"); });
    EXPECT_EQ(ThrownText<Host::IOException>([&] { bitmap.Load(StreamOf(BlackFile(100, 400))); }), "mine");
    EXPECT_FALSE(bitmap.get_Locked());
}

TEST_F(BitmapIo, TheTimeLimitEndsTheWork) {
    TestReader reader;
    reader.Open(StreamOf(TestFile(1, 1, 1, {1})));
    reader.set_Timeout(5);
    reader.Work = [](TestReader& self) {
        self.ResetEvents(2);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        self.UpdateEvents();
    };
    const auto frame = reader.LoadFrame(0);
    Bitmap bitmap;
    EXPECT_THROW(frame->GetBitmap(&bitmap), TimeoutException);
    TestWriter writer;
    writer.Open(StreamOf({}));
    writer.set_Timeout(5);
    writer.Work = [](TestWriter& self) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        self.UpdateEvents();
    };
    Bitmap gray(1, 1, PixelFormat::Format8bppGrayScale);
    BmpFrame out(&gray);
    EXPECT_THROW(writer.AddFrame(&out), TimeoutException);
    EXPECT_FALSE(bitmap.get_Locked() || reader.get_Locked() || writer.get_Locked());
}

/// Reports steps until it is stopped, at most for ten seconds.
void WorkUntilStopped(TestReader& self, std::atomic<bool>& working) {
    self.ResetEvents(10000);
    for (int i = 0; i < 10000; ++i) {
        self.UpdateEvents();
        working = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TEST(BitmapIoThreading, AnotherThreadAbortsALoad) {
    std::atomic<bool> working{false};
    TestReader reader;
    reader.Open(StreamOf(TestFile(1, 1, 1, {1})));
    reader.Work = [&](TestReader& self) { WorkUntilStopped(self, working); };
    Bitmap bitmap;
    const auto forward =
        reader.Progress.Subscribe([&](ProgressEventArgs& args) { bitmap._OnProgress(&reader, args); });
    for (const bool byBitmap : {false, true}) {
        working = false;
        std::thread other([&] {
            while (!working) {
                std::this_thread::yield();
            }
            byBitmap ? bitmap.Abort() : reader.Abort();
        });
        EXPECT_THROW(reader.LoadFrame(0)->GetBitmap(&bitmap), AbortedException);
        other.join();
        EXPECT_FALSE(bitmap.get_Locked() || reader.get_Locked());
    }
}

TEST(BitmapIoThreading, AbortOfAWriterReachesTheReader) {
    std::atomic<bool> working{false};
    TestReader reader;
    reader.Open(StreamOf(TestFile(1, 1, 1, {1})));
    reader.Work = [&](TestReader& self) { WorkUntilStopped(self, working); };
    BmpWriter writer(StreamOf({}));
    std::thread other([&] {
        while (!working) {
            std::this_thread::yield();
        }
        writer.Abort();
    });
    const auto frame = reader.LoadFrame(0);
    EXPECT_THROW(writer.AddFrame(frame.get()), AbortedException);
    other.join();
    EXPECT_FALSE(writer.get_Locked() || reader.get_Locked());
    reader.Work = {};
    EXPECT_NO_THROW(writer.AddFrame(frame.get()));
}

TEST(BitmapIoThreading, ManyThreadsLoadAndSaveAtOnce) {
    RegisterTestFormat();
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                Bitmap bitmap(StreamOf(FourColors()));
                const auto stream = StreamOf({});
                CustomEncoderOptions options(TestFormat);
                bitmap.Save(stream, &options);
                Bitmap back(StreamOf(stream->GetBuffer()));
                good += back.GetPixel(1, 1).ToInt32() == 0xFFFFU ? 1 : 0;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, 80);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
