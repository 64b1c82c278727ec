#include "transforms/resize/BilinearVector.h"

#include "Common/VectorTarget.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/BilinearAlphaVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

std::size_t BlendAlphaPixels(const std::uint8_t*, const std::uint8_t*, std::uint8_t*, std::size_t, const std::uint16_t*,
                             std::uint32_t) {
    return 0;
}

#else

using Ints = hn::ScalableTag<std::int32_t>;
using Int = hn::VFromD<Ints>;

/// Every second byte of four-byte pixels, as words.
HWY_INLINE hn::VFromD<hn::Repartition<std::int16_t, Ints>> EvenSamples(Int pixels) {
    return hn::BitCast(hn::Repartition<std::int16_t, Ints>(), hn::And(pixels, hn::Set(Ints(), 0x00FF00FF)));
}

template <int Channel> HWY_INLINE Int ChannelOf(Int pixels) {
    const hn::Repartition<std::uint32_t, Ints> du;
    const Int shifted = hn::BitCast(Ints(), hn::ShiftRight<8 * Channel>(hn::BitCast(du, pixels)));
    return Channel == 3 ? shifted : hn::And(shifted, hn::Set(Ints(), 0xFF));
}

/// Pixels whose alpha is 255 on both sides: all four samples are blended alike.
HWY_INLINE Int BlendOpaque(Int first, Int second, Int weight) {
    const hn::Repartition<std::int16_t, Ints> dw;
    const auto weights = hn::BitCast(dw, hn::Or(weight, hn::ShiftLeft<16>(weight)));
    const auto blend = [&](Int a, Int b) HWY_ATTR {
        const auto difference = hn::Sub(EvenSamples(b), EvenSamples(a));
        const auto borrowed = hn::And(difference, hn::BroadcastSignBit(weights));
        const auto blended = hn::Add(hn::Add(EvenSamples(a), hn::MulHigh(difference, weights)), borrowed);
        return hn::BitCast(Ints(), blended);
    };
    return hn::Or(blend(first, second), hn::ShiftLeft<8>(blend(hn::ShiftRight<8>(first), hn::ShiftRight<8>(second))));
}

/// What all colours of a vector of pixels share.
struct AlphaWeights {
    Int Second;                               ///< alpha of the second times its weight
    Int Alpha;                                ///< both together, 16 fraction bits
    hn::VFromD<hn::RebindToFloat<Ints>> Share; ///< of the second
};

/// The quotient c0 + (c1 - c0) * second / alpha, truncated. Single precision comes within one of it, and the rest of the
/// division, which has few bits, tells on which side.
template <int Channel> HWY_INLINE Int BlendColour(Int first, Int second, const AlphaWeights& weights) {
    const Ints di;
    const hn::RebindToFloat<Ints> df;
    const Int from = ChannelOf<Channel>(first);
    const Int difference = hn::Sub(ChannelOf<Channel>(second), from);
    const auto value = hn::MulAdd(hn::ConvertTo(df, difference), weights.Share, hn::ConvertTo(df, from));
    Int quotient = hn::ConvertTo(di, value);
    const Int rest = hn::Sub(hn::Mul(difference, weights.Second), hn::Mul(hn::Sub(quotient, from), weights.Alpha));
    quotient = hn::Add(quotient, hn::BroadcastSignBit(rest));
    quotient = hn::Sub(quotient, hn::VecFromMask(di, hn::Not(hn::Lt(rest, weights.Alpha))));
    return hn::ShiftLeft<8 * Channel>(quotient);
}

HWY_INLINE Int BlendTranslucent(Int first, Int second, Int weight) {
    const Ints di;
    const hn::RebindToFloat<Ints> df;
    const Int firstAlpha = ChannelOf<3>(first);
    AlphaWeights weights;
    weights.Second = hn::Mul(ChannelOf<3>(second), weight);
    weights.Alpha = hn::Add(hn::Sub(hn::ShiftLeft<16>(firstAlpha), hn::Mul(firstAlpha, weight)), weights.Second);
    const Int alpha = hn::ShiftRight<16>(weights.Alpha);
    const auto visible = hn::Gt(alpha, hn::Zero(di));
    // Both numbers have 24 bits at most.
    weights.Share = hn::Div(hn::ConvertTo(df, weights.Second), hn::ConvertTo(df, hn::Max(weights.Alpha, hn::Set(di, 1))));
    const Int colours = hn::Or(hn::Or(BlendColour<0>(first, second, weights), BlendColour<1>(first, second, weights)),
                               BlendColour<2>(first, second, weights));
    return hn::IfThenElseZero(visible, hn::Or(colours, hn::ShiftLeft<24>(alpha)));
}

