#pragma once

#include "transforms/resize/TapAxis.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// How samples go through the lanes of `PairVector.h`. Two taps of one channel make a pair of 16-bit words in one 32-bit
/// lane, so that one instruction multiplies both by their weights and adds the products.
enum class PairSamples {
    Bytes,      ///< 8-bit samples as they are, 0 to 255
    AlphaBytes, ///< 8-bit samples with alpha: (colour - 128) * alpha, and alpha as it is
    Words,      ///< 16-bit samples less 32768
};

/// The weights of an axis cut into signed 16-bit digits, a multiple of a power of two each, for sums in 32-bit integers
/// that are exact for every input.
///
/// Integer weights are cut without a rest, so all sums of the contributor filters are exact. The rest of the sinc weights
/// bounds how far a sum can be from the canonical one, which itself errs by less than 2^-40 of that: a sum that is farther
/// than the bound from every rounding boundary rounds as the canonical one does, and the others, about one in ten
/// thousand, are computed again in the canonical way.
struct PairAxis {
    /// The weights of the sinc filter. `step` is 4 where the pairs of four successive taps are the first and the third, and
    /// the second and the fourth, and 2 where they are neighbours.
    PairAxis(const TapAxis<double>& axis, PairSamples samples, std::uint32_t step);
    /// The weights of a contributor filter.
    PairAxis(const TapAxis<std::int32_t>& axis, PairSamples samples, std::uint32_t step);

    const std::int32_t* WeightsOf(std::size_t position) const {
        return Weights.data() + position * MaximumPairs * Digits;
    }
    /// The position after the last one that the pairs of `position` hold.
    std::size_t End(std::size_t position) const { return First[position] + std::size_t{2} * Pairs[position]; }

    /// Bits of contributor weights in the lower digit; so few that thousands of taps fit.
    static constexpr int ContributorLowBits = 4;

    std::uint32_t Digits = 2;
    /// The position where the first pair begins, a multiple of the step.
    std::vector<std::uint32_t> First;
    std::vector<std::uint32_t> Pairs;
    std::size_t MaximumPairs = 0;
    /// `Digits` pairs of 16-bit weights for each pair of taps, `MaximumPairs` of those for each position; positions that
    /// the axis does not have in its window weigh nothing.
    std::vector<std::int32_t> Weights;
    /// What one unit of a digit stands for, and, for sinc weights, by how many bits a digit is above the next one.
    double Scale[3] = {};
    int DigitBits = 0;
    /// Fraction bits of the highest digit of sinc weights, which are below 2.
    static constexpr int FractionBits = 14;
    /// Contributor filters: the sum of the weights of each position.
    std::vector<std::int32_t> Totals;
    /// Sinc: a sum of samples, with the lower digits shifted down, has `FractionBits` and lies below the exact one by less
    /// than a unit; the canonical sum is less than this many units below it or more than that above.
    std::int32_t SumMargin = 0;
    /// Sinc with alpha: bounds of the error of the sum of weights in single precision, and of colour quotients when divided by
    /// that sum.
    double WeightError = 0.0;
    double QuotientError = 0.0;
    /// False where a sum might not fit its lane, or errors be too wide to be of use, or a position has no sum at all.
    bool IsUsable = true;

private:
    template <class Weight, class Cut>
    void CutWeights(const TapAxis<Weight>& axis, PairSamples samples, std::uint32_t step, const Cut& cut);
};

} // namespace ImagingFramework
