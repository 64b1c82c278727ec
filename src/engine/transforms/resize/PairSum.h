#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ImagingFramework {

/// Successive pairs of taps.
struct PairSpan {
    const std::int16_t* Data;
    std::size_t Pairs;
};

/// Sums of 16 lanes, [channel][digit][lane], of the products of all pairs with the digits of their weights. Strides are in
/// words; data and sums lie on 64 bytes.
struct PairSumTask {
    const PairSpan* Spans;
    std::size_t SpanCount;
    std::size_t PairStride;
    std::size_t ChannelStride;
    const std::int32_t* Weights;
    std::int32_t* Sums;
};
using PairSumFunction = void (*)(const PairSumTask& task);

template <int Count> using PairCount = std::integral_constant<int, Count>;

/// The loop of 1 to 5 channels and 2 or 3 digits; `loopOf` gives the one of two constants.
template <class LoopOf> PairSumFunction ChoosePairSum(int channels, std::uint32_t digits, const LoopOf& loopOf) {
    const auto ofChannels = [&](auto count) {
        return digits == 2 ? loopOf(count, PairCount<2>()) : loopOf(count, PairCount<3>());
    };
    switch (channels) {
    case 1:
        return ofChannels(PairCount<1>());
    case 2:
        return ofChannels(PairCount<2>());
    case 3:
        return ofChannels(PairCount<3>());
    case 4:
        return ofChannels(PairCount<4>());
    default:
        return ofChannels(PairCount<5>());
    }
}

/// The loop for 1 to 5 channels and 2 or 3 digits in the dot product instructions of AVX-512. Null where
/// the processor does not have them.
PairSumFunction ChooseDotProductSum(int channels, std::uint32_t digits);

} // namespace ImagingFramework