HWY_INLINE void BlendPixels(const std::uint8_t* first, const std::uint8_t* second, std::uint8_t* row, Int weight) {
    const Ints di;
    const hn::Repartition<std::uint8_t, Ints> db;
    const Int opaque = hn::Set(di, static_cast<std::int32_t>(0xFF000000U));
    const Int a = hn::BitCast(di, hn::LoadU(db, first));
    const Int b = hn::BitCast(di, hn::LoadU(db, second));
    Int blended = hn::Zero(di);
    if (hn::AllTrue(di, hn::Eq(hn::And(hn::And(a, b), opaque), opaque))) {
        blended = BlendOpaque(a, b, weight);
    } else if (!hn::AllTrue(di, hn::Eq(hn::And(hn::Or(a, b), opaque), hn::Zero(di)))) {
        blended = BlendTranslucent(a, b, weight);
    }
    hn::StoreU(hn::BitCast(db, blended), db, row);
}

/// Blends pixels with a weight for each, or one for all. Returns how many were done, all of them or none.
std::size_t BlendAlphaPixels(const std::uint8_t* HWY_RESTRICT first, const std::uint8_t* HWY_RESTRICT second,
                             std::uint8_t* HWY_RESTRICT row, std::size_t pixels, const std::uint16_t* HWY_RESTRICT weights,
                             std::uint32_t weight) {
    const Ints di;
    const hn::Rebind<std::uint16_t, Ints> du16;
    const std::size_t lanes = hn::Lanes(di);
    if (pixels < lanes) {
        return 0;
    }
    const Int all = hn::Set(di, static_cast<std::int32_t>(weight));
    for (std::size_t x = 0; x < pixels; x += lanes) {
        // The last vector ends with the row, and repeats some pixels.
        const std::size_t at = std::min(x, pixels - lanes);
        const Int w = weights != nullptr ? hn::PromoteTo(di, hn::LoadU(du16, weights + at)) : all;
        BlendPixels(first + 4 * at, second + 4 * at, row + 4 * at, w);
    }
    return pixels;
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

namespace {

using AlphaLayout = PixelLayout<std::uint8_t, 4, true>;

/// Columns that are brought together before they are blended.
constexpr std::size_t ChunkPixels = 64;

} // namespace

HWY_EXPORT(BlendAlphaPixels);

void BlendAlphaByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row,
                           const BilinearColumns& columns) {
    std::uint8_t first[4 * ChunkPixels];
    std::uint8_t second[4 * ChunkPixels];
    const std::size_t width = columns.First.size();
    // Up to here both neighbours follow each other in the row.
    std::size_t inner = width;
    while (inner > 0 && (columns.First[inner - 1] + std::size_t{8} > rowBytes ||
                         columns.Second[inner - 1] != columns.First[inner - 1] + 4)) {
        --inner;
    }
    for (std::size_t x = 0; x < width; x += ChunkPixels) {
        const std::size_t begin = width < ChunkPixels ? 0 : std::min(x, width - ChunkPixels);
        const std::size_t count = std::min(width, ChunkPixels);
        std::size_t i = 0;
        for (; i < count && begin + i < inner; ++i) {
            std::uint8_t both[8];
            std::memcpy(both, source + columns.First[begin + i], 8);
            std::memcpy(first + 4 * i, both, 4);
            std::memcpy(second + 4 * i, both + 4, 4);
        }
        for (; i < count; ++i) {
            std::memcpy(first + 4 * i, source + columns.First[begin + i], 4);
            std::memcpy(second + 4 * i, source + columns.Second[begin + i], 4);
        }
        if (HWY_DYNAMIC_DISPATCH(BlendAlphaPixels)(first, second, row + 4 * begin, count, columns.Weight.data() + begin, 0) == 0) {
            return BlendColumnsWithAlpha<AlphaLayout>(source, row + 4 * begin, columns, begin);
        }
    }
}

void BlendAlphaByteRows(const std::uint8_t* top, const std::uint8_t* bottom, std::uint8_t* row, std::size_t pixels,
                        std::uint32_t weight) {
    // A whole unit does not fit 16 bits; it occurs between the levels of a pyramid.
    const std::size_t done =
        weight <= 0xFFFFU ? HWY_DYNAMIC_DISPATCH(BlendAlphaPixels)(top, bottom, row, pixels, nullptr, weight) : 0;
    BlendRowsWithAlpha<AlphaLayout>(top + 4 * done, bottom + 4 * done, row + 4 * done, pixels - done, weight);
}

} // namespace ImagingFramework
#endif
