#include "TestFiles.h"
#include "TestFormat.h"
#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>
#include <Corvane/Rasterloom/Codecs/BmpWriter.h>
#include <Corvane/Rasterloom/ColorPalette.h>

#include <optional>

namespace Corvane::Rasterloom::Codecs {
namespace {

TEST(Frame, PropertiesAreThoseOfTheFile) {
    BmpReader reader(StreamOf(FourColors()));
    EXPECT_TRUE(reader.get_Opened());
    EXPECT_EQ(reader.get_FrameCount(), 1);
    const auto frame = reader.LoadFrame(0);
    EXPECT_EQ(frame->get_Index(), 0);
    EXPECT_EQ(frame->get_Name(), "");
    EXPECT_EQ(frame->get_Width(), 2);
    EXPECT_EQ(frame->get_Height(), 2);
    EXPECT_EQ(frame->get_PixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(frame->get_BitsPerPixel(), 24);
    EXPECT_TRUE(frame->get_IsRgb());
    EXPECT_FALSE(frame->get_HasAlpha());
    EXPECT_NEAR(frame->get_HorizontalResolution(), 99.9998F, 1e-4);
    EXPECT_EQ(frame->get_Left(), 0);
    frame->set_Left(7);
    EXPECT_EQ(frame->get_Left(), 7);
    EXPECT_EQ(dynamic_cast<BmpFrame&>(*frame).get_Compression(), CompressionType::None);
    Bitmap bitmap;
    frame->GetBitmap(&bitmap);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFFFF0000U);
    EXPECT_EQ(bitmap.GetPixel(1, 0).ToInt32(), 0xFF00FF00U);
    EXPECT_EQ(bitmap.GetPixel(0, 1).ToInt32(), 0xFF0000FFU);
    EXPECT_EQ(bitmap.GetPixel(1, 1).ToInt32(), 0xFFFFFFFFU);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { frame->GetBitmap(nullptr); }), "bitmap");
    EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([&] { reader.LoadFrame(1); }),
              Host::ArgumentOutOfRangeException("index", "Index of frame is out of range.").get_Message());
    EXPECT_THROW(reader.LoadFrame(-1), Host::ArgumentOutOfRangeException);
}

TEST(Frame, AsksACustomReaderOnce) {
    TestReader reader;
    reader.Open(StreamOf(TestFile(2, 1, 1, {10, 20})));
    const auto first = reader.LoadFrame(0);
    const auto second = reader.LoadFrame(1);
    EXPECT_EQ(reader.ParameterLoads, 0);
    first->set_Top(77);
    EXPECT_EQ(first->get_Width(), 1);
    EXPECT_EQ(first->get_Name(), "named");
    EXPECT_FLOAT_EQ(first->get_VerticalResolution(), 200);
    EXPECT_EQ(first->get_Left(), 4);
    EXPECT_EQ(first->get_Top(), 77) << "what the host has set stays";
    EXPECT_EQ(reader.ParameterLoads, 1);
    EXPECT_EQ(second->get_Index(), 1);
    EXPECT_EQ(second->get_Top(), 5);
    EXPECT_EQ(reader.ParameterLoads, 2);
    Bitmap bitmap;
    second->GetBitmap(&bitmap);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32() & 0xFF, 20U);
    auto& custom = dynamic_cast<CustomFrame&>(*first);
    EXPECT_EQ(ThrownText<UnexpectedException>([&] { custom.set_FormatReaderTU(&reader); }),
              "Format reader cannot be initialized in this case.");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { custom.set_HorizontalResolutionTU(0); }),
              "horizontalResolution");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>(
                  [&] { custom.InitializeCustomFrameTU(9, 9, PixelFormat::Format24bppRgb, 72, 0); }),
              "verticalResolution");
    EXPECT_EQ(custom.get_PixelFormat(), PixelFormat::Format8bppGrayScale) << "all or nothing";
}

