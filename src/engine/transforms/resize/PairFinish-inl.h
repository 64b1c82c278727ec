// Included once per target of the dynamic dispatch; no include guard of the usual kind.
#if defined(RASTERLOOM_PAIR_FINISH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef RASTERLOOM_PAIR_FINISH_INL_H_
#undef RASTERLOOM_PAIR_FINISH_INL_H_
#else
#define RASTERLOOM_PAIR_FINISH_INL_H_
#endif

#include "transforms/resize/PairTile-inl.h"

#include <algorithm>

#if !RASTERLOOM_PLAIN_TARGET

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

/// What becomes of colours whose alpha is rounded to 0: the second pass gives those of the first no weight.
enum class HiddenColours { Free, Exact };

/// Turns the sums of 16 lanes, [channel][digit][lane], into samples, [channel][lane], of one byte or two. Returns the lanes
/// whose rounding the sums cannot decide, one bit for each.
struct FinishTask {
    const PairAxis& Axis;
    std::size_t Position;
    std::size_t Samples;
    const std::int32_t* Sums;
    std::uint8_t* Output;
    HiddenColours Hidden;

    HWY_INLINE Int Digit(std::size_t channel, std::size_t digit, std::size_t lane) const {
        return hn::Load(Ints(), Sums + (channel * Axis.Digits + digit) * BlockLanes + lane);
    }
};
using FinishFunction = std::uint32_t (*)(const FinishTask& task);

using Floats = hn::RebindToFloat<Ints>;
using Float = hn::VFromD<Floats>;
using HalfInts = hn::Half<Ints>;
using Doubles = hn::Rebind<double, HalfInts>;
using Double = hn::VFromD<Doubles>;

/// Writes lanes as samples, cut to their range.
template <class Sample> HWY_INLINE void StoreSamples(Int value, std::uint8_t* output, std::size_t index) {
    const hn::Rebind<Sample, Ints> d;
    hn::StoreU(hn::DemoteTo(d, value), d, reinterpret_cast<Sample*>(output) + index);
}

template <class D> HWY_INLINE std::uint32_t MaskBits(D d, hn::MFromD<D> mask) {
    std::uint8_t bits[8] = {};
    hn::StoreMaskBits(d, mask, bits);
    return bits[0] | (static_cast<std::uint32_t>(bits[1]) << 8);
}

/// The plain sums of the sinc filter, rounded; the channels from `first` up to and without `end`.
template <class Sample> HWY_INLINE std::uint32_t FinishSincChannels(const FinishTask& task, std::size_t first, std::size_t end) {
    constexpr int bits = PairAxis::FractionBits;
    constexpr std::int32_t one = 1 << bits;
    constexpr std::int32_t centre = sizeof(Sample) == 2 ? 32768 * one : 0;
    const Ints di;
    const Int shift = hn::Set(di, centre + one / 2);
    const Int fraction = hn::Set(di, one - 1);
    const Int least = hn::Set(di, task.Axis.SumMargin);
    const Int most = hn::Set(di, one - 1 - task.Axis.SumMargin);
    std::uint32_t doubtful = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(di)) {
        Int smallest = fraction;
        Int largest = hn::Zero(di);
        for (std::size_t c = first; c < end; ++c) {
            Int low = task.Digit(c, 1, lane);
            if constexpr (sizeof(Sample) == 2) {
                low = hn::Add(low, hn::ShiftRightSame(task.Digit(c, 2, lane), task.Axis.DigitBits));
            }
            const Int sum = hn::Add(hn::Add(task.Digit(c, 0, lane), shift), hn::ShiftRightSame(low, task.Axis.DigitBits));
            StoreSamples<Sample>(hn::ShiftRight<bits>(sum), task.Output, c * BlockLanes + lane);
            const Int rest = hn::And(sum, fraction);
            smallest = hn::Min(smallest, rest);
            largest = hn::Max(largest, rest);
        }
        doubtful |= MaskBits(di, hn::Or(hn::Lt(smallest, least), hn::Gt(largest, most))) << lane;
    }
    return doubtful;
}

inline std::uint32_t FinishSincBytes(const FinishTask& task) {
    return FinishSincChannels<std::uint8_t>(task, 0, task.Samples);
}
inline std::uint32_t FinishSincWords(const FinishTask& task) {
    return FinishSincChannels<std::uint16_t>(task, 0, task.Samples);
}

HWY_INLINE Float SincSum(const FinishTask& task, std::size_t channel, std::size_t lane) {
    const Floats df;
    const Float low = hn::Mul(hn::ConvertTo(df, task.Digit(channel, 1, lane)), hn::Set(df, static_cast<float>(task.Axis.Scale[1])));
    return hn::MulAdd(hn::ConvertTo(df, task.Digit(channel, 0, lane)), hn::Set(df, static_cast<float>(task.Axis.Scale[0])), low);
}

