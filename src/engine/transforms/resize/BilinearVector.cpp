#include "transforms/resize/BilinearVector.h"

#include "Common/VectorTarget.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/BilinearVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/BlendWords-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

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

/// Gray pixels by groups.
std::size_t BlendGrayColumns(const std::uint8_t* HWY_RESTRICT source, std::uint8_t* HWY_RESTRICT row,
                             const BilinearColumns& columns) {
    const hn::FixedTag<std::uint8_t, 16> d;
    const hn::FixedTag<std::int16_t, 8> dw;
    const hn::FixedTag<std::uint16_t, 8> du;
    const ByteGroups& groups = columns.Groups;
    const std::uint8_t* shuffles = groups.Shuffles.data();
    std::size_t x = 0;
    for (const std::uint32_t first : groups.First) {
        auto bytes = hn::TableLookupBytesOr0(hn::LoadU(d, source + first), hn::LoadU(d, shuffles));
        for (std::size_t load = 1; load < groups.Loads; ++load) {
            const auto more = hn::LoadU(d, source + first + 16 * load);
            bytes = hn::Or(bytes, hn::TableLookupBytesOr0(more, hn::LoadU(d, shuffles + 16 * load)));
        }
        const auto both = hn::BitCast(du, bytes);
        const auto a = hn::BitCast(dw, hn::And(both, hn::Set(du, 0xFF)));
        const auto b = hn::BitCast(dw, hn::ShiftRight<8>(both));
        const auto weights = hn::BitCast(dw, hn::LoadU(du, columns.Weight.data() + x));
        const hn::FixedTag<std::uint8_t, 8> half;
        hn::StoreU(hn::DemoteTo(half, BlendWords(a, b, weights)), half, row + x);
        shuffles += 16 * groups.Loads;
        x += ByteGroups::Columns;
    }
    return x;
}

/// One colour pixel to a 64-bit lane: a single load brings both neighbours.
template <int Samples>
std::size_t BlendColourColumns(const std::uint8_t* HWY_RESTRICT source, std::size_t rowBytes,
                               std::uint8_t* HWY_RESTRICT row, const BilinearColumns& columns) {
    const hn::ScalableTag<std::uint64_t> dl;
    const hn::ScalableTag<std::uint8_t> db;
    const Words dw;
    const hn::Rebind<std::uint32_t, decltype(dl)> du32;
    const hn::Rebind<std::uint16_t, decltype(dl)> du16;
    const auto firsts = PairShuffle<Samples>(false);
    const auto seconds = PairShuffle<Samples>(true);
    const auto pack = PackShuffle<Samples>();
    HWY_ALIGN std::uint8_t packed[HWY_MAX_BYTES];
    const auto spreadWeights = WeightShuffle();
    const std::size_t pixels = InnerPixels<Samples, 8>(columns, rowBytes);
    std::size_t x = 0;
    // The last store of a step reaches past its pixels, so one more step must fit.
    for (; x + 2 * hn::Lanes(dl) + 8 <= pixels; x += hn::Lanes(dl)) {
        const auto both = hn::BitCast(db, LoadFrom(dl, source, columns.First.data() + x));
        const auto narrow = hn::PromoteTo(du32, hn::LoadU(du16, columns.Weight.data() + x));
        const auto weight = hn::BitCast(db, hn::PromoteTo(dl, narrow));
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
        return BlendGrayColumns(source, row, columns);
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
    // A whole unit does not fit 16 bits; it occurs between the levels of a pyramid.
    const std::size_t done =
        weight <= 0xFFFFU ? HWY_DYNAMIC_DISPATCH(BlendRowVectors)(top, bottom, row, samples, weight) : 0;
    BlendRows<std::uint8_t>(top + done, bottom + done, row + done, samples - done, weight);
}

ByteGroups CreateByteGroups(const BilinearColumns& columns, std::size_t rowBytes) {
    ByteGroups groups;
    const std::size_t count = columns.First.size() / ByteGroups::Columns;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t first = i * ByteGroups::Columns;
        const std::size_t reach = columns.Second[first + ByteGroups::Columns - 1] - columns.First[first] + std::size_t{1};
        groups.Loads = std::max(groups.Loads, (reach + 15) / 16);
    }
    if (groups.Loads > ByteGroups::MaximumLoads || groups.Loads * 16 > rowBytes) {
        return {};
    }
    groups.First.resize(count);
    groups.Shuffles.assign(count * groups.Loads * 16, 0x80);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t first = i * ByteGroups::Columns;
        // The last groups begin earlier than they need to, so that their loads end with the row.
        groups.First[i] = std::min(columns.First[first], static_cast<std::uint32_t>(rowBytes - groups.Loads * 16));
        std::uint8_t* const shuffles = groups.Shuffles.data() + i * groups.Loads * 16;
        for (std::size_t k = 0; k < 2 * ByteGroups::Columns; ++k) {
            const std::size_t column = first + k / 2;
            const std::size_t byte = (k % 2 == 0 ? columns.First[column] : columns.Second[column]) - groups.First[i];
            shuffles[byte / 16 * 16 + k] = static_cast<std::uint8_t>(byte % 16);
        }
    }
    return groups;
}

void BlendByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row, const BilinearColumns& columns,
                      int samples) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(BlendColumnVectors)(source, rowBytes, row, columns, samples);
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