TEST(Frame, MayOutliveItsReader) {
    Bitmap bitmap;
    std::unique_ptr<IFrame> frame;
    std::unique_ptr<IFrame> untouched;
    std::optional<FramesEnumerator> frames;
    {
        BmpReader reader(StreamOf(FourColors()));
        frame = reader.LoadFrame(0);
        untouched = reader.LoadFrame(0);
        frames = reader.GetEnumerator();
        EXPECT_EQ(frame->get_Width(), 2);
        reader.Close();
        EXPECT_EQ(frame->get_Width(), 2) << "read before";
        EXPECT_EQ(ThrownText<ObjectNotOpenedException>([&] { (void)frame->get_Height(); }),
                  "Object \"reader\" has not been opened.");
        EXPECT_THROW(reader.LoadFrame(0), ObjectNotOpenedException);
        EXPECT_EQ(reader.get_FrameCount(), 0);
        reader.Open(StreamOf(BlackFile(5, 5)));
        EXPECT_THROW((void)frame->get_Height(), ObjectNotOpenedException) << "of another file";
        EXPECT_THROW(frame->GetBitmap(&bitmap), ObjectNotOpenedException);
    }
    EXPECT_EQ(ThrownText<UnexpectedException>([&] { (void)untouched->get_Height(); }),
              "The frame is not initialized by format reader instance.");
    EXPECT_THROW(untouched->GetBitmap(&bitmap), UnexpectedException);
    EXPECT_THROW(untouched->GetThumbnail(&bitmap, 1, 1), UnexpectedException);
    EXPECT_THROW(frames->MoveNext(), ObjectNotOpenedException);
    EXPECT_FALSE(bitmap.get_Locked());
    BmpFrame empty;
    EXPECT_THROW(empty.GetBitmap(&bitmap), UnexpectedException);
}

TEST(Frame, EnumeratorWalksOverAllFrames) {
    TestReader reader;
    reader.Open(StreamOf(TestFile(3, 1, 1, {1, 2, 3})));
    auto frames = reader.GetEnumerator();
    EXPECT_THROW(frames.get_Current(), Host::ArgumentOutOfRangeException);
    for (int round = 0; round < 2; ++round) {
        for (std::int32_t index = 0; index < 3; ++index) {
            ASSERT_TRUE(frames.MoveNext());
            EXPECT_EQ(frames.get_Current()->get_Index(), index);
        }
        EXPECT_FALSE(frames.MoveNext());
        EXPECT_FALSE(frames.MoveNext());
        frames.Reset();
    }
}

TEST(Frame, SetBitmapTakesACopy) {
    BmpFrame frame;
    {
        Bitmap bitmap(RgbColor::Red, 3, 2, PixelFormat::Format24bppRgb);
        frame.SetBitmap(&bitmap);
        bitmap.Clear(RgbColor::Blue);
    }
    EXPECT_EQ(frame.get_Width(), 3);
    EXPECT_EQ(frame.get_Height(), 2);
    Bitmap back;
    std::vector<int> changes;
    const auto changing =
        back.Changing.Subscribe([&](BitmapChangingEventArgs& args) { changes.push_back(int(args.get_Change())); });
    const auto changed =
        back.Changed.Subscribe([&](BitmapChangedEventArgs& args) { changes.push_back(int(args.get_Change())); });
    frame.GetBitmap(&back);
    EXPECT_EQ(back.GetPixel(2, 1).ToInt32(), 0xFFFF0000U);
    EXPECT_EQ(changes, (std::vector<int>{1, 1}));
    // The bitmap of the events is gone, which must not matter.
    const auto stream = StreamOf({});
    BmpWriter writer(stream);
    writer.AddFrame(&frame);
    writer.Close();
    EXPECT_EQ(stream->get_Length(), 54 + 2 * 12);
}

