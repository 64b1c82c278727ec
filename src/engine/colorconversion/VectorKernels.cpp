#include "colorconversion/VectorKernels.h"

#include "Common/VectorTarget.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "colorconversion/VectorKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::VectorKernels::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// How a 16-byte block of source becomes a 16-byte block of destination.
struct BlockPlan {
    std::uint32_t Pixels; ///< whole pixels in a block of either
    HWY_ALIGN std::uint8_t Shuffle[32];
    HWY_ALIGN std::uint8_t Fill[32];
};

BlockPlan MakePlan(std::uint32_t sourceSize, std::uint32_t destinationSize, std::uint16_t fill) {
    BlockPlan plan{16 / std::max(sourceSize, destinationSize), {}, {}};
    for (std::uint32_t i = 0; i < 16; ++i) {
        const std::uint32_t pixel = i / destinationSize;
        const std::uint32_t byte = i % destinationSize;
        const bool copied = pixel < plan.Pixels && byte < sourceSize;
        const bool filled = pixel < plan.Pixels && byte >= sourceSize;
        plan.Shuffle[i] = copied ? static_cast<std::uint8_t>(pixel * sourceSize + byte) : std::uint8_t{0x80};
        plan.Fill[i] = filled ? static_cast<std::uint8_t>(fill >> (8 * (byte - sourceSize))) : std::uint8_t{0};
        plan.Shuffle[16 + i] = plan.Shuffle[i];
        plan.Fill[16 + i] = plan.Fill[i];
    }
    return plan;
}

#if !RASTERLOOM_PLAIN_TARGET && HWY_MAX_BYTES >= 32
/// Two blocks at a time. `Span` is how many bytes of a destination block hold pixels; where it is a constant the stores
/// are packed into one.
template <std::uint32_t Span>
std::size_t RepackPairs(const BlockPlan& plan, const std::uint8_t* source, std::uint32_t sourceSize,
                        std::uint8_t* destination, std::uint32_t destinationSize, std::size_t count) {
    const hn::FixedTag<std::uint8_t, 32> d;
    const hn::FixedTag<std::uint8_t, 16> half;
    const hn::RepartitionToWide<hn::RepartitionToWide<decltype(d)>> d32;
    HWY_ALIGN static constexpr std::uint32_t joined[8] = {0, 1, 2, 4, 5, 6, 7, 7};
    const auto shuffle = hn::Load(d, plan.Shuffle);
    const auto fill = hn::Load(d, plan.Fill);
    const auto join = hn::SetTableIndices(d32, joined);
    const std::uint32_t pixels = plan.Pixels;
    const std::size_t sourceStep = std::size_t{pixels} * sourceSize;
    const std::size_t destinationStep = std::size_t{pixels} * destinationSize;
    // So many pixels must follow for the loads and stores of a pair, which reach past its pixels, to stay inside the
    // run.
    const std::size_t reach = 2 * std::size_t{pixels} +
                              (32 + std::min(sourceSize, destinationSize) - 1) / std::min(sourceSize, destinationSize);
    std::size_t done = 0;
    for (; done + reach <= count; done += 2 * std::size_t{pixels}) {
        const auto low = hn::LoadU(half, source);
        const auto high = hn::LoadU(half, source + sourceStep);
        const auto out = hn::Or(hn::TableLookupBytesOr0(hn::Combine(d, high, low), shuffle), fill);
        if constexpr (Span == 16) {
            hn::StoreU(out, d, destination);
        } else if constexpr (Span == 12) {
            hn::StoreU(hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(d32, out), join)), d, destination);
        } else {
            hn::StoreU(hn::LowerHalf(half, out), half, destination);
            hn::StoreU(hn::UpperHalf(half, out), half, destination + destinationStep);
        }
        source += 2 * sourceStep;
        destination += 2 * destinationStep;
    }
    return done;
}

std::size_t RepackBlocks(const BlockPlan& plan, const std::uint8_t* source, std::uint32_t sourceSize,
                         std::uint8_t* destination, std::uint32_t destinationSize, std::size_t count) {
    switch (plan.Pixels * destinationSize) {
    case 16:
        return RepackPairs<16>(plan, source, sourceSize, destination, destinationSize, count);
    case 12:
        return RepackPairs<12>(plan, source, sourceSize, destination, destinationSize, count);
    default:
        return RepackPairs<0>(plan, source, sourceSize, destination, destinationSize, count);
    }
}
#elif !RASTERLOOM_PLAIN_TARGET
std::size_t RepackBlocks(const BlockPlan& plan, const std::uint8_t* source, std::uint32_t sourceSize,
                         std::uint8_t* destination, std::uint32_t destinationSize, std::size_t count) {
    const hn::FixedTag<std::uint8_t, 16> d;
    const auto shuffle = hn::Load(d, plan.Shuffle);
    const auto fill = hn::Load(d, plan.Fill);
    const std::size_t reach =
        plan.Pixels + (16 + std::min(sourceSize, destinationSize) - 1) / std::min(sourceSize, destinationSize);
    std::size_t done = 0;
    for (; done + reach <= count; done += plan.Pixels) {
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(hn::LoadU(d, source), shuffle), fill), d, destination);
        source += std::size_t{plan.Pixels} * sourceSize;
        destination += std::size_t{plan.Pixels} * destinationSize;
    }
    return done;
}
#endif