inline std::uint32_t FinishSincAlphaBytes(const FinishTask& task) {
    const Floats df;
    const Float one = hn::Set(df, 1.0F);
    const Float quotientError = hn::Set(df, static_cast<float>(task.Axis.QuotientError));
    const Float least = hn::Set(df, static_cast<float>(task.Axis.QuotientError * 3.0));
    const Float leastUnsure = hn::Set(df, static_cast<float>(-task.Axis.WeightError));
    // Adding this leaves the nearest integer in the low bits.
    const Float rounder = hn::Set(df, 0x1.8p23F);
    const std::size_t colours = task.Samples - 1;
    const std::uint32_t doubtfulAlpha = FinishSincChannels<std::uint8_t>(task, colours, task.Samples);
    std::uint32_t doubtful = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        const Float weight = SincSum(task, colours, lane);
        // Faint lanes get a harmless divisor and no colour. That is right where the weight is surely negative; the others
        // are in doubt.
        const auto faint = hn::Lt(weight, least);
        const auto faintInts = hn::RebindMask(Ints(), faint);
        const Float divisor = hn::IfThenElse(faint, one, weight);
        const Float inverse = hn::Div(one, divisor);
        const Float limit = hn::NegMulAdd(quotientError, inverse, hn::Set(df, 0.49994F));
        Float farthest = hn::Zero(df);
        for (std::size_t c = 0; c < colours; ++c) {
            Float value = hn::MulAdd(SincSum(task, c, lane), inverse, hn::Set(df, 128.0F));
            value = hn::Min(hn::Max(value, hn::Set(df, -1.0F)), hn::Set(df, 256.0F));
            const Float shifted = hn::Add(value, rounder);
            const Int nearest = hn::Sub(hn::BitCast(Ints(), shifted), hn::BitCast(Ints(), rounder));
            StoreSamples<std::uint8_t>(hn::IfThenZeroElse(faintInts, nearest), task.Output, c * BlockLanes + lane);
            farthest = hn::Max(farthest, hn::Abs(hn::Sub(value, hn::Sub(shifted, rounder))));
        }
        const auto unsure = hn::And(faint, hn::Ge(weight, leastUnsure));
        doubtful |= MaskBits(df, hn::Or(unsure, hn::AndNot(faint, hn::Gt(farthest, limit)))) << lane;
    }
    if (task.Hidden == HiddenColours::Free) {
        const hn::FixedTag<std::uint8_t, BlockLanes> db;
        doubtful &= MaskBits(db, hn::Ne(hn::LoadU(db, task.Output + colours * BlockLanes), hn::Zero(db)));
    }
    return doubtfulAlpha | doubtful;
}

/// Both halves of a vector in double precision.
struct DoublePair {
    Double Lower;
    Double Upper;
};

HWY_INLINE DoublePair ToDoubles(Int value) {
    const Doubles dd;
    const HalfInts half;
    return {hn::PromoteTo(dd, hn::LowerHalf(half, value)), hn::PromoteTo(dd, hn::UpperHalf(half, value))};
}

HWY_INLINE DoublePair WholeSum(const FinishTask& task, std::size_t channel, std::size_t lane) {
    const Doubles dd;
    DoublePair sum = {hn::Zero(dd), hn::Zero(dd)};
    for (std::size_t d = task.Axis.Digits; d-- > 0;) {
        const DoublePair digit = ToDoubles(task.Digit(channel, d, lane));
        const Double scale = hn::Set(dd, task.Axis.Scale[d]);
        sum.Lower = hn::MulAdd(digit.Lower, scale, sum.Lower);
        sum.Upper = hn::MulAdd(digit.Upper, scale, sum.Upper);
    }
    return sum;
}

/// Truncates; values are cut to what an Int holds by the caller.
HWY_INLINE Int ToInts(Double lower, Double upper) {
    const HalfInts half;
    return hn::Combine(Ints(), hn::DemoteTo(half, upper), hn::DemoteTo(half, lower));
}

HWY_INLINE Double Clamped(Double value, double lowest, double highest) {
    const Doubles dd;
    return hn::Min(hn::Max(value, hn::Set(dd, lowest)), hn::Set(dd, highest));
}

