// Masks and channel selection, on transforms that exist here alone: a host's transforms come with their own engines.

#include "Common/PixelWalker.h"
#include "transforms/PerChannelTransform.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/PerChannelBitmapTransform.h>

#include "Throws.h"

#include <gtest/gtest.h>

namespace Corvane::Rasterloom {
namespace {

namespace engine = ImagingFramework;

/// Sets every selected channel to its maximum; indexed pixels to the index of all ones.
class WhitenTransform final : public engine::PerChannelTransform {
protected:
    void ApplyTransformInternal() override {
        CheckBitmaps();
        InitializeDestination(false, 0, 0, engine::PixelFormat::Format24bppRgb);
        PrepareProgress(m_uintRegionHeight);
        if (!engine::PixelFormatIsWholeChannel(m_enSourceFormat)) {
            std::fill_n(m_pDestination->GetPixelsRef(), m_pDestination->GetStride() * m_uintRegionHeight, 0xFF);
            UpdateEvents(static_cast<std::int32_t>(m_uintRegionHeight));
            return;
        }
        engine::PixelWalker<std::uint16_t, std::uint32_t> walker(*m_pDestination, nullptr, m_channels.GetIsAlphaProcessed());
        if (m_channels.HasSelectedChannels(m_enSourceFormat)) {
            m_channels.RestrictChannelsInWalker(walker);
            do {
                do {
                    walker.SetChannelInt(65535);
                } while (walker.NextChannel());
            } while (walker.NextPixel());
        }
        UpdateEvents(static_cast<std::int32_t>(m_uintRegionHeight));
    }
    bool IsFormatAccepted(engine::PixelFormat) const override { return true; }
};

class Whiten final : public Transforms::PerChannelBitmapTransform {
public:
    Whiten() : PerChannelBitmapTransform(BitmapChange::Custom, std::make_unique<WhitenTransform>()) {}
    explicit Whiten(const std::vector<bool>& channels)
        : PerChannelBitmapTransform(BitmapChange::Custom, std::make_unique<WhitenTransform>(), channels) {}
};

TEST(PerChannelBitmapTransform, TouchesTheSelectedChannelsAlone) {
    Bitmap bitmap(Color::FromArgb(10, 20, 30, 40), 3, 3, PixelFormat::Format32bppArgb);
    Whiten green({false, true, false});
    EXPECT_EQ(green.get_Channels(), (std::vector<bool>{false, true, false, true, true}));
    green.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.GetPixel(2, 2).ToInt32(), 0x0A14FF28U);
    green.DeselectAllChannels();
    green.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.GetPixel(1, 0).ToInt32(), 0x0A14FF28U);
    green.SelectAllChannels();
    green.set_ApplyOnAlpha(true);
    green.ApplyTransform(bitmap);
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFFFFFFFFU);
    EXPECT_EQ(ThrownText<Host::ArgumentOutOfRangeException>([&] { green.set_Channels({true}); }),
              "The array should have 5 elements.");
}

/// Works on a part of its source.
class WhitenPart final : public Transforms::BitmapTransform {
public:
    explicit WhitenPart(const Host::Rectangle& part)
        : BitmapTransform(BitmapChange::Custom, std::make_unique<WhitenTransform>()), m_part(part) {}

protected:
    Host::Rectangle OnTransforming() override { return m_part; }

private:
    Host::Rectangle m_part;
};

TEST(BitmapTransform, WorksOnThePartThatItNames) {
    const auto sizeOf = [](const Host::Rectangle& part) {
        Bitmap bitmap(5, 4, PixelFormat::Format24bppRgb);
        WhitenPart(part).ApplyTransform(bitmap);
        return std::pair(bitmap.get_Width(), bitmap.get_Height());
    };
    EXPECT_EQ(sizeOf({1, 2, 3, 2}), std::pair(3, 2));
    EXPECT_EQ(sizeOf({1, 2, 0, 2}), std::pair(5, 4)) << "no width means the whole";
    EXPECT_THROW(sizeOf({1, 2, -1, 2}), Host::ArgumentException);
    EXPECT_THROW(sizeOf({1, 2, 2147483647, 2}), Host::ArgumentOutOfRangeException);
}

/// A mask of 0, 128, 255 from the left.
std::unique_ptr<Bitmap> ThreeStepMask() {
    PixelArray array(3, 1, 1);
    array(1, 0, 0) = 128;
    array(2, 0, 0) = 255;
    return std::make_unique<Bitmap>(array, PixelFormat::Format8bppGrayScale);
}