void RepackPixels(const std::uint8_t* source, std::uint32_t sourceSize, std::uint8_t* destination,
                  std::uint32_t destinationSize, std::uint16_t fill, std::size_t count) {
    std::size_t done = 0;
    // Without byte shuffles the plain loop is the faster one.
#if !RASTERLOOM_PLAIN_TARGET
    if (count >= 16) {
        const BlockPlan plan = MakePlan(sourceSize, destinationSize, fill);
        done = RepackBlocks(plan, source, sourceSize, destination, destinationSize, count);
    }
#endif
    PlainKernels::RepackPixels(source + done * sourceSize, sourceSize, destination + done * destinationSize,
                               destinationSize, fill, count - done);
}

void WidenBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    std::size_t i = 0;
#if !RASTERLOOM_PLAIN_TARGET
    const hn::ScalableTag<std::uint8_t> d;
    const hn::RepartitionToWide<decltype(d)> wide;
    const hn::Rebind<std::uint8_t, decltype(wide)> half;
    const std::size_t lanes = hn::Lanes(wide);
    for (; i + lanes <= count; i += lanes) {
        const auto words = hn::ShiftLeft<8>(hn::PromoteTo(wide, hn::LoadU(half, source + i)));
        hn::StoreU(hn::BitCast(d, words), d, destination + 2 * i);
    }
#endif
    PlainKernels::WidenBytes(source + i, destination + 2 * i, count - i);
}

void NarrowToHighBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    std::size_t i = 0;
#if !RASTERLOOM_PLAIN_TARGET
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    for (; i + lanes <= count; i += lanes) {
        const auto low = hn::LoadU(d, source + 2 * i);
        const auto high = hn::LoadU(d, source + 2 * i + lanes);
        hn::StoreU(hn::ConcatOdd(d, high, low), d, destination + i);
    }
#endif
    PlainKernels::NarrowToHighBytes(source + 2 * i, destination + i, count - i);
}

void GrayFromColor(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixelCount) {
    std::size_t i = 0;
#if !RASTERLOOM_PLAIN_TARGET
    const hn::ScalableTag<std::uint8_t> d;
    const hn::RepartitionToWide<decltype(d)> d16;
    const hn::RepartitionToWide<decltype(d16)> d32;
    const std::size_t lanes = hn::Lanes(d32);
    const auto evenMask = hn::Set(d16, std::uint16_t{0x00FF});
    const auto evenWeights = hn::BitCast(d16, hn::Set(d32, 30U | (11U << 16))); // blue, red
    const auto oddWeights = hn::BitCast(d16, hn::Set(d32, 59U));                // green; alpha has no weight
    const auto reciprocal = hn::Set(d16, std::uint16_t{5243});
    const auto alphaMask = hn::Set(d32, 0x0000FF00U);
    const auto wordMask = hn::Set(d32, 0x0000FFFFU);
    for (; i + 2 * lanes <= pixelCount; i += 2 * lanes) {
        const auto convert = [&](const std::uint8_t* pixels) HWY_ATTR {
            const auto words = hn::BitCast(d16, hn::LoadU(d, pixels));
            const auto sums =
                hn::Add(hn::Mul(hn::And(words, evenMask), evenWeights), hn::Mul(hn::ShiftRight<8>(words), oddWeights));
            const auto pairs = hn::BitCast(d32, sums);
            const auto total = hn::And(hn::Add(pairs, hn::ShiftRight<16>(pairs)), wordMask);
            const auto gray = hn::ShiftRight<3>(hn::MulHigh(hn::BitCast(d16, total), reciprocal));
            const auto alpha = hn::And(hn::ShiftRight<16>(hn::BitCast(d32, words)), alphaMask);
            return hn::BitCast(d16, hn::Or(hn::BitCast(d32, gray), alpha));
        };
        const auto low = convert(source + 4 * i);
        const auto high = convert(source + 4 * i + 4 * lanes);
        hn::StoreU(hn::BitCast(d, hn::ConcatEven(d16, high, low)), d, destination + 2 * i);
    }
#endif
    PlainKernels::GrayFromColor(source + 4 * i, destination + 2 * i, pixelCount - i);
}

} // namespace ImagingFramework::VectorKernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework::VectorKernels {

HWY_EXPORT(RepackPixels);
HWY_EXPORT(WidenBytes);
HWY_EXPORT(NarrowToHighBytes);
HWY_EXPORT(GrayFromColor);

void RepackPixels(const std::uint8_t* source, std::uint32_t sourceSize, std::uint8_t* destination,
                  std::uint32_t destinationSize, std::uint16_t fill, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(RepackPixels)(source, sourceSize, destination, destinationSize, fill, count);
}

void WidenBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(WidenBytes)(source, destination, count);
}

void NarrowToHighBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(NarrowToHighBytes)(source, destination, count);
}

void GrayFromColor(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixelCount) {
    HWY_DYNAMIC_DISPATCH(GrayFromColor)(source, destination, pixelCount);
}

} // namespace ImagingFramework::VectorKernels
#endif
