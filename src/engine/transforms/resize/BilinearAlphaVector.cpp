#include "transforms/resize/BilinearVector.h"

#include "Common/VectorTarget.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/BilinearAlphaVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/BlendWords-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

std::size_t BlendAlphaRows(const std::uint8_t*, const std::uint8_t*, std::uint8_t*, std::size_t, std::uint32_t) { return 0; }
std::size_t BlendAlphaColumns(const std::uint8_t*, std::size_t, std::uint8_t*, const BilinearColumns&) { return 0; }

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

HWY_INLINE Int BlendPixels(Int first, Int second, Int weight) {
    const Ints di;
    const Int opaque = hn::Set(di, static_cast<std::int32_t>(0xFF000000U));
    if (hn::AllTrue(di, hn::Eq(hn::And(hn::And(first, second), opaque), opaque))) {
        return BlendOpaque(first, second, weight);
    }
    if (hn::AllTrue(di, hn::Eq(hn::And(hn::Or(first, second), opaque), hn::Zero(di)))) {
        return hn::Zero(di);
    }
    return BlendTranslucent(first, second, weight);
}

HWY_INLINE void StorePixels(Int pixels, std::uint8_t* row) {
    const hn::Repartition<std::uint8_t, Ints> db;
    hn::StoreU(hn::BitCast(db, pixels), db, row);
}

/// Blends two rows with one weight. Returns how many pixels were done, all of them or none.
std::size_t BlendAlphaRows(const std::uint8_t* HWY_RESTRICT top, const std::uint8_t* HWY_RESTRICT bottom,
                           std::uint8_t* HWY_RESTRICT row, std::size_t pixels, std::uint32_t weight) {
    const Ints di;
    const hn::Repartition<std::uint8_t, Ints> db;
    const std::size_t lanes = hn::Lanes(di);
    if (pixels < lanes) {
        return 0;
    }
    const auto load = [&](const std::uint8_t* from) HWY_ATTR { return hn::BitCast(di, hn::LoadU(db, from)); };
    const Int weights = hn::Set(di, static_cast<std::int32_t>(weight));
    for (std::size_t x = 0; x < pixels; x += lanes) {
        // The last vector ends with the row, and repeats some pixels.
        const std::size_t at = 4 * std::min(x, pixels - lanes);
        StorePixels(BlendPixels(load(top + at), load(bottom + at), weights), row + at);
    }
    return pixels;
}

/// Blends neighbours within a row, each pair by a load of 8 bytes. Returns how many pixels were done; the rest is the
/// caller's.
std::size_t BlendAlphaColumns(const std::uint8_t* HWY_RESTRICT source, std::size_t rowBytes,
                              std::uint8_t* HWY_RESTRICT row, const BilinearColumns& columns) {
    const Ints di;
    const hn::Rebind<std::uint16_t, Ints> du16;
    const hn::Repartition<std::uint64_t, Ints> dl;
    const std::size_t lanes = hn::Lanes(di);
    const std::size_t pixels = InnerPixels<4, 8>(columns, rowBytes);
    std::size_t x = 0;
    for (; x + lanes <= pixels; x += lanes) {
        const Int lower = hn::BitCast(di, LoadFrom(dl, source, columns.First.data() + x));
        const Int upper = hn::BitCast(di, LoadFrom(dl, source, columns.First.data() + x + lanes / 2));
        const Int weights = hn::PromoteTo(di, hn::LoadU(du16, columns.Weight.data() + x));
        StorePixels(BlendPixels(hn::ConcatEven(di, upper, lower), hn::ConcatOdd(di, upper, lower), weights), row + 4 * x);
    }
    return x;
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

namespace {

using AlphaLayout = PixelLayout<std::uint8_t, 4, true>;

} // namespace

HWY_EXPORT(BlendAlphaRows);
HWY_EXPORT(BlendAlphaColumns);

void BlendAlphaByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row,
                           const BilinearColumns& columns) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(BlendAlphaColumns)(source, rowBytes, row, columns);
    BlendColumnsWithAlpha<AlphaLayout>(source, row + 4 * done, columns, done);
}

void BlendAlphaByteRows(const std::uint8_t* top, const std::uint8_t* bottom, std::uint8_t* row, std::size_t pixels,
                        std::uint32_t weight) {
    // A whole unit does not fit 16 bits; it occurs between the levels of a pyramid.
    const std::size_t done =
        weight <= 0xFFFFU ? HWY_DYNAMIC_DISPATCH(BlendAlphaRows)(top, bottom, row, pixels, weight) : 0;
    BlendRowsWithAlpha<AlphaLayout>(top + 4 * done, bottom + 4 * done, row + 4 * done, pixels - done, weight);
}

} // namespace ImagingFramework
#endif