TEST(Frame, ThumbnailsFitIntoTheBoxAndAreNeverIndexed) {
    const auto size = [](Bitmap& bitmap) { return std::make_pair(bitmap.get_Width(), bitmap.get_Height()); };
    const ColorPalette gray(ColorPaletteType::GrayScale);
    Bitmap source(RgbColor::White, 40, 20, PixelFormat::Format8bppIndexed, &gray);
    BmpFrame frame(&source);
    BmpReader reader(StreamOf(BlackFile(40, 20)));
    const auto read = reader.LoadFrame(0);
    for (IFrame* const one : {static_cast<IFrame*>(&frame), read.get()}) {
        Bitmap thumbnail;
        std::vector<int> changes;
        const auto changed = thumbnail.Changed.Subscribe(
            [&](BitmapChangedEventArgs& args) { changes.push_back(int(args.get_Change())); });
        one->GetThumbnail(&thumbnail, 10, 10);
        EXPECT_EQ(size(thumbnail), std::make_pair(10, 5));
        EXPECT_FALSE(thumbnail.get_IsIndexed());
        one->GetThumbnail(&thumbnail, 0, 10);
        EXPECT_EQ(size(thumbnail), std::make_pair(20, 10));
        one->GetThumbnail(&thumbnail, 400, 400);
        EXPECT_EQ(size(thumbnail), std::make_pair(40, 20)) << "never larger";
        EXPECT_FALSE(thumbnail.get_IsIndexed());
        EXPECT_EQ(changes, (std::vector<int>{2, 2, 2}));
        EXPECT_EQ(thumbnail.GetPixel(5, 5).ToInt32() & 0xFFFFFF, one == &frame ? 0xFFFFFFU : 0U);
        EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([&] { one->GetThumbnail(&thumbnail, -1, 1); }),
                  Host::ArgumentOutOfRangeException("width", "Thumbnail width should be non-negative.").get_Message());
        EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { one->GetThumbnail(&thumbnail, 1, -1); }),
                  "height");
        EXPECT_THROW(one->GetThumbnail(&thumbnail, 0, 0), Host::ArgumentOutOfRangeException);
    }
    Bitmap thumbnailInMode;
    frame.GetThumbnail(&thumbnailInMode, 10, 10, Transforms::InterpolationMode::Anisotropic9);
    EXPECT_EQ(size(thumbnailInMode), std::make_pair(10, 5));
    EXPECT_THROW(frame.GetThumbnail(&thumbnailInMode, 10, 10, Transforms::InterpolationMode::Bilinear),
                 Host::ArgumentException);
    Bitmap packed(8, 8, PixelFormat::Format16bppRgb565);
    BmpFrame packedFrame(&packed);
    Bitmap thumbnail;
    packedFrame.GetThumbnail(&thumbnail, 4, 4);
    EXPECT_EQ(thumbnail.get_PixelFormat(), PixelFormat::Format24bppRgb);
    Bitmap nothing;
    BmpFrame emptyFrame(&nothing);
    EXPECT_THROW(emptyFrame.GetThumbnail(&thumbnail, 4, 4), BitmapEmptyException);
}

TEST(Frame, CustomReaderIsToldWhatToLoad) {
    TestReader reader;
    reader.Open(StreamOf(TestFile(1, 4, 4, std::vector<std::uint8_t>(16))));
    reader.Work = [](TestReader& self) {
        const bool thumbnail = self.GetLoadingMode() == LoadingMode::Thumbnail;
        EXPECT_EQ(self.GetThumbnailHeightToLoad(), thumbnail ? 3 : 0);
        Bitmap bitmap(thumbnail ? self.GetThumbnailWidthToLoad() : 4, 1, PixelFormat::Format8bppGrayScale);
        self.SetLoadedBitmap(&bitmap);
        EXPECT_TRUE(bitmap.get_IsEmpty());
    };
    const auto frame = reader.LoadFrame(0);
    Bitmap bitmap;
    frame->GetThumbnail(&bitmap, 2, 3);
    EXPECT_EQ(bitmap.get_Width(), 2);
    frame->GetBitmap(&bitmap);
    EXPECT_EQ(bitmap.get_Width(), 4);
    reader.Work = [](TestReader& self) {
        EXPECT_EQ(self.GetThumbnailInterpolationToLoad(), Transforms::InterpolationMode::Lanczos3Filter);
        Bitmap loaded(1, 1, PixelFormat::Format8bppGrayScale);
        self.SetLoadedBitmap(&loaded);
    };
    Bitmap reduced;
    dynamic_cast<Frame&>(*frame).GetThumbnail(&reduced, 2, 3, Transforms::InterpolationMode::Lanczos3Filter);
    reader.Work = [](TestReader&) {};
    EXPECT_THROW(frame->GetBitmap(&bitmap), UnexpectedException);
    reader.Work = [](TestReader&) { throw MediaCorruptedException(); };
    EXPECT_THROW(frame->GetBitmap(&bitmap), MediaCorruptedException);
    EXPECT_EQ(bitmap.get_Width(), 4);
    EXPECT_FALSE(bitmap.get_Locked() || reader.get_Locked());
    reader.Open(StreamOf(TestFile(1, 1, 1, {1})));
    EXPECT_EQ(reader.Closes, 1);
    EXPECT_THROW(reader.Open(StreamOf({1, 2})), MediaUnsupportedException);
    EXPECT_EQ(reader.Closes, 3) << "what was open, and what failed on its way";
    EXPECT_FALSE(reader.get_Opened());
}

