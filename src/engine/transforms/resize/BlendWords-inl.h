// Included once per target of the dynamic dispatch; no include guard of the usual kind.
#if defined(RASTERLOOM_BLEND_WORDS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef RASTERLOOM_BLEND_WORDS_INL_H_
#undef RASTERLOOM_BLEND_WORDS_INL_H_
#else
#define RASTERLOOM_BLEND_WORDS_INL_H_
#endif

#include "Common/VectorTarget.h"
#include "hwy/highway.h"

#include <cstddef>
#include <cstdint>

#if !RASTERLOOM_PLAIN_TARGET

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<std::int16_t>;
using Word = hn::VFromD<Words>;

/// (a * (65536 - w) + b * w) >> 16 is a + floor((b - a) * w / 65536). The signed high product takes a weight with its top
/// bit set as w - 65536, which leaves b - a to be added.
template <class V> HWY_INLINE V BlendWords(V a, V b, V weight) {
    const V difference = hn::Sub(b, a);
    const V borrowed = hn::And(difference, hn::BroadcastSignBit(weight));
    return hn::Add(hn::Add(a, hn::MulHigh(difference, weight)), borrowed);
}

/// Which bytes of a pair of neighbouring pixels in each 64-bit lane become its four words, by 128-bit blocks.
template <int Samples> hn::VFromD<hn::ScalableTag<std::uint8_t>> PairShuffle(bool second) {
    HWY_ALIGN std::uint8_t indices[16];
    for (std::size_t i = 0; i < 16; ++i) {
        const std::size_t word = i % 8 / 2;
        const bool used = i % 2 == 0 && word < std::size_t{Samples};
        indices[i] = static_cast<std::uint8_t>(used ? i / 8 * 8 + word + (second ? Samples : 0) : 0x80);
    }
    return hn::LoadDup128(hn::ScalableTag<std::uint8_t>(), indices);
}

/// Puts the low bytes of two pixels' words side by side.
template <int Samples> hn::VFromD<hn::ScalableTag<std::uint8_t>> PackShuffle() {
    HWY_ALIGN std::uint8_t indices[16];
    for (std::size_t i = 0; i < 16; ++i) {
        indices[i] = static_cast<std::uint8_t>(i < std::size_t{2 * Samples} ? i / Samples * 8 + i % Samples * 2 : 0x80);
    }
    return hn::LoadDup128(hn::ScalableTag<std::uint8_t>(), indices);
}

/// Repeats the low word of each 64-bit lane as the weight of its four words.
HWY_INLINE hn::VFromD<hn::ScalableTag<std::uint8_t>> WeightShuffle() {
    HWY_ALIGN static constexpr std::uint8_t indices[16] = {0, 1, 0, 1, 0, 1, 0, 1, 8, 9, 8, 9, 8, 9, 8, 9};
    return hn::LoadDup128(hn::ScalableTag<std::uint8_t>(), indices);
}

/// 8 bytes from as many places as a vector has 64-bit lanes. Plain loads, because many processors gather slower than that.
template <class D, class Offset>
HWY_INLINE hn::VFromD<D> LoadFrom(D d, const std::uint8_t* HWY_RESTRICT source, const Offset* HWY_RESTRICT offsets) {
    if constexpr (hn::MaxLanes(D()) == 1) {
        return hn::BitCast(d, hn::LoadU(hn::Repartition<std::uint8_t, D>(), source + offsets[0]));
    } else {
        const hn::Half<D> half;
        constexpr std::size_t halfLanes = hn::MaxLanes(hn::Half<D>());
        return hn::Combine(d, LoadFrom(half, source, offsets + halfLanes), LoadFrom(half, source, offsets));
    }
}

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
