#include "transforms/geometry/RotationVector.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/geometry/RotationVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/BlendWords-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

std::uint32_t BlendRotated(const RotationSource&, const RotationRun&, int, bool) { return 0; }

#else

using Positions = hn::ScalableTag<std::uint64_t>;
using Position = hn::VFromD<Positions>;

/// The positions of the first pixels of a run, one to a lane. Inside of a source they are not negative.
HWY_INLINE Position FirstPositions(std::int64_t start, std::int64_t step) {
    const Positions d;
    HWY_ALIGN std::uint64_t lanes[HWY_MAX_BYTES / 8];
    for (std::size_t i = 0; i < hn::Lanes(d); ++i) {
        lanes[i] = static_cast<std::uint64_t>(start + static_cast<std::int64_t>(i) * step);
    }
    return hn::Load(d, lanes);
}

/// Which bytes of a vector of pixel pairs are alpha.
HWY_INLINE Position AlphaBytes() { return hn::Set(Positions(), 0xFF000000FF000000U); }

/// One pixel to a 64-bit lane: a load brings both neighbours of a row.
template <int Samples, bool Alpha>
std::uint32_t BlendRun(const RotationSource& source, const RotationRun& run) {
    const Positions du;
    const hn::Repartition<std::uint32_t, Positions> d32;
    const hn::Repartition<std::uint8_t, Positions> db;
    const Words dw;
    const auto firsts = PairShuffle<Samples>(false);
    const auto seconds = PairShuffle<Samples>(true);
    const auto pack = PackShuffle<Samples>();
    const auto spread = WeightShuffle();
    const Position fraction = hn::Set(du, 0xFFFF);
    const auto stride = hn::Set(d32, static_cast<std::uint32_t>(source.Stride));
    const auto size = hn::Set(d32, Samples);
    const std::uint32_t lanes = static_cast<std::uint32_t>(hn::Lanes(du));
    const Position stepX = hn::Set(du, static_cast<std::uint64_t>(run.StepX * lanes));
    const Position stepY = hn::Set(du, static_cast<std::uint64_t>(run.StepY * lanes));
    Position x = FirstPositions(run.X, run.StepX);
    Position y = FirstPositions(run.Y, run.StepY);
    HWY_ALIGN std::uint8_t packed[HWY_MAX_BYTES];
    HWY_ALIGN std::uint64_t offsets[HWY_MAX_BYTES / 8];
    const auto weights = [&](Position position) HWY_ATTR {
        const auto bytes = hn::BitCast(db, hn::And(position, fraction));
        return hn::BitCast(dw, hn::TableLookupBytes(bytes, spread));
    };
    const auto blendPair = [&](Position pair, Word weight) HWY_ATTR {
        const auto bytes = hn::BitCast(db, pair);
        return BlendWords(hn::BitCast(dw, hn::TableLookupBytesOr0(bytes, firsts)),
                          hn::BitCast(dw, hn::TableLookupBytesOr0(bytes, seconds)), weight);
    };
    // A store of two pixels of three bytes writes eight, which the next one makes good; one more must follow.
    constexpr std::uint32_t behind = Samples == 3 ? 1 : 0;
    constexpr std::size_t storeBytes = Samples == 3 ? 8 : 2 * Samples;
    std::uint32_t done = 0;
    for (; done + lanes + behind <= run.Count; done += lanes) {
        const Position rowOffset = hn::MulEven(hn::BitCast(d32, hn::ShiftRight<16>(y)), stride);
        const Position offset = hn::Add(rowOffset, hn::MulEven(hn::BitCast(d32, hn::ShiftRight<16>(x)), size));
        hn::Store(offset, du, offsets);
        const Position upper = LoadFrom(du, source.Pixels, offsets);
        const Position lower = LoadFrom(du, source.Pixels + source.Stride, offsets);
        if constexpr (Alpha) {
            const Position opaque = AlphaBytes();
            const Position both = hn::And(hn::And(upper, lower), opaque);
            if (HWY_UNLIKELY(!hn::AllTrue(du, hn::Eq(both, opaque)))) {
                break;
            }
        }
        const Word weightX = weights(x);
        const Word blended = BlendWords(blendPair(upper, weightX), blendPair(lower, weightX), weights(y));
        hn::Store(hn::TableLookupBytesOr0(hn::BitCast(db, blended), pack), db, packed);
        std::uint8_t* const pixels = run.Destination + std::size_t{done} * Samples;
        for (std::size_t block = 0; block < hn::Lanes(db); block += 16) {
            std::memcpy(pixels + block / 16 * (2 * Samples), packed + block, storeBytes);
        }
        x = hn::Add(x, stepX);
        y = hn::Add(y, stepY);
    }
    return done;
}

std::uint32_t BlendRotated(const RotationSource& source, const RotationRun& run, int samples, bool alpha) {
    switch (samples) {
    case 1:
        return BlendRun<1, false>(source, run);
    case 3:
        return BlendRun<3, false>(source, run);
    default:
        return alpha ? BlendRun<4, true>(source, run) : BlendRun<4, false>(source, run);
    }
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(BlendRotated);

std::uint32_t BlendRotatedBytes(const RotationSource& source, const RotationRun& run, int samples, bool alpha) {
    return HWY_DYNAMIC_DISPATCH(BlendRotated)(source, run, samples, alpha);
}

} // namespace ImagingFramework
#endif