TEST(Frame, ALoadCanBeFollowedByAnotherInItsLastEvent) {
    TestReader reader;
    reader.Open(StreamOf(TestFile(2, 1, 1, {10, 20})));
    const auto first = reader.LoadFrame(0);
    Bitmap bitmap;
    Bitmap next;
    Host::Subscription stopped;
    stopped = reader.Stopped.Subscribe([&](ErrorEventArgs&) {
        stopped.Unsubscribe();
        EXPECT_EQ(bitmap.get_Width(), 1) << "loaded and free";
        reader.LoadFrame(1)->GetBitmap(&next);
    });
    first->GetBitmap(&bitmap);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32() & 0xFF, 10U);
    EXPECT_EQ(next.GetPixel(0, 0).ToInt32() & 0xFF, 20U);
    EXPECT_FALSE(reader.get_Locked());
}

TEST(Frame, FailuresThatAreNotRaisedLeaveTheBitmap) {
    BmpReader reader(StreamOf(BmpFile(4, 4, 24, 0, {}, {1, 2, 3})));
    const auto frame = reader.LoadFrame(0);
    Bitmap bitmap(1, 1, PixelFormat::Format24bppRgb);
    int changed = 0;
    std::exception_ptr failure;
    const auto onChanged = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) { ++changed; });
    const auto onStopped = reader.Stopped.Subscribe([&](ErrorEventArgs& args) { failure = args.get_Exception(); });
    reader.set_ExceptionThrowEnabled(false);
    frame->GetBitmap(&bitmap);
    EXPECT_TRUE(failure);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(bitmap.get_Width(), 1);
    reader.set_ExceptionThrowEnabled(true);
    EXPECT_ANY_THROW(frame->GetBitmap(&bitmap));
    // A writer is told in either case.
    reader.set_ExceptionThrowEnabled(false);
    BmpWriter writer(StreamOf({}));
    EXPECT_ANY_THROW(writer.AddFrame(frame.get()));
    EXPECT_FALSE(reader.get_ExceptionThrowEnabled());
    EXPECT_FALSE(bitmap.get_Locked() || reader.get_Locked() || writer.get_Locked());
}

TEST(Frame, ARasterThatIsInUseIsRefusedBeforeTheWork) {
    BmpReader reader(StreamOf(FourColors()));
    const auto frame = reader.LoadFrame(0);
    Bitmap bitmap(3, 3, PixelFormat::Format24bppRgb);
    int starts = 0;
    const auto started = reader.Started.Subscribe([&](EventArgs&) { ++starts; });
    {
        const auto view = bitmap.LockBits();
        EXPECT_THROW(frame->GetBitmap(&bitmap), BitmapLockedException);
        bitmap.UnlockBits(view);
    }
    const auto cancel = bitmap.Changing.Subscribe([](BitmapChangingEventArgs& args) { args.set_Cancel(true); });
    EXPECT_THROW(frame->GetBitmap(&bitmap), AbortedException);
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(bitmap.get_Width(), 3);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