/// Quotients of sums below 2^26 by the total, truncated. The inverse of 44 fraction bits is rounded up and so errs by less
/// than a unit, which moves no quotient to the next integer: that is 1 / total away at least, and totals are below 2^18.
inline void FinishContributorPlain(const FinishTask& task, std::size_t channel) {
    constexpr int bits = 44;
    const Ints di;
    const hn::Repartition<std::uint32_t, Ints> du;
    const hn::Repartition<std::uint64_t, Ints> dl;
    const auto total = static_cast<std::uint64_t>(task.Axis.Totals[task.Position]);
    const auto inverse = hn::Set(du, static_cast<std::uint32_t>(((std::uint64_t{1} << bits) + total - 1) / total));
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(di)) {
        const Int high = hn::ShiftLeft<PairAxis::ContributorLowBits>(task.Digit(channel, 0, lane));
        const auto sum = hn::BitCast(du, hn::Max(hn::Add(high, task.Digit(channel, 1, lane)), hn::Zero(di)));
        const auto even = hn::ShiftRight<bits>(hn::MulEven(sum, inverse));
        const auto second = hn::BitCast(du, hn::ShiftRight<32>(hn::BitCast(dl, sum)));
        const auto odd = hn::ShiftLeft<32>(hn::ShiftRight<bits>(hn::MulEven(second, inverse)));
        StoreSamples<std::uint8_t>(hn::BitCast(di, hn::Or(even, odd)), task.Output, channel * BlockLanes + lane);
    }
}

inline std::uint32_t FinishContributorBytes(const FinishTask& task) {
    for (std::size_t c = 0; c < task.Samples; ++c) {
        FinishContributorPlain(task, c);
    }
    return 0;
}

/// Quotients of sums below 2^34 by weights below 2^26: with half a unit added no product by the inverse comes near an
/// integer within the range of a sample, so the truncation is exact.
inline std::uint32_t FinishContributorAlphaBytes(const FinishTask& task) {
    const Doubles dd;
    const std::size_t colours = task.Samples - 1;
    FinishContributorPlain(task, colours);
    const Double half = hn::Set(dd, 0.5);
    const Double one = hn::Set(dd, 1.0);
    const auto quotient = [&](Double sum, Double weight, Double inverse) HWY_ATTR {
        // Sums of centred colours; a negative weight turns the signs of both.
        const Double all = hn::MulAdd(weight, hn::Set(dd, 128.0), sum);
        const Double positive = hn::Or(hn::Zero(dd), hn::Xor(all, hn::And(weight, hn::SignBit(dd))));
        return Clamped(hn::Mul(hn::Add(positive, half), inverse), 0.0, 255.0);
    };
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        const DoublePair weight = WholeSum(task, colours, lane);
        // A weight of 0 gives colour 0.
        const auto inverseOf = [&](Double w) HWY_ATTR {
            const auto none = hn::Eq(w, hn::Zero(dd));
            return hn::IfThenZeroElse(none, hn::Div(one, hn::Abs(hn::IfThenElse(none, one, w))));
        };
        const Double lower = inverseOf(weight.Lower);
        const Double upper = inverseOf(weight.Upper);
        for (std::size_t c = 0; c < colours; ++c) {
            const DoublePair sum = WholeSum(task, c, lane);
            const Int value = ToInts(quotient(sum.Lower, weight.Lower, lower), quotient(sum.Upper, weight.Upper, upper));
            StoreSamples<std::uint8_t>(value, task.Output, c * BlockLanes + lane);
        }
    }
    return 0;
}

/// The same argument for sums below 2^35 and totals below 2^18.
inline std::uint32_t FinishContributorWords(const FinishTask& task) {
    const Doubles dd;
    const double total = task.Axis.Totals[task.Position];
    const Double centre = hn::Set(dd, 32768.0 * total + 0.5);
    const Double inverse = hn::Set(dd, 1.0 / total);
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        for (std::size_t c = 0; c < task.Samples; ++c) {
            const DoublePair sum = WholeSum(task, c, lane);
            const Int value = ToInts(Clamped(hn::Mul(hn::Add(sum.Lower, centre), inverse), 0.0, 65535.0),
                                     Clamped(hn::Mul(hn::Add(sum.Upper, centre), inverse), 0.0, 65535.0));
            StoreSamples<std::uint16_t>(value, task.Output, c * BlockLanes + lane);
        }
    }
    return 0;
}

inline FinishFunction ChooseFinish(const PairFormat& format) {
    switch (format.Kind) {
    case PairSamples::Bytes:
        return format.Sinc ? &FinishSincBytes : &FinishContributorBytes;
    case PairSamples::AlphaBytes:
        return format.Sinc ? &FinishSincAlphaBytes : &FinishContributorAlphaBytes;
    default:
        return format.Sinc ? &FinishSincWords : &FinishContributorWords;
    }
}

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
