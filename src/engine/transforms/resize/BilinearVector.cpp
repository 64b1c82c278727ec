#include "transforms/resize/BilinearVector.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/BilinearVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/BlendWords-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

std::size_t BlendRowVectors(const std::uint8_t*, const std::uint8_t*, std::uint8_t*, std::size_t, std::uint32_t) { return 0; }
std::size_t BlendColumnVectors(const std::uint8_t*, std::size_t, std::uint8_t*, const BilinearColumns&, int) { return 0; }

#else

/// Returns how many samples were done; the rest is the caller's.
std::size_t BlendRowVectors(const std::uint8_t* HWY_RESTRICT top, const std::uint8_t* HWY_RESTRICT bottom,
                            std::uint8_t* HWY_RESTRICT row, std::size_t samples, std::uint32_t weight) {
    const Words dw;
    const hn::Rebind<std::uint8_t, Words> db;
    const Word weights = hn::Set(dw, static_cast<std::int16_t>(weight));
    std::size_t i = 0;
    for (; i + hn::Lanes(dw) <= samples; i += hn::Lanes(dw)) {
        const Word a = hn::PromoteTo(dw, hn::LoadU(db, top + i));
        const Word b = hn::PromoteTo(dw, hn::LoadU(db, bottom + i));
        hn::StoreU(hn::DemoteTo(db, BlendWords(a, b, weights)), db, row + i);
    }
    return i;
}

/// Pixels whose first neighbour, with what a gather of `Bytes` takes behind it, lies inside the row and whose second one
/// follows at once.
template <int Samples, std::size_t Bytes>
std::size_t InnerPixels(const BilinearColumns& columns, std::size_t rowBytes) {
    std::size_t pixels = columns.First.size();
    while (pixels > 0 && (columns.First[pixels - 1] + Bytes > rowBytes ||
                          columns.Second[pixels - 1] != columns.First[pixels - 1] + Samples)) {
        --pixels;
    }
    return pixels;
}

/// One gray pixel to a 32-bit lane.
std::size_t BlendGrayColumns(const std::uint8_t* HWY_RESTRICT source, std::size_t rowBytes, std::uint8_t* HWY_RESTRICT row,
                             const BilinearColumns& columns) {
    const hn::ScalableTag<std::int32_t> di;
    const hn::Rebind<std::uint16_t, decltype(di)> du16;
    const hn::Rebind<std::uint8_t, decltype(di)> db;
    const std::size_t pixels = InnerPixels<1, 4>(columns, rowBytes);
    const auto low = hn::Set(di, 0xFF);
    std::size_t x = 0;
    for (; x + hn::Lanes(di) <= pixels; x += hn::Lanes(di)) {
        const auto offsets = hn::LoadU(di, reinterpret_cast<const std::int32_t*>(columns.First.data() + x));
        const auto both = hn::GatherOffset(di, reinterpret_cast<const std::int32_t*>(source), offsets);
        const auto a = hn::And(both, low);
        const auto b = hn::And(hn::ShiftRight<8>(both), low);
        const auto weight = hn::PromoteTo(di, hn::LoadU(du16, columns.Weight.data() + x));
        const auto blended = hn::Add(a, hn::ShiftRight<16>(hn::Mul(hn::Sub(b, a), weight)));
        hn::StoreU(hn::DemoteTo(db, blended), db, row + x);
    }
    return x;
}

/// One colour pixel to a 64-bit lane: a single load brings both neighbours.
template <int Samples>
std::size_t BlendColourColumns(const std::uint8_t* HWY_RESTRICT source, std::size_t rowBytes,
                               std::uint8_t* HWY_RESTRICT row, const BilinearColumns& columns) {
    const hn::ScalableTag<std::int64_t> dl;
    const hn::ScalableTag<std::uint8_t> db;
    const Words dw;
    const hn::Rebind<std::uint32_t, decltype(dl)> du32;
    const hn::Rebind<std::uint16_t, decltype(dl)> du16;
    const hn::ScalableTag<std::uint64_t> dul;
    const auto firsts = PairShuffle<Samples>(false);
    const auto seconds = PairShuffle<Samples>(true);
    const auto pack = PackShuffle<Samples>();
    HWY_ALIGN std::uint8_t packed[HWY_MAX_BYTES];
    const auto spreadWeights = WeightShuffle();
    const std::size_t pixels = InnerPixels<Samples, 8>(columns, rowBytes);
    std::size_t x = 0;
    // The last store of a step reaches past its pixels, so one more step must fit.
    for (; x + 2 * hn::Lanes(dl) + 8 <= pixels; x += hn::Lanes(dl)) {
        const auto offsets = hn::BitCast(dl, hn::PromoteTo(dul, hn::LoadU(du32, columns.First.data() + x)));
        const auto both = hn::BitCast(db, hn::GatherOffset(dl, reinterpret_cast<const std::int64_t*>(source), offsets));
        const auto narrow = hn::PromoteTo(hn::Rebind<std::uint32_t, decltype(dl)>(), hn::LoadU(du16, columns.Weight.data() + x));
        const auto weight = hn::BitCast(db, hn::PromoteTo(dul, narrow));
        const Word weights = hn::BitCast(dw, hn::TableLookupBytes(weight, spreadWeights));
        const Word a = hn::BitCast(dw, hn::TableLookupBytesOr0(both, firsts));
        const Word b = hn::BitCast(dw, hn::TableLookupBytesOr0(both, seconds));
        hn::Store(hn::TableLookupBytesOr0(hn::BitCast(db, BlendWords(a, b, weights)), pack), db, packed);
        for (std::size_t block = 0; block < hn::Lanes(db); block += 16) {
            std::memcpy(row + x * Samples + block / 16 * (2 * Samples), packed + block, 8);
        }
    }
    return x;
}

std::size_t BlendColumnVectors(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row,
                               const BilinearColumns& columns, int samples) {
    switch (samples) {
    case 1:
        return BlendGrayColumns(source, rowBytes, row, columns);
    case 3:
        return BlendColourColumns<3>(source, rowBytes, row, columns);
    default:
        return BlendColourColumns<4>(source, rowBytes, row, columns);
    }
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(BlendRowVectors);
HWY_EXPORT(BlendColumnVectors);

void BlendByteRows(const std::uint8_t* top, const std::uint8_t* bottom, std::uint8_t* row, std::size_t samples,
                   std::uint32_t weight) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(BlendRowVectors)(top, bottom, row, samples, weight);
    BlendRows<std::uint8_t>(top + done, bottom + done, row + done, samples - done, weight);
}

void BlendByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row, const BilinearColumns& columns,
                      int samples) {
    // Offsets are 32-bit lanes with a sign.
    const bool fits = rowBytes <= 0x7FFFFFFFU;
    const std::size_t done = fits ? HWY_DYNAMIC_DISPATCH(BlendColumnVectors)(source, rowBytes, row, columns, samples) : 0;
    row += done * static_cast<std::size_t>(samples);
    switch (samples) {
    case 1:
        return BlendColumns<std::uint8_t, 1>(source, row, columns, done);
    case 3:
        return BlendColumns<std::uint8_t, 3>(source, row, columns, done);
    default:
        return BlendColumns<std::uint8_t, 4>(source, row, columns, done);
    }
}

} // namespace ImagingFramework
#endif
