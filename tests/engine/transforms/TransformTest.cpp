#include "transforms/PerChannelTransform.h"

#include "EventsProbe.h"
#include "ResizeReference.h"
#include "transforms/FormatSets.h"
#include "transforms/TransformHelpers.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

namespace ImagingFramework {
namespace {

using Testing::NoiseRaster;
using Testing::SamePixels;

/// Makes its destination, then does what the test asks for.
class ProbeTransform final : public PerChannelTransform {
public:
    std::function<void()> Body = [] {};
    bool Explicit = false;

protected:
    void ApplyTransformInternal() override {
        CheckBitmaps();
        InitializeDestination(Explicit, 3, 2, PixelFormat::Format32bppArgb);
        PrepareProgress(2);
        Body();
    }
    bool IsFormatAccepted(PixelFormat format) const override { return IsWholeFormat(format); }
};

template <class Failure> void ExpectFailure(Transform& transform, const BitmapData* source, const RegionRect* region,
                                            std::unique_ptr<BitmapData>& slot, const std::string& text) {
    try {
        transform.ApplyTransform(source, region, slot);
        ADD_FAILURE() << "no failure, expected " << text;
    } catch (const Failure& e) {
        EXPECT_NE(std::string(e.what()).find(text), std::string::npos) << e.what();
    }
}

TEST(Transform, ChecksItsSourceBeforeAnythingElse) {
    ProbeTransform transform;
    std::unique_ptr<BitmapData> slot;
    ExpectFailure<ArgumentNullPointerException>(transform, nullptr, nullptr, slot, "source bitmap data");
    auto same = std::make_unique<BitmapData>(2, 2, PixelFormat::Format24bppRgb);
    const BitmapData* const source = same.get();
    ExpectFailure<UnexpectedException>(
        transform, source, nullptr, same,
        "Inplace effects are not supported. Source and destination bitmaps cannot be the same.");
    const BitmapData indexed(2, 2, PixelFormat::Format8bppIndexed);
    ExpectFailure<UnsupportedPixelFormatException>(transform, &indexed, nullptr, slot, "");
    const BitmapData thin(0, 2, PixelFormat::Format24bppRgb);
    ExpectFailure<ArgumentException>(transform, &thin, nullptr, slot, "Source width cannot be zero");
    const BitmapData flat(2, 0, PixelFormat::Format24bppRgb);
    ExpectFailure<ArgumentException>(transform, &flat, nullptr, slot, "Source height cannot be zero");
    EXPECT_EQ(slot, nullptr);
}

TEST(Transform, ChecksTheRegion) {
    ProbeTransform transform;
    std::unique_ptr<BitmapData> slot;
    const BitmapData source(4, 3, PixelFormat::Format24bppRgb);
    for (const RegionRect outside : {RegionRect{-1, 0, 1, 1}, RegionRect{0, 0, 4, 1}, RegionRect{0, -1, 1, 1}, RegionRect{0, 0, 1, 3}}) {
        ExpectFailure<ArgumentOutOfRangeException>(
            transform, &source, &outside, slot,
            "Coordinates of all points of the rectangle must be inside source image.");
    }
    const RegionRect leftRight{2, 0, 1, 1};
    ExpectFailure<ArgumentException>(transform, &source, &leftRight, slot, "Left coordinate cannot be greater than right.");
    const RegionRect topBottom{0, 2, 1, 1};
    ExpectFailure<ArgumentException>(transform, &source, &topBottom, slot, "Top coordinate cannot be greater than bottom.");
    EXPECT_EQ(slot, nullptr);
}

TEST(Transform, AFailedRunLeavesNothingOfItsOwn) {
    const BitmapData source = NoiseRaster(4, 3, PixelFormat::Format24bppRgb, 1);
    const BitmapData before(source);
    ProbeTransform transform;
    std::unique_ptr<BitmapData> slot;
    transform.Body = [] { throw AbortedException(); };
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, slot), AbortedException);
    EXPECT_EQ(slot, nullptr);
    transform.Body = [] { throw std::runtime_error("foreign"); };
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, slot), UnexpectedException);
    transform.Body = [] { throw std::bad_alloc(); };
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, slot), MemoryException);
    EXPECT_EQ(slot, nullptr);
    // A raster of the caller's stays where it is.
    slot = std::make_unique<BitmapData>(9, 9, PixelFormat::Format8bppGrayScale);
    const BitmapData* const supplied = slot.get();
    EXPECT_THROW(transform.ApplyTransform(&source, nullptr, slot), MemoryException);
    EXPECT_EQ(slot.get(), supplied);
    transform.Body = [] {};
    transform.ApplyTransform(&source, nullptr, slot);
    EXPECT_EQ(slot.get(), supplied);
    EXPECT_EQ(slot->GetWidth(), 4U);
    EXPECT_TRUE(SamePixels(source, before));
}

