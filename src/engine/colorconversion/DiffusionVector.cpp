#include "colorconversion/DiffusionVector.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "colorconversion/DiffusionVector.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Common/GridSearch-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::GridVector::HWY_NAMESPACE {

#if RASTERLOOM_PLAIN_TARGET

bool DiffuseRun(const DiffusionVector::Run&, GridColorMapper&) { return false; }

#else

/// Products of lanes that fit 16 bits; the factor must not be negative.
HWY_INLINE Ints MultiplyShort(Ints value, Ints factor) {
    return MultiplyPairs(hn::BitCast(WordTag(), value), hn::BitCast(WordTag(), factor));
}

/// Hundredths, cut toward zero, of lanes within 255 * 100: 5243 / 2^19 is so little above 1 / 100 that the floor is the
/// same for each of them.
HWY_INLINE Ints DivideBy100(Ints value) {
    const Ints sign = hn::ShiftRight<31>(value);
    const Ints quotient = hn::ShiftRight<19>(hn::Mul(hn::Abs(value), hn::Set(IntTag(), 5243)));
    return hn::Sub(hn::Xor(quotient, sign), sign);
}

/// The taps of the rows below, by the place that they write for the pixel at 0.
struct LowerTaps {
    static constexpr std::size_t Maximum = DiffusionKernel::MaximumWidth * (DiffusionKernel::MaximumHeight - 1);

    explicit LowerTaps(const DiffusionVector::Run& run) {
        for (const DiffusionTap& tap : run.Taps) {
            if (tap.Row != 0) {
                Targets[Count] = run.Rows[tap.Row] + tap.Column;
                Weights[Count] = tap.Weight;
                ++Count;
            }
        }
    }

    ArgbError* Targets[Maximum];
    std::int32_t Weights[Maximum];
    std::size_t Count = 0;
};

/// The weight of the pixel that follows in the row by `column`.
std::int32_t WeightInRow(const DiffusionVector::Run& run, std::int32_t column) {
    for (const DiffusionTap& tap : run.Taps) {
        if (tap.Row == 0 && tap.Column == column) {
            return tap.Weight;
        }
    }
    return 0;
}

/// What goes to the next two pixels stays in registers: each pixel waits for the one before, so the way from error to
/// error is what takes the time.
template <bool IsScaled> void DiffuseRunAt(const DiffusionVector::Run& run, GridColorMapper& grid) {
    const IntTag d;
    const Ints zero = hn::Zero(d);
    const Ints limit = hn::Set(d, 255);
    const Ints intensity = hn::Set(d, run.Intensity);
    const Ints nextWeight = hn::Set(d, WeightInRow(run, 1));
    const Ints secondWeight = hn::Set(d, WeightInRow(run, 2));
    const auto shift = static_cast<int>(run.Shift);
    const LowerTaps taps(run);
    const ArgbError* const errors = run.Rows[0];
    const std::int32_t* const entries = grid.GetView().Entries;
    GridSearch search(grid);
    Ints next = zero;
    Ints second = zero;
    for (std::size_t x = 0; x < run.PixelCount; ++x) {
        const Ints given = hn::Add(hn::Load(d, errors[x].Channels.data()), next);
        const Ints pixel = hn::PromoteTo(d, hn::LoadU(ByteTag(), run.Source + 4 * x));
        const Ints moved = hn::Add(hn::ShiftRightSame(given, shift), pixel);
        const Ints wanted = hn::Min(hn::Max(moved, zero), limit);
        const std::uint32_t index = search.Find(PixelOfLanes(wanted));
        run.Indices[x] = static_cast<std::uint8_t>(index);
        Ints error = hn::Sub(wanted, hn::LoadU(d, entries + std::size_t{index} * 4));
        if constexpr (IsScaled) {
            error = DivideBy100(MultiplyShort(error, intensity));
        }
        next = hn::Add(second, MultiplyShort(error, nextWeight));
        second = MultiplyShort(error, secondWeight);
        for (std::size_t i = 0; i < taps.Count; ++i) {
            std::int32_t* const target = taps.Targets[i][x].Channels.data();
            const Ints added = MultiplyShort(error, hn::Set(d, taps.Weights[i]));
            hn::Store(hn::Add(hn::Load(d, target), added), d, target);
        }
    }
}

bool DiffuseRun(const DiffusionVector::Run& run, GridColorMapper& grid) {
    run.Intensity == 100 ? DiffuseRunAt<false>(run, grid) : DiffuseRunAt<true>(run, grid);
    return true;
}

#endif

} // namespace ImagingFramework::GridVector::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {
namespace GridVector {

HWY_EXPORT(DiffuseRun);

} // namespace GridVector

bool DiffusionVector::DiffuseRow(const Run& run, GridColorMapper& grid) {
    using namespace GridVector;
    return HWY_DYNAMIC_DISPATCH(DiffuseRun)(run, grid);
}

} // namespace ImagingFramework
#endif
