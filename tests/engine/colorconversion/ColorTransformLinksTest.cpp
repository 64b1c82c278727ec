#include "colorconversion/ColorTransformLinks.h"

#include "EachInstructionSet.h"
#include "EventsProbe.h"
#include "colorconversion/ColorTransformChain.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace ImagingFramework {
namespace {

// --- Arithmetic, over all inputs

TEST(PlainKernels, GrayIsTheDivisionByHundred) {
    std::uint32_t wrong = 0;
    for (std::uint32_t color = 0; color < 256 * 256 * 256; ++color) {
        const std::uint32_t first = color & 255;
        const std::uint32_t second = color >> 8 & 255;
        const std::uint32_t third = color >> 16;
        const std::uint32_t gray = (30 * first + 59 * second + 11 * third) / 100;
        wrong += PlainKernels::GrayOfBytes(first, second, third) == gray ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(LinkKernels, TablesHoldTheFormulas) {
    std::vector<std::uint8_t> cmyk(5 * 65536);
    std::vector<std::uint8_t> argb(4 * 65536);
    for (std::uint32_t i = 0; i < 65536; ++i) {
        const std::uint8_t high = static_cast<std::uint8_t>(i >> 8);
        const std::uint8_t low = static_cast<std::uint8_t>(i);
        const std::uint8_t inks[5] = {high, low, low, low, 77};
        const std::uint8_t colors[4] = {low, low, low, high};
        std::copy_n(inks, 5, cmyk.begin() + 5 * i);
        std::copy_n(colors, 4, argb.begin() + 4 * i);
    }
    LinkRun run;
    run.PixelCount = 65536;
    std::vector<std::uint8_t> fromCmyk(4 * 65536);
    std::vector<std::uint8_t> premultiplied(4 * 65536);
    std::vector<std::uint8_t> divided(4 * 65536);
    LinkKernels::Acmyk40ToArgb32(run, cmyk.data(), fromCmyk.data());
    LinkKernels::Argb32ToPargb32(run, argb.data(), premultiplied.data());
    LinkKernels::Pargb32ToArgb32(run, argb.data(), divided.data());
    for (std::uint32_t i = 0; i < 65536; ++i) {
        const std::uint32_t high = i >> 8;
        const std::uint32_t low = i & 255;
        const double k = high / 255.0;
        const double c = low / 255.0;
        const double covered = c * (1.0 - k) + k;
        const int color = static_cast<int>((1.0 - std::min(1.0, covered)) * 255.0);
        const int product = static_cast<int>(low * (high / 255.0));
        const int quotient = static_cast<int>(std::min(255.0, high == 0 ? 0.0 : low * (255.0 / high)));
        for (std::uint32_t channel = 0; channel < 3; ++channel) {
            ASSERT_EQ(fromCmyk[4 * i + channel], color) << i;
            ASSERT_EQ(premultiplied[4 * i + channel], product) << i;
            ASSERT_EQ(divided[4 * i + channel], quotient) << i;
        }
        ASSERT_EQ(fromCmyk[4 * i + 3], 77);
        ASSERT_EQ(premultiplied[4 * i + 3], high);
    }
}

void CompareVectorsWithPlainLoops() {
    std::mt19937 random(4);
    std::vector<std::uint8_t> source(4096);
    std::ranges::generate(source, [&] { return static_cast<std::uint8_t>(random()); });
    std::fill_n(source.begin(), 65, std::uint8_t{255}); // the largest sums
    const auto compare = [&](std::size_t sourceBytes, std::size_t outBytes, auto vector, auto plain) {
        // A copy of the exact size, so that a read past the end is seen by the sanitizer.
        const std::vector<std::uint8_t> exact(source.begin() + 1, source.begin() + 1 + static_cast<std::ptrdiff_t>(sourceBytes));
        std::vector<std::uint8_t> fast(outBytes + 3, 0xEE);
        std::vector<std::uint8_t> slow(outBytes + 3, 0xEE);
        vector(exact.data(), fast.data() + 1);
        plain(exact.data(), slow.data() + 1);
        ASSERT_EQ(fast, slow);
    };
    constexpr std::uint32_t sizes[][2] = {{3, 4}, {4, 3}, {4, 5}, {5, 4}, {6, 8}, {8, 6},
                                          {8, 10}, {10, 8}, {1, 2}, {2, 1}, {2, 4}, {4, 2}};
    for (std::size_t count = 0; count < 150; ++count) {
        for (const auto& [from, to] : sizes) {
            SCOPED_TRACE(std::to_string(count) + " pixels of " + std::to_string(from) + " to " + std::to_string(to));
            compare(count * from, count * to,
                    [&](auto* in, auto* out) { VectorKernels::RepackPixels(in, from, out, to, 0xC3A5, count); },
                    [&](auto* in, auto* out) { PlainKernels::RepackPixels(in, from, out, to, 0xC3A5, count); });
        }
        SCOPED_TRACE(count);
        compare(count, 2 * count, [&](auto* in, auto* out) { VectorKernels::WidenBytes(in, out, count); },
                [&](auto* in, auto* out) { PlainKernels::WidenBytes(in, out, count); });
        compare(2 * count, count, [&](auto* in, auto* out) { VectorKernels::NarrowToHighBytes(in, out, count); },
                [&](auto* in, auto* out) { PlainKernels::NarrowToHighBytes(in, out, count); });
        compare(4 * count, 2 * count, [&](auto* in, auto* out) { VectorKernels::GrayFromColor(in, out, count); },
                [&](auto* in, auto* out) { PlainKernels::GrayFromColor(in, out, count); });
    }
}

// The vector loops against their plain twins, for every pair of pixel sizes in use and all short lengths, on addresses that
// are not aligned, with guard bytes behind, and with each instruction set that this machine has.
TEST(VectorKernels, EqualThePlainLoops) {
    Testing::ForEachInstructionSet(&CompareVectorsWithPlainLoops);
}

// --- Links and chain

TEST(ColorTransformChain, HasItsPrototypesInOrder) {
    const auto& prototypes = GetLinkPrototypes();
    ASSERT_EQ(prototypes.size(), 47U);
    EXPECT_EQ(prototypes[19].Name, "Argb32ToIndexedLink");
    EXPECT_EQ(prototypes[29].Name, "Argb64ToArgb64Link");
    EXPECT_EQ(prototypes[34].Name, "Argb64ToArgb64Link");
    // Each is found by its own formats, so none stands in the way of another.
    for (const LinkPrototype& prototype : prototypes) {
        ChainLinkParameters parameters;
        parameters.SourceFormat = prototype.Link->GetSrcPixelFormat();
        parameters.DestinationFormat = prototype.Link->GetDstPixelFormat();
        std::unique_ptr<IColorTransformLink> link;
        ColorTransformChain::CreateNewLink(&link, std::move(parameters));
        ASSERT_NE(link, nullptr) << prototype.Name;
        const IColorTransformLink& found = *link;
        const IColorTransformLink& wanted = *prototype.Link;
        EXPECT_EQ(typeid(found), typeid(wanted)) << prototype.Name;
    }
    EXPECT_THROW(prototypes[0].Link->CreateNewInstance(nullptr), ArgumentNullPointerException);
}

ChainLinkParameters Quantization(std::uint8_t bits, std::uint8_t scale, std::uint16_t offset) {
    ChainLinkParameters parameters;
    parameters.QuantizationTo8bBitsUsed = bits;
    parameters.QuantizationTo8bScale = scale;
    parameters.QuantizationTo8bOffset = offset;
    return parameters;
}

TEST(ColorTransformChain, ChecksRequests) {
    std::unique_ptr<IColorTransformLink> link;
    const auto text = [&](ChainLinkParameters parameters) -> std::string {
        try {
            ColorTransformChain::CreateNewLink(&link, std::move(parameters));
        } catch (const ArgumentOutOfRangeException& failure) {
            return failure.GetExceptionStringRef();
        }
        return "";
    };
    EXPECT_EQ(text(Quantization(17, 16, 0)), "Argument 'quantizationTo8bBitsUsed' is out of range (Parameter has invalid value.).");
    EXPECT_EQ(text(Quantization(7, 8, 0)), "Argument 'quantizationTo8bBitsUsed' is out of range (Parameter has invalid value.).");
    EXPECT_EQ(text(Quantization(12, 13, 0)), "Argument 'quantizationTo8bScale' is out of range (Parameter has invalid value).");
    EXPECT_EQ(text(Quantization(12, 7, 0)), "Argument 'quantizationTo8bScale' is out of range (Parameter has invalid value).");
    EXPECT_EQ(text(Quantization(12, 8, 3841)), "Argument 'quantizationTo8bOffset' is out of range (Parameter has invalid value).");
    EXPECT_EQ(text(Quantization(12, 8, 3840)), ""); // 4095 - 255
    EXPECT_THROW(ColorTransformChain::CreateNewLink(nullptr, {}), ArgumentNullPointerException);
    ChainLinkParameters noRoute;
    noRoute.DestinationFormat = PixelFormat::Format16bppRgb565;
    ColorTransformChain::CreateNewLink(&link, std::move(noRoute));
    EXPECT_EQ(link, nullptr);
    ColorTransformChain chain;
    ChainLinkParameters unequal;
    unequal.SourceFormat = PixelFormat::Format24bppRgb;
    EXPECT_THROW(chain.AddEqualChainLink(std::move(unequal)), ArgumentException);
    std::uint8_t pixel[4] = {1, 2, 3, 4};
    EXPECT_THROW(chain.ApplyScanlineTransform(nullptr, pixel), ArgumentNullPointerException);
    EXPECT_THROW(chain.ApplyScanlineTransform(pixel, nullptr), ArgumentNullPointerException);
    std::uint8_t untouched[4] = {};
    chain.ApplyScanlineTransform(pixel, untouched); // an empty chain does nothing
    EXPECT_EQ(untouched[0], 0);
}

/// A provider that complements every byte, and counts.
class FakeProvider : public CmsProvider {
public:
    explicit FakeProvider(bool ready, int* pRuns) : m_ready(ready), m_pRuns(pRuns) {}
    void SetSrcColorProfile(const std::string*) override {}
    void SetTargetColorProfile(const std::string*) override {}
    void SetDestColorProfile(const std::string*) override {}
    void SetColorTransformIntent(ColorTransformIntent) override {}
    void TransformScanline(const std::uint8_t* source, PixelFormat, std::uint8_t* destination, PixelFormat format,
                           std::uint32_t pixelCount) override {
        ++*m_pRuns;
        for (std::uint32_t i = 0; i < pixelCount * PixelFormatSize(format) / 8; ++i) {
            destination[i] = static_cast<std::uint8_t>(~source[i]);
        }
    }
    bool IsFormatSupported(PixelFormat format) const override { return PixelFormatHasAlpha(format); }
    bool IsReady() const override { return m_ready; }

private:
    bool m_ready;
    int* m_pRuns;
};

ChainLinkParameters Link(PixelFormat from, PixelFormat to, IInternalEvents* events = nullptr) {
    ChainLinkParameters parameters;
    parameters.PixelCount = 1;
    parameters.SourceFormat = from;
    parameters.DestinationFormat = to;
    parameters.Events = events;
    return parameters;
}

TEST(ColorTransformChain, LetsAReadyProviderDoTheRunAndSparesCopies) {
    constexpr auto rgb = PixelFormat::Format24bppRgb;
    constexpr auto argb = PixelFormat::Format32bppArgb;
    for (const bool ready : {false, true}) {
        int runs = 0;
        Testing::EventsProbe events;
        ColorTransformChain chain;
        chain.AddChainLink(Link(rgb, argb, &events));
        ChainLinkParameters managed = Link(argb, argb, &events);
        managed.Provider = std::make_unique<FakeProvider>(ready, &runs);
        chain.AddChainLink(std::move(managed));
        chain.AddChainLink(Link(argb, rgb, &events));
        const std::uint8_t source[3] = {1, 2, 3};
        std::uint8_t out[3] = {};
        chain.ApplyScanlineTransform(source, out);
        EXPECT_EQ(out[1], ready ? 253 : 2);
        EXPECT_EQ(runs, ready ? 1 : 0);
        EXPECT_EQ(events.Steps(), 3); // a copy that is spared is a step all the same
    }
    // A copy behind the last real link, and copies alone.
    ColorTransformChain chain;
    chain.AddChainLink(Link(argb, argb));
    const std::uint8_t source[4] = {1, 2, 3, 4};
    std::uint8_t out[4] = {};
    chain.ApplyScanlineTransform(source, out);
    EXPECT_EQ(out[3], 4);
    chain.AddChainLink(Link(argb, argb));
    std::fill_n(out, 4, std::uint8_t{0});
    chain.ApplyScanlineTransform(source, out);
    EXPECT_EQ(out[3], 4);
}

TEST(ColorTransformLinks, NoPixelsConvertNothingAndReportAStep) {
    for (const LinkPrototype& prototype : GetLinkPrototypes()) {
        std::unique_ptr<IColorTransformLink> link;
        prototype.Link->CreateNewInstance(&link);
        ColorMap map(1, PixelFormat::Format24bppRgb);
        link->SetSrcColorMap(&map);
        link->SetDstColorMap(&map);
        Testing::EventsProbe events;
        dynamic_cast<IColorTransformLinkImpl&>(*link).SetEvents(&events);
        std::uint8_t byte = 0xA5;
        const std::uint8_t source = 0;
        link->ApplyScanlineTransform(&source, &byte);
        EXPECT_EQ(byte, 0xA5) << prototype.Name;
        EXPECT_EQ(events.Steps(), 1) << prototype.Name;
    }
}

} // namespace
} // namespace ImagingFramework