TEST(Transform, DestinationsInheritWhatFits) {
    BitmapData source = NoiseRaster(4, 3, PixelFormat::Format24bppRgb, 1);
    source.SetHorizontalResolution(300);
    const std::uint8_t profile[] = {1, 2, 3};
    source.SetProfile(profile, 3);
    ProbeTransform transform;
    std::unique_ptr<BitmapData> slot;
    transform.ApplyTransform(&source, nullptr, slot);
    EXPECT_DOUBLE_EQ(slot->GetHorizontalResolution(), 300.0);
    EXPECT_EQ(slot->GetProfileFile(), source.GetProfileFile());
    transform.Explicit = true;
    slot.reset();
    transform.ApplyTransform(&source, nullptr, slot);
    EXPECT_EQ(slot->GetWidth(), 3U);
    EXPECT_EQ(slot->GetPixelFormat(), PixelFormat::Format32bppArgb);
    EXPECT_EQ(slot->GetProfileFile(), nullptr);
    EXPECT_DOUBLE_EQ(slot->GetHorizontalResolution(), 300.0);
}

TEST(Transform, UnselectedChannelsKeepTheirValues) {
    const BitmapData source = NoiseRaster(7, 5, PixelFormat::Format48bppRgb, 1);
    ProbeTransform transform;
    transform.GetChannels().SelectChannels(1, 1);
    const RegionRect region{2, 1, 5, 3};
    std::unique_ptr<BitmapData> slot;
    transform.ApplyTransform(&source, &region, slot);
    BitmapData part;
    part.AttachPartially(source, {2, 1, 6, 4});
    EXPECT_TRUE(SamePixels(*slot, part));
    transform.GetChannels().SelectAllChannels();
    slot.reset();
    transform.ApplyTransform(&source, &region, slot);
    EXPECT_TRUE(SamePixels(*slot, BitmapData(4, 3, PixelFormat::Format48bppRgb)));
}

TEST(Transform, NestedRunsDoNotEnlargeTheTotal) {
    const BitmapData source = NoiseRaster(4, 3, PixelFormat::Format24bppRgb, 1);
    Testing::EventsProbe events;
    ProbeTransform transform;
    transform.SetEvents(&events);
    std::unique_ptr<BitmapData> slot;
    transform.ApplyTransform(&source, nullptr, slot);
    EXPECT_EQ(events.Announced(), 2);
    transform.SetProgressTotalEnabled(false);
    transform.SetTimeout(100000);
    transform.Body = [&] { transform.UpdateEvents(1); };
    transform.ApplyTransform(&source, nullptr, slot);
    EXPECT_EQ(events.Announced(), 2);
}

