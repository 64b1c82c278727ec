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

/// Turns the sums of 16 lanes, [channel][digit][lane], into samples, [channel][lane], of one byte or two. Returns the lanes
/// whose rounding the sums cannot decide, one bit for each.
struct FinishTask {
    const PairAxis& Axis;
    std::size_t Position;
    std::size_t Samples;
    const std::int32_t* Sums;
    std::uint8_t* Output;

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

struct Rounded {
    Int Value;
    hn::MFromD<Floats> Doubtful;
};

/// The nearest integers, and where a value lies within 0.5 - `limit` of a boundary between two.
HWY_INLINE Rounded RoundLanes(Float value, Float limit) {
    const Int nearest = hn::NearestInt(value);
    const Float distance = hn::Abs(hn::Sub(value, hn::ConvertTo(Floats(), nearest)));
    return {nearest, hn::Gt(distance, limit)};
}

HWY_INLINE Float SincSum(const FinishTask& task, std::size_t channel, std::size_t lane) {
    const Floats df;
    const Float low = hn::Mul(hn::ConvertTo(df, task.Digit(channel, 1, lane)), hn::Set(df, static_cast<float>(task.Axis.Scale[1])));
    return hn::MulAdd(hn::ConvertTo(df, task.Digit(channel, 0, lane)), hn::Set(df, static_cast<float>(task.Axis.Scale[0])), low);
}

inline std::uint32_t FinishSincBytes(const FinishTask& task) {
    const Float limit = hn::Set(Floats(), static_cast<float>(0.5 - task.Axis.SumError));
    std::uint32_t doubtful = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        auto mask = hn::FirstN(Floats(), 0);
        for (std::size_t c = 0; c < task.Samples; ++c) {
            const Rounded rounded = RoundLanes(SincSum(task, c, lane), limit);
            StoreSamples<std::uint8_t>(rounded.Value, task.Output, c * BlockLanes + lane);
            mask = hn::Or(mask, rounded.Doubtful);
        }
        doubtful |= MaskBits(Floats(), mask) << lane;
    }
    return doubtful;
}

inline std::uint32_t FinishSincAlphaBytes(const FinishTask& task) {
    const Floats df;
    const Float one = hn::Set(df, 1.0F);
    const Float limit = hn::Set(df, static_cast<float>(0.5 - task.Axis.SumError));
    const Float quotientError = hn::Set(df, static_cast<float>(task.Axis.QuotientError));
    const Float least = hn::Set(df, static_cast<float>(std::max(1.0, task.Axis.QuotientError * 3.0)));
    const std::size_t colours = task.Samples - 1;
    std::uint32_t doubtful = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        const Float weight = SincSum(task, colours, lane);
        const Rounded alpha = RoundLanes(weight, limit);
        StoreSamples<std::uint8_t>(alpha.Value, task.Output, colours * BlockLanes + lane);
        // Faint lanes get a harmless divisor and no colour. That is right where the weight is surely negative; the others
        // are in doubt.
        const auto faint = hn::Lt(weight, least);
        const auto faintInts = hn::RebindMask(Ints(), faint);
        const Float inverse = hn::Div(one, hn::IfThenElse(faint, one, weight));
        const Float quotientLimit = hn::NegMulAdd(quotientError, inverse, hn::Set(df, 0.4999F));
        auto mask = hn::FirstN(df, 0);
        for (std::size_t c = 0; c < colours; ++c) {
            const Float value = hn::MulAdd(SincSum(task, c, lane), inverse, hn::Set(df, 128.0F));
            const Rounded rounded = RoundLanes(value, quotientLimit);
            StoreSamples<std::uint8_t>(hn::IfThenZeroElse(faintInts, rounded.Value), task.Output, c * BlockLanes + lane);
            mask = hn::Or(mask, rounded.Doubtful);
        }
        const auto unsure = hn::And(faint, hn::Ge(weight, hn::Sub(limit, hn::Set(df, 0.5F))));
        mask = hn::Or(hn::Or(alpha.Doubtful, unsure), hn::AndNot(faint, mask));
        doubtful |= MaskBits(df, mask) << lane;
    }
    return doubtful;
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

inline std::uint32_t FinishSincWords(const FinishTask& task) {
    const Doubles dd;
    const Double centre = hn::Set(dd, 32768.5);
    const Double nearest = hn::Set(dd, 0.5 - task.Axis.SumError);
    const Double half = hn::Set(dd, 0.5);
    std::uint32_t doubtful = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(Ints())) {
        for (std::size_t c = 0; c < task.Samples; ++c) {
            const DoublePair sum = WholeSum(task, c, lane);
            // What is cut lands far from every boundary.
            const Double lower = Clamped(hn::Add(sum.Lower, centre), 0.25, 65535.75);
            const Double upper = Clamped(hn::Add(sum.Upper, centre), 0.25, 65535.75);
            const Int value = ToInts(lower, upper);
            StoreSamples<std::uint16_t>(value, task.Output, c * BlockLanes + lane);
            const DoublePair whole = ToDoubles(value);
            const auto far = [&](Double all, Double floor) HWY_ATTR {
                return hn::Gt(hn::Abs(hn::Sub(hn::Sub(all, floor), half)), nearest);
            };
            doubtful |= MaskBits(dd, far(lower, whole.Lower)) << lane;
            doubtful |= MaskBits(dd, far(upper, whole.Upper)) << (lane + hn::Lanes(HalfInts()));
        }
    }
    return doubtful;
}

/// Quotients by the total, exact: single precision comes within one of them.
inline void FinishContributorPlain(const FinishTask& task, std::size_t channel) {
    const Ints di;
    const Floats df;
    const std::int32_t total = task.Axis.Totals[task.Position];
    const Int totals = hn::Set(di, total);
    const Float inverse = hn::Set(df, 1.0F / static_cast<float>(total));
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(di)) {
        Int sum = hn::Add(hn::ShiftLeft<PairAxis::ContributorLowBits>(task.Digit(channel, 0, lane)), task.Digit(channel, 1, lane));
        sum = hn::Max(sum, hn::Zero(di));
        Int quotient = hn::ConvertTo(di, hn::Mul(hn::ConvertTo(df, sum), inverse));
        const Int rest = hn::Sub(sum, hn::Mul(quotient, totals));
        quotient = hn::Sub(quotient, hn::VecFromMask(di, hn::Not(hn::Lt(rest, totals))));
        quotient = hn::Add(quotient, hn::VecFromMask(di, hn::Lt(rest, hn::Zero(di))));
        StoreSamples<std::uint8_t>(quotient, task.Output, channel * BlockLanes + lane);
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