TEST(MaskedBitmapTransform, MixesByTheMaskInIntegers) {
    const auto mask = ThreeStepMask();
    Whiten whiten;
    Bitmap bytes(Color::FromRgb(100, 0, 50), 3, 1, PixelFormat::Format24bppRgb);
    whiten.ApplyMaskTransform(bytes, *mask);
    EXPECT_EQ(bytes.GetPixel(0, 0).ToInt32(), 0xFF640032U);
    // (127 * 100 + 128 * 255) / 255 = 177, 128, (127 * 50 + 128 * 255) / 255 = 152
    EXPECT_EQ(bytes.GetPixel(1, 0).ToInt32(), 0xFFB18098U);
    EXPECT_EQ(bytes.GetPixel(2, 0).ToInt32(), 0xFFFFFFFFU);

    Bitmap words(Color::FromRgb32(1000, 0, 0), 3, 1, PixelFormat::Format48bppRgb);
    whiten.ApplyMaskTransform(words, *mask);
    // The 8-bit weight on 16-bit samples: (127 * 1000 + 128 * 65535) / 255
    EXPECT_EQ(words.GetPixel(1, 0).GetChannel32(2), 33394);

    Bitmap source(Color::FromRgb(100, 0, 50), 3, 1, PixelFormat::Format24bppRgb);
    Bitmap destination;
    whiten.ApplyMaskTransform(source, destination, *mask);
    EXPECT_EQ(source.GetPixel(2, 0).ToInt32(), 0xFF640032U);
    EXPECT_EQ(destination.GetPixel(0, 0).ToInt32(), 0xFF640032U);
    EXPECT_EQ(destination.GetPixel(2, 0).ToInt32(), 0xFFFFFFFFU);
}

TEST(MaskedBitmapTransform, MixesIndexedPixelsThroughTheirPalette) {
    Bitmap bitmap(3, 1, PixelFormat::Format4bppIndexed);
    bitmap.get_Palette()->set_Item(15, RgbColor::White);
    bitmap.get_Palette()->set_Item(3, RgbColor(Color::FromRgb(130, 130, 130)));
    Whiten whiten;
    whiten.ApplyMaskTransform(bitmap, *ThreeStepMask());
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFF000000U);
    EXPECT_EQ(bitmap.GetPixel(1, 0).ToInt32(), 0xFF828282U);
    EXPECT_EQ(bitmap.GetPixel(2, 0).ToInt32(), 0xFFFFFFFFU);
}

TEST(MaskedBitmapTransform, WorksOnAPartOfABitmap) {
    Bitmap bitmap(5, 5, PixelFormat::Format24bppRgb);
    int changes = 0;
    const auto changed = bitmap.Changed.Subscribe([&](BitmapChangedEventArgs&) { ++changes; });
    const auto view = bitmap.LockBits(1, 2, 2, 2);
    Whiten().ApplyTransform(*view);
    EXPECT_FALSE(view->get_Locked());
    view->Dispose();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(bitmap.GetPixel(1, 2).ToInt32(), 0xFFFFFFFFU);
    EXPECT_EQ(bitmap.GetPixel(2, 3).ToInt32(), 0xFFFFFFFFU);
    EXPECT_EQ(bitmap.GetPixel(3, 2).ToInt32(), 0xFF000000U);
    EXPECT_EQ(bitmap.GetPixel(1, 4).ToInt32(), 0xFF000000U);
}

TEST(MaskedBitmapTransform, RefusesMasksThatDoNotFitAndFreesEverything) {
    Bitmap bitmap(3, 1, PixelFormat::Format24bppRgb);
    Whiten whiten;
    Bitmap large(4, 1, PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { whiten.ApplyMaskTransform(bitmap, large); }),
              "Dimensions bitmap and mask bitmap are not the same.");
    Bitmap colored(3, 1, PixelFormat::Format24bppRgb);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { whiten.ApplyMaskTransform(bitmap, colored); }),
              "Pixel format of mask bitmap has an unappropriate value.");
    Bitmap empty;
    EXPECT_EQ(ThrownText<BitmapEmptyException>([&] { whiten.ApplyMaskTransform(bitmap, empty); }),
              "Bitmap \"mask\" has not been filled up with data.");
    EXPECT_THROW(whiten.ApplyMaskTransform(bitmap, bitmap), ObjectLockedException);
    EXPECT_FALSE(bitmap.get_Locked());
    EXPECT_FALSE(large.get_Locked());
    EXPECT_FALSE(whiten.get_Locked());
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFF000000U);
    Bitmap packed(3, 1, PixelFormat::Format16bppRgb565);
    EXPECT_THROW(whiten.ApplyMaskTransform(packed, *ThreeStepMask()), UnsupportedPixelFormatException);
    whiten.ApplyTransform(bitmap); // the mask is forgotten
    EXPECT_EQ(bitmap.GetPixel(0, 0).ToInt32(), 0xFFFFFFFFU);
}

} // namespace
} // namespace Corvane::Rasterloom