TEST(Transform, ResolvesQualityLevelsByFormat) {
    using enum InterpolationMode;
    const auto resolve = &Transform::ValidateInterpolationMode;
    const PixelFormat rgb = PixelFormat::Format24bppRgb;
    const PixelFormat indexed = PixelFormat::Format4bppIndexed;
    const PixelFormat packed = PixelFormat::Format16bppRgb565;
    EXPECT_EQ(resolve(LowQuality, rgb, true, true), NearestNeighbour);
    EXPECT_EQ(resolve(MediumQuality, rgb, true, true), Bilinear);
    EXPECT_EQ(resolve(HighQuality, rgb, true, true), Lanczos3Filter);
    EXPECT_EQ(resolve(HighQuality, rgb, false, true), Anisotropic9);
    EXPECT_EQ(resolve(HighQuality, rgb, false, false), Bilinear);
    EXPECT_EQ(resolve(LowQuality, indexed, true, true), NearestNeighbour);
    EXPECT_EQ(resolve(MediumQuality, indexed, true, true), ScaleToGray);
    EXPECT_EQ(resolve(HighQuality, indexed, true, true), ScaleToGray);
    for (const InterpolationMode mode : {LowQuality, MediumQuality, HighQuality}) {
        EXPECT_EQ(resolve(mode, packed, true, true), NearestNeighbour);
    }
    EXPECT_EQ(resolve(BellFilter, packed, true, true), BellFilter);
}

TEST(Transform, FitsColoursToPixels) {
    const Transform::ColorRecord color{0x1234, 0x5678, 0x9ABC, 0xDEF0, 0x1122};
    const auto bytes = Transform::FitColorToFormat(color, PixelFormat::Format40bppAcmyk);
    EXPECT_EQ(bytes[0], 0x12);
    EXPECT_EQ(bytes[4], 0x11);
    const auto words = Transform::FitColorToFormat(color, PixelFormat::Format80bppAcmyk);
    EXPECT_EQ(words[0], 0x34);
    EXPECT_EQ(words[1], 0x12);
    EXPECT_EQ(words[9], 0x11);
    EXPECT_THROW(Transform::FitColorToFormat(color, PixelFormat::Format8bppIndexed), UnsupportedPixelFormatException);
    EXPECT_THROW(Transform::FitColorToFormat(color, PixelFormat::Format4bppIndexed), UnsupportedPixelFormatException);
}

TEST(Transform, FormatSetsHoldTheirMembers) {
    const auto count = [](bool (*set)(PixelFormat)) {
        const auto formats = AllPixelFormats();
        return std::count_if(formats.begin(), formats.end(), set);
    };
    // 21 formats in all: 3 indexed, 3 packed, 15 whole ones (4 of them CMYK, 4 gray).
    EXPECT_EQ(count(&IsAnyFormat), 21);
    EXPECT_EQ(count(&IsWholeFormat), 15);
    EXPECT_EQ(count(&IsWholeNoCmykFormat), 11);
    EXPECT_EQ(count(&IsWholeRgbFormat), 7);
    EXPECT_EQ(count(&IsWholeOrBilevelFormat), 16);
    EXPECT_EQ(count(&IsWholeOrIndexedFormat), 18);
    EXPECT_EQ(count(&IsByteAlignedFormat), 19);
    EXPECT_EQ(count(&IsPlainRgbFormat), 5);
    EXPECT_EQ(count(&IsNoAlphaFormat), 7);
}

TEST(TransformHelpers, NormalizeAndFade) {
    EXPECT_DOUBLE_EQ(NormalizeDegrees(725.5), 5.5);
    EXPECT_DOUBLE_EQ(NormalizeDegrees(-90.25), 269.75);
    EXPECT_DOUBLE_EQ(NormalizeDegrees(360.0), 0.0);
    EXPECT_EQ(NormalizeDegrees(1e300), 0.0);
    EXPECT_DOUBLE_EQ(FadeFactor(3, 4, FadeType::Linear), 0.75);
    EXPECT_NEAR(FadeFactor(1, 3, FadeType::Nonlinear), 0.5, 1e-15); // sin 30 degrees
    EXPECT_EQ(FadeFactor(3, 4, FadeType::None), 0.0);
    EXPECT_EQ(FadeFactor(3, 0.001, FadeType::Linear), 0.0);
}

} // namespace
} // namespace ImagingFramework
