#include "transforms/resize/PairAxis.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace ImagingFramework {

namespace {

/// The largest magnitude of a word.
constexpr std::int64_t WordLimit(PairSamples samples) {
    switch (samples) {
    case PairSamples::Bytes:
        return 255;
    case PairSamples::AlphaBytes:
        return 128 * 255;
    default:
        return 32768;
    }
}

/// Bits of each lower digit: as many as `taps` products with digits of that size leave room for in 31 bits.
int LowerBits(std::size_t taps, PairSamples samples) {
    const auto room = (std::uint64_t{1} << 32) / (static_cast<std::uint64_t>(WordLimit(samples)) * taps);
    return std::clamp(static_cast<int>(std::bit_width(room)) - 1, 0, 15);
}

using DigitArray = std::array<std::int64_t, 3>;

} // namespace

template <class Weight, class Cut>
void PairAxis::CutWeights(const TapAxis<Weight>& axis, PairSamples samples, std::uint32_t step, const Cut& cut) {
    const std::size_t positions = axis.Positions();
    First.resize(positions);
    Pairs.resize(positions);
    for (std::size_t i = 0; i < positions; ++i) {
        First[i] = axis.Windows.First[i] / step * step;
        const std::uint32_t reach = axis.Windows.First[i] - First[i] + axis.Windows.Count[i];
        Pairs[i] = (reach + step - 1) / step * (step / 2);
        MaximumPairs = std::max<std::size_t>(MaximumPairs, Pairs[i]);
        IsUsable = IsUsable && axis.Copies[i] == 0;
    }
    Weights.resize(positions * MaximumPairs * Digits);
    for (std::size_t i = 0; i < positions; ++i) {
        DigitArray magnitudes{};
        for (std::uint32_t t = 0; t < axis.Windows.Count[i]; ++t) {
            const DigitArray digits = cut(axis.WeightsOf(i)[t], i);
            const std::uint32_t offset = axis.Windows.First[i] - First[i] + t;
            const std::uint32_t within = offset % step;
            const std::size_t pair = step == 4 ? offset / 4 * 2 + within % 2 : offset / 2;
            const std::uint32_t shift = step == 4 ? within / 2 * 16 : within * 16;
            for (std::size_t d = 0; d < Digits; ++d) {
                std::int32_t& both = Weights[(i * MaximumPairs + pair) * Digits + d];
                const auto bits = static_cast<std::uint32_t>(static_cast<std::uint16_t>(digits[d])) << shift;
                both = static_cast<std::int32_t>(static_cast<std::uint32_t>(both) | bits);
                magnitudes[d] += std::abs(digits[d]);
                IsUsable = IsUsable && std::abs(digits[d]) <= std::numeric_limits<std::int16_t>::max();
            }
        }
        // The third digit is added to the second one.
        const std::int64_t carry = Digits == 3 ? (std::int64_t{1} << 31) >> DigitBits : 0;
        for (std::size_t d = 0; d < Digits; ++d) {
            IsUsable = IsUsable && magnitudes[d] * WordLimit(samples) + carry <= std::numeric_limits<std::int32_t>::max();
        }
    }
}

PairAxis::PairAxis(const TapAxis<double>& axis, PairSamples samples, std::uint32_t step)
    : Digits(samples == PairSamples::Words ? 3 : 2) {
    DigitBits = LowerBits(axis.MaximumTaps, samples);
    for (std::uint32_t d = 0; d < Digits; ++d) {
        Scale[d] = std::ldexp(1.0, -FractionBits - DigitBits * static_cast<int>(d));
    }
    std::vector<double> rests(axis.Positions());
    std::vector<double> magnitudes(axis.Positions());
    CutWeights(axis, samples, step, [&](double weight, std::size_t position) {
        DigitArray digits{};
        // A source of a few pixels can have weights that are no use here; they fail the limit of a digit.
        double rest = std::clamp(weight, -3.0, 3.0);
        magnitudes[position] += std::fabs(rest);
        for (std::uint32_t d = 0; d < Digits; ++d) {
            const double units = rest / Scale[d];
            digits[d] = static_cast<std::int64_t>(units + (units < 0.0 ? -0.5 : 0.5));
            rest -= static_cast<double>(digits[d]) * Scale[d];
        }
        rests[position] += std::fabs(rest);
        return digits;
    });
    const double rest = *std::max_element(rests.begin(), rests.end());
    const double magnitude = *std::max_element(magnitudes.begin(), magnitudes.end());
    const double limit = static_cast<double>(WordLimit(samples));
    // Of samples with alpha, only alpha itself is a plain sum. Shifts cut less than one unit of each digit but the last.
    const double sumLimit = samples == PairSamples::AlphaBytes ? 255.0 : limit;
    const double units = rest * sumLimit * (1 << FractionBits) + std::ldexp(1.0, -DigitBits) + 0x1p-10;
    SumMargin = static_cast<std::int32_t>(std::ceil(std::min(units, 4096.0)));
    // The higher digit of a sum of alpha is exact in single precision, and the lower one is below 1; so it is for colours
    // whose quotient is not cut anyway, but for two roundings. With those of the weight and of its inverse they make four of
    // 129 / 2^24 at most, and the quotient, which is below 256, is rounded once more: 0.00004 together. The limit of
    // quotients stays 0.00006 below one half for them.
    WeightError = rest * 255.0 + 0x1p-20;
    // |N / D - N' / D'| <= (|N - N'| + 129 |D - D'|) / D' for centred colours.
    QuotientError = (rest * limit + 0x1p-16 + 129.0 * WeightError) * 1.01;
    IsUsable = IsUsable && rest * limit * (1 << FractionBits) < 1024.0 && magnitude < 1.99;
}

PairAxis::PairAxis(const TapAxis<std::int32_t>& axis, PairSamples samples, std::uint32_t step) : Totals(axis.Totals) {
    Scale[0] = 1 << ContributorLowBits;
    Scale[1] = 1.0;
    // Totals are near 65536; what is not, and what it would take to prove it harmless, is left to the plain loops.
    constexpr std::int32_t smallestTotal = 1 << 12;
    constexpr std::int32_t largestTotal = 1 << 18;
    std::vector<std::int64_t> magnitudes(axis.Positions());
    CutWeights(axis, samples, step, [&](std::int32_t weight, std::size_t position) {
        const std::int64_t high = (std::int64_t{weight} + (1 << (ContributorLowBits - 1))) >> ContributorLowBits;
        magnitudes[position] += std::abs(std::int64_t{weight});
        return DigitArray{high, weight - high * (1 << ContributorLowBits), 0};
    });
    for (std::size_t i = 0; i < axis.Positions(); ++i) {
        IsUsable = IsUsable && axis.Totals[i] > smallestTotal && magnitudes[i] < largestTotal;
    }
}

} // namespace ImagingFramework
