#include "Common/IPixelFormatSupport.h"
#include "Common/IndexWalker.h"
#include "Common/PerChannelItem.h"
#include "Common/PixelWalker.h"
#include "Throws.h"

#include <gtest/gtest.h>
#include <vector>

namespace ImagingFramework {
namespace {

using ByteWalker = PixelWalker<std::uint8_t, int>;

std::vector<std::uint32_t> WalkChannels(IPixelParser& parser) {
    std::vector<std::uint32_t> values{parser.GetChannel()};
    while (parser.NextChannel()) {
        values.push_back(parser.GetChannel());
    }
    return values;
}

TEST(PixelParser, WalksTheChannelsThatAreAskedFor) {
    std::uint8_t pixel[] = {1, 2, 3, 4};
    const auto walk = [&](PixelFormat format, bool includeAlpha, std::span<const bool> selected = {}) {
        const auto parser = CreatePixelParser(format, includeAlpha, selected);
        parser->SetPixel(pixel);
        return WalkChannels(*parser);
    };
    using Values = std::vector<std::uint32_t>;
    EXPECT_EQ(walk(PixelFormat::Format32bppArgb, true), (Values{1, 2, 3, 4}));
    EXPECT_EQ(walk(PixelFormat::Format32bppArgb, false), (Values{1, 2, 3}));
    EXPECT_EQ(walk(PixelFormat::Format32bppRgb, true), (Values{1, 2, 3}));
    EXPECT_EQ(walk(PixelFormat::Format32bppAGrayScale, true), (Values{0x0201, 0x0403}));
    const bool firstThirdFourth[] = {true, false, true, true, true};
    EXPECT_EQ(walk(PixelFormat::Format32bppArgb, true, firstThirdFourth), (Values{1, 3, 4}));
    EXPECT_EQ(walk(PixelFormat::Format32bppArgb, false, firstThirdFourth), (Values{1, 3}));
}

TEST(PixelParser, SettersClampToTheSample) {
    for (const bool perChannel : {false, true}) {
        const bool second[] = {false, true};
        const std::span<const bool> selected = perChannel ? std::span<const bool>(second) : std::span<const bool>();
        std::uint8_t bytes[] = {9, 9};
        auto parser = CreatePixelParser(PixelFormat::Format16bppAGrayScale, true, selected);
        parser->SetPixel(bytes);
        std::uint8_t& target = bytes[perChannel ? 1 : 0];
        EXPECT_EQ(parser->SetChannel(200), 200U);
        EXPECT_EQ(target, 200);
        EXPECT_EQ(parser->SetChannelWord(300), 255U);
        EXPECT_EQ(parser->SetChannelInt(-1), 0U);
        EXPECT_EQ(target, 0);
        EXPECT_EQ(parser->SetChannelUInt(0xFFFFFFFFU), 255U);
        EXPECT_EQ(parser->SetChannelInt64(-5'000'000'000), 0U);
        EXPECT_EQ(parser->SetChannelUInt64(1ULL << 40), 255U);
        EXPECT_EQ(target, 255);
        EXPECT_EQ(parser->SetAlphaInt(256), 255U);
        EXPECT_EQ(bytes[1], 255);

        std::uint16_t words[] = {9, 9};
        parser = CreatePixelParser(PixelFormat::Format32bppAGrayScale, true, selected);
        parser->SetPixel(reinterpret_cast<std::uint8_t*>(words));
        EXPECT_EQ(parser->SetChannel(200), 200U);
        EXPECT_EQ(parser->SetChannelWord(60000), 60000U);
        EXPECT_EQ(words[perChannel ? 1 : 0], 60000);
        EXPECT_EQ(parser->SetChannelInt(70000), 65535U);
        EXPECT_EQ(parser->SetChannelInt64(-1), 0U);
        EXPECT_EQ(parser->SetAlpha(7), 7U);
        EXPECT_EQ(words[1], 7);
    }
}

TEST(PixelParser, AlphaIsOpaqueWhereThereIsNone) {
    std::uint8_t pixel[] = {1, 2, 3, 4, 5, 6};
    auto parser = CreatePixelParser(PixelFormat::Format24bppRgb, true);
    parser->SetPixel(pixel);
    EXPECT_EQ(parser->GetAlpha(), 255U);
    parser->SetAlphaInt(77);
    EXPECT_EQ(pixel[3], 4);
    parser = CreatePixelParser(PixelFormat::Format48bppRgb, true);
    parser->SetPixel(pixel);
    EXPECT_EQ(parser->GetAlpha(), 65535U);
    // Left out of the walk, alpha can still be read.
    parser = CreatePixelParser(PixelFormat::Format32bppArgb, false);
    parser->SetPixel(pixel);
    EXPECT_EQ(parser->GetAlpha(), 4U);
}

TEST(PixelWalker, VisitsARegionRowByRow) {
    BitmapData raster(4, 3, PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < 36; ++i) {
        raster.GetScanlineRef(i / 12)[i % 12] = static_cast<std::uint8_t>(i);
    }
    const RegionRect region{1, 1, 2, 2};
    ByteWalker walker(raster, &region, true);
    std::vector<int> seen;
    do {
        seen.push_back(walker.GetChannel());
    } while (walker.NextPixel());
    EXPECT_EQ(seen, (std::vector<int>{15, 18, 27, 30}));
    EXPECT_FALSE(walker.NextPixel());
    walker.ResetToFirstPixel();
    walker.ChooseChannels(2);
    EXPECT_EQ(walker.GetChannel(), 17);
    walker.ChooseChannels(0);
    EXPECT_EQ(walker.GetChannel(), 15);
    EXPECT_FALSE(walker.MoveTo(0, 0)); // no tables yet
    walker.InitRandomAccess();
    EXPECT_TRUE(walker.MoveTo(1, 1));
    EXPECT_EQ(walker.GetChannel(), 30);
    EXPECT_FALSE(walker.NextPixel());
    EXPECT_FALSE(walker.MoveTo(2, 0));
    EXPECT_FALSE(walker.MoveTo(0, -1));
    walker.SetOffset(-5, 1);
    EXPECT_TRUE(walker.MoveTo(5, 0));
    EXPECT_EQ(walker.GetChannel(), 27);
    EXPECT_TRUE(walker.NextPixel());
    EXPECT_EQ(walker.GetChannel(), 30);
}

TEST(PixelWalker, RefusesWhatItCannotWalk) {
    std::uint8_t buffer[64] = {};
    const auto make = [&](void* pixels, PixelFormat format, std::uint32_t width, std::uint32_t height) {
        ByteWalker walker(pixels, format, width, height, 16, true);
    };
    EXPECT_THROW(make(nullptr, PixelFormat::Format24bppRgb, 1, 1), ArgumentNullPointerException);
    EXPECT_EQ(ThrownText<ArgumentOutOfRangeException>([&] { make(buffer, PixelFormat::Format24bppRgb, 0, 1); }),
              "Argument 'width' is out of range (Value must be above zero.).");
    EXPECT_THROW(make(buffer, PixelFormat::Format4bppIndexed, 1, 1), UnsupportedPixelFormatException);
    EXPECT_THROW(make(buffer, PixelFormat::Format16bppRgb565, 1, 1), UnsupportedPixelFormatException);
    EXPECT_THROW(ByteWalker(BitmapData(), nullptr, true), NotInitializedException);
    ByteWalker walker(buffer, PixelFormat::Format24bppRgb, 2, 2, 16, true);
    EXPECT_EQ(ThrownText<ArgumentOutOfRangeException>([&] { walker.ChooseChannels(3); }),
              "Argument 'channelIndex' is out of range (The value should above above zero.).");
    EXPECT_THROW(walker.ChooseChannels(nullptr, 3), ArgumentNullPointerException);
    const bool flag = true;
    EXPECT_THROW(walker.ChooseChannels(&flag, 0), ArgumentOutOfRangeException);
}

TEST(PerChannelItem, SelectsAndCounts) {
    PerChannelItem item;
    EXPECT_TRUE(item.AreAllChannelsSelected(PixelFormat::Format32bppArgb));
    EXPECT_EQ(item.CountSelectedChannels(PixelFormat::Format32bppArgb), 3U); // alpha is left out
    item.SetIsAlphaProcessed(true);
    EXPECT_EQ(item.CountSelectedChannels(PixelFormat::Format32bppArgb), 4U);
    item.SelectChannels(1, 2);
    EXPECT_EQ(item.CountSelectedChannels(PixelFormat::Format32bppArgb), 2U);
    EXPECT_FALSE(item.HasSelectedChannels(PixelFormat::Format8bppGrayScale));
    item.SelectChannels(-1, 2);
    item.SelectChannels(0, 0);
    EXPECT_TRUE(item.GetIsChannelSelected(1)); // both calls changed nothing
    EXPECT_FALSE(item.GetIsChannelSelected(0));
    item.AddChannelsToSelection(4, 100);
    EXPECT_TRUE(item.GetIsChannelSelected(4));
    item.RemoveChannelsFromSelection(1, 1);
    EXPECT_FALSE(item.GetIsChannelSelected(1));
    EXPECT_THROW(item.GetIsChannelSelected(5), ArgumentOutOfRangeException);
    EXPECT_THROW(item.SetIsChannelSelected(5, true), ArgumentOutOfRangeException);

    BitmapData raster(1, 1, PixelFormat::Format32bppArgb);
    raster.GetScanlineRef(0)[2] = 42;
    ByteWalker walker(raster, nullptr, true);
    item.SelectChannels(2, 1);
    item.RestrictChannelsInWalker(walker);
    EXPECT_EQ(walker.GetChannel(), 42);
    EXPECT_FALSE(walker.NextChannel());
}

TEST(IndexWalker, StepsThroughPackedRows) {
    std::uint8_t row[] = {0b10110001, 0xC5};
    Index1bppWalker bits;
    bits.SetPosition(row, 2);
    std::vector<int> seen;
    for (int i = 0; i < 8; ++i, bits.NextPixel()) {
        seen.push_back(bits.GetIndex());
    }
    EXPECT_EQ(seen, (std::vector<int>{1, 1, 0, 0, 0, 1, 1, 1}));
    Index4bppWalker nibbles;
    nibbles.SetPosition(row, 4);
    EXPECT_EQ(nibbles.GetIndex(), 1);
    nibbles.NextPixel();
    EXPECT_EQ(nibbles.GetIndex(), 0xC);
    nibbles.SetIndex(0x3A);
    EXPECT_EQ(row[1], 0xA5);
    Index8bppWalker bytes;
    EXPECT_THROW(bytes.SetPosition(row, 1), ArgumentException);
    EXPECT_THROW(nibbles.SetPosition(row, 2), ArgumentException);
    EXPECT_THROW(bits.SetPosition(row, 8), ArgumentException);
}

class EverythingSupported final : public IPixelFormatSupportImpl {
protected:
    bool IsFormatAccepted(PixelFormat format) const override { return format != PixelFormat::Format48bppRgb; }
};

TEST(PixelFormatSupport, AnswersFromTheListOfEighteen) {
    const EverythingSupported support;
    std::vector<PixelFormat> list{PixelFormat::Format80bppAcmyk};
    support.GetSupportedPixelFormats(list);
    EXPECT_EQ(list.size(), 17U);
    EXPECT_EQ(list.front(), PixelFormat::Format1bppIndexed);
    EXPECT_EQ(ListedPixelFormats().size(), 18U);
    EXPECT_FALSE(support.IsPixelFormatSupported(PixelFormat::Format40bppAcmyk)); // accepted, yet never listed
    EXPECT_EQ(support.GetAppropriatePixelFormat(PixelFormat::Format48bppRgb), PixelFormat::Format64bppArgb);
    EXPECT_EQ(support.GetAppropriatePixelFormat(PixelFormat::Format40bppAcmyk), PixelFormat::Format32bppArgb);
    EXPECT_EQ(support.GetAppropriatePixelFormat(PixelFormat::FormatUnknown), PixelFormat::Format32bppArgb);
    EXPECT_EQ(support.GetAppropriatePixelFormat(PixelFormat::Format24bppRgb), PixelFormat::Format24bppRgb);
}

} // namespace
} // namespace ImagingFramework
