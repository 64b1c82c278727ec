// Included once per target of the dynamic dispatch; no include guard of the usual kind.
#if defined(RASTERLOOM_PAIR_TILE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef RASTERLOOM_PAIR_TILE_INL_H_
#undef RASTERLOOM_PAIR_TILE_INL_H_
#else
#define RASTERLOOM_PAIR_TILE_INL_H_
#endif

#include "Common/VectorTarget.h"
#include "hwy/highway.h"
#include "transforms/resize/PairVector.h"

#include <algorithm>
#include <cstring>

#if !RASTERLOOM_PLAIN_TARGET

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Lanes that the passes treat as one: the rows of a block, or neighbouring columns.
constexpr std::size_t BlockLanes = 16;
static_assert(BlockLanes == PairBlockRows);

using Ints = hn::CappedTag<std::int32_t, BlockLanes>;
using Words = hn::Repartition<std::int16_t, Ints>;
using Bytes = hn::Repartition<std::uint8_t, Ints>;
using Int = hn::VFromD<Ints>;
using Word = hn::VFromD<Words>;

/// How source rows are cut: a group is what one load of 16 bytes (two for 5 samples) brings of a row, and has one or more
/// steps; a step is 4 bytes of each channel, which become one pair of words, or two where samples have one byte.
template <int Samples, PairSamples Kind> struct GroupLayout {
    static constexpr std::size_t SampleSize = Kind == PairSamples::Words ? 2 : 1;
    static constexpr std::size_t Steps = Samples == 1 ? 4 : (Samples == 2 ? 2 : 1);
    static constexpr std::size_t StepPixels = 4 / SampleSize;
    static constexpr std::size_t StepPairs = StepPixels / 2;
    static constexpr std::size_t Pixels = Steps * StepPixels;
    static constexpr std::size_t GroupBytes = Pixels * Samples * SampleSize;
    static constexpr std::size_t ReadBytes = Samples == 5 ? 20 : 16;
    static constexpr std::size_t TileWords = Steps * StepPairs * Samples * 2 * BlockLanes;
};

/// Brings the bytes of each step and channel together: unit i of 4 bytes, counted from `firstUnit`, is step i / Samples,
/// channel i % Samples. The table is for the 16 bytes from `from` on; what lies outside them becomes 0.
template <int Samples, std::size_t SampleSize> hn::VFromD<Bytes> GroupShuffle(std::size_t firstUnit, std::size_t from) {
    HWY_ALIGN std::uint8_t indices[16];
    constexpr std::size_t perUnit = 4 / SampleSize;
    for (std::size_t i = 0; i < 16; ++i) {
        const std::size_t unit = firstUnit + i / 4;
        const std::size_t pixel = unit / Samples * perUnit + i % 4 / SampleSize;
        const std::size_t byte = (pixel * Samples + unit % Samples) * SampleSize + i % SampleSize;
        indices[i] = byte >= from && byte < from + 16 ? static_cast<std::uint8_t>(byte - from) : std::uint8_t{0x80};
    }
    return hn::LoadDup128(Bytes(), indices);
}

/// 16 bytes of rows 0, 4, 8 and so on, as many as a vector holds.
template <class D> HWY_INLINE hn::VFromD<D> LoadEveryFourth(D d, const std::uint8_t* const* rows, std::size_t offset) {
    if constexpr (hn::MaxLanes(D()) <= 16) {
        return hn::LoadU(d, rows[0] + offset);
    } else {
        const hn::Half<D> half;
        constexpr std::size_t halfRows = hn::MaxLanes(hn::Half<D>()) / 4;
        return hn::Combine(d, LoadEveryFourth(half, rows + halfRows, offset), LoadEveryFourth(half, rows, offset));
    }
}

/// Turns four vectors, of which vector k has 16 bytes of each of the rows k, 4 + k, 8 + k and so on, into four units of all
/// these rows in their order.
HWY_INLINE void TransposeUnits(const hn::VFromD<Bytes>* rows, Int* units) {
    const Ints di;
    const hn::Repartition<std::int64_t, Ints> dl;
    Int v[4];
    for (std::size_t k = 0; k < 4; ++k) {
        v[k] = hn::BitCast(di, rows[k]);
    }
    const auto low01 = hn::BitCast(dl, hn::InterleaveLower(di, v[0], v[1]));
    const auto low23 = hn::BitCast(dl, hn::InterleaveLower(di, v[2], v[3]));
    const auto high01 = hn::BitCast(dl, hn::InterleaveUpper(di, v[0], v[1]));
    const auto high23 = hn::BitCast(dl, hn::InterleaveUpper(di, v[2], v[3]));
    units[0] = hn::BitCast(di, hn::InterleaveLower(dl, low01, low23));
    units[1] = hn::BitCast(di, hn::InterleaveUpper(dl, low01, low23));
    units[2] = hn::BitCast(di, hn::InterleaveLower(dl, high01, high23));
    units[3] = hn::BitCast(di, hn::InterleaveUpper(dl, high01, high23));
}

/// Loads the units of a group.
template <int Samples, std::size_t SampleSize> class UnitLoader {
public:
    HWY_INLINE UnitLoader()
        : m_shuffle(GroupShuffle<Samples, SampleSize>(0, 0)), m_moreShuffle(GroupShuffle<Samples, SampleSize>(0, 4)),
          m_inFirst(hn::VecFromMask(Bytes(), hn::Lt(m_shuffle, hn::Set(Bytes(), 0x80)))),
          m_fifthShuffle(GroupShuffle<Samples, SampleSize>(4, 4)) {}

    HWY_INLINE void Load(const std::uint8_t* const* rows, std::size_t offset, Int* units) const {
        hn::VFromD<Bytes> v[4];
        hn::VFromD<Bytes> fifth[4];
        for (std::size_t k = 0; k < 4; ++k) {
            v[k] = hn::TableLookupBytesOr0(LoadEveryFourth(Bytes(), rows + k, offset), m_shuffle);
            if constexpr (Samples == 5) {
                const auto more = LoadEveryFourth(Bytes(), rows + k, offset + 4);
                v[k] = hn::Or(v[k], hn::AndNot(m_inFirst, hn::TableLookupBytesOr0(more, m_moreShuffle)));
                fifth[k] = hn::TableLookupBytesOr0(more, m_fifthShuffle);
            }
        }
        TransposeUnits(v, units);
        if constexpr (Samples == 5) {
            TransposeUnits(fifth, units + 4);
        }
    }

private:
    hn::VFromD<Bytes> m_shuffle;
    // Five samples: the rest of the first four channels, where it is not in the first 16 bytes, and the fifth channel.
    hn::VFromD<Bytes> m_moreShuffle;
    hn::VFromD<Bytes> m_inFirst;
    hn::VFromD<Bytes> m_fifthShuffle;
};

/// The first and third, or the second and fourth bytes of units as pairs of words.
HWY_INLINE Word EvenBytes(Int unit) { return hn::And(hn::BitCast(Words(), unit), hn::Set(Words(), 0xFF)); }
HWY_INLINE Word OddBytes(Int unit) {
    const hn::Repartition<std::uint16_t, Ints> du;
    return hn::BitCast(Words(), hn::ShiftRight<8>(hn::BitCast(du, unit)));
}
HWY_INLINE Word Premultiplied(Word colour, Word alpha) {
    return hn::Mul(hn::Sub(colour, hn::Set(Words(), 128)), alpha);
}

/// Writes the pairs of one step, all channels, for a vector of rows.
template <int Samples, PairSamples Kind> HWY_INLINE void StoreStep(const Int* units, std::int16_t* HWY_RESTRICT tile) {
    constexpr std::size_t pairWords = Samples * 2 * BlockLanes;
    const Words dw;
    for (std::size_t c = 0; c < Samples; ++c) {
        std::int16_t* const to = tile + c * 2 * BlockLanes;
        if constexpr (Kind == PairSamples::Words) {
            hn::Store(hn::Xor(hn::BitCast(dw, units[c]), hn::Set(dw, static_cast<std::int16_t>(-32768))), dw, to);
        } else {
            Word even = EvenBytes(units[c]);
            Word odd = OddBytes(units[c]);
            if (Kind == PairSamples::AlphaBytes && c + 1 < Samples) {
                even = Premultiplied(even, EvenBytes(units[Samples - 1]));
                odd = Premultiplied(odd, OddBytes(units[Samples - 1]));
            }
            hn::Store(even, dw, to);
            hn::Store(odd, dw, to + pairWords);
        }
    }
}

/// Brings the groups from `first` up to and without `end` of 16 rows into a tile of [pair][channel][row] pairs of words.
template <int Samples, PairSamples Kind>
void FillPairTile(const std::uint8_t* const* rows, std::size_t rowBytes, std::size_t first, std::size_t end,
                  std::int16_t* HWY_RESTRICT tile) {
    using Layout = GroupLayout<Samples, Kind>;
    const UnitLoader<Samples, Layout::SampleSize> loader;
    const std::uint8_t* sources[BlockLanes];
    std::memcpy(sources, rows, sizeof(sources));
    std::uint8_t endings[BlockLanes][32] = {};
    for (std::size_t group = first; group < end; ++group) {
        std::size_t offset = group * Layout::GroupBytes;
        if (HWY_UNLIKELY(offset + Layout::ReadBytes > rowBytes)) {
            // The last bytes of the rows are read from a copy that has enough behind them.
            const std::size_t left = offset < rowBytes ? rowBytes - offset : 0;
            for (std::size_t row = 0; row < BlockLanes; ++row) {
                std::memset(endings[row], 0, sizeof(endings[row]));
                std::memcpy(endings[row], rows[row] + (left != 0 ? offset : 0), std::min(left, sizeof(endings[row])));
                sources[row] = endings[row];
            }
            offset = 0;
        }
        for (std::size_t row = 0; row < BlockLanes; row += hn::Lanes(Ints())) {
            Int units[8];
            loader.Load(sources + row, offset, units);
            for (std::size_t step = 0; step < Layout::Steps; ++step) {
                StoreStep<Samples, Kind>(units + step * Samples,
                                         tile + step * (Layout::TileWords / Layout::Steps) + row * 2);
            }
        }
        tile += Layout::TileWords;
    }
}

/// Transposes `Count` vectors of `Count` lanes of 16 bytes together: perfect shuffles swap the halves of the address.
template <std::size_t Count, class D> HWY_INLINE void Transpose(D d, hn::VFromD<D>* v) {
    hn::VFromD<D> t[Count];
    for (std::size_t round = 1; round < Count; round *= 2) {
        for (std::size_t i = 0; i < Count / 2; ++i) {
            t[2 * i] = hn::InterleaveLower(d, v[i], v[i + Count / 2]);
            t[2 * i + 1] = hn::InterleaveUpper(d, v[i], v[i + Count / 2]);
        }
        for (std::size_t i = 0; i < Count; ++i) {
            v[i] = t[i];
        }
    }
}

/// Turns 16 columns of one channel, `stride` bytes apart, each of 16 rows, into 8 pairs of rows of 16 columns each.
HWY_INLINE void TurnByteColumns(const std::uint8_t* columns, std::size_t stride, std::int16_t* HWY_RESTRICT pairs) {
    const hn::FixedTag<std::uint16_t, 8> d;
    const hn::FixedTag<std::uint8_t, 8> d8;
    for (std::size_t half = 0; half < 2; ++half) {
        hn::VFromD<decltype(d)> v[8];
        for (std::size_t i = 0; i < 8; ++i) {
            v[i] = hn::BitCast(d, hn::LoadU(hn::FixedTag<std::uint8_t, 16>(), columns + (half * 8 + i) * stride));
        }
        Transpose<8>(d, v);
        for (std::size_t k = 0; k < 8; ++k) {
            const auto bytes = hn::BitCast(hn::FixedTag<std::uint8_t, 16>(), v[k]);
            auto* const to = reinterpret_cast<std::uint16_t*>(pairs + k * 2 * BlockLanes + half * BlockLanes);
            hn::StoreU(hn::PromoteTo(d, hn::LowerHalf(d8, bytes)), d, to);
            hn::StoreU(hn::PromoteTo(d, hn::UpperHalf(d8, bytes)), d, to + 8);
        }
    }
}

/// The same for columns of 16-bit samples, which are centred.
HWY_INLINE void TurnWordColumns(const std::uint8_t* columns, std::size_t stride, std::int16_t* HWY_RESTRICT pairs) {
    const hn::FixedTag<std::uint32_t, 4> d;
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
        for (std::size_t half = 0; half < 2; ++half) {
            hn::VFromD<decltype(d)> v[4];
            for (std::size_t i = 0; i < 4; ++i) {
                const std::uint8_t* const column = columns + (quarter * 4 + i) * stride + half * 16;
                v[i] = hn::BitCast(d, hn::LoadU(hn::FixedTag<std::uint8_t, 16>(), column));
            }
            Transpose<4>(d, v);
            for (std::size_t k = 0; k < 4; ++k) {
                auto* const to = reinterpret_cast<std::uint32_t*>(pairs + (half * 4 + k) * 2 * BlockLanes) + quarter * 4;
                hn::StoreU(hn::Xor(v[k], hn::Set(d, 0x80008000U)), d, to);
            }
        }
    }
}

/// Writes one row of 16 pixels, given as channels of 16 samples each.
template <class Sample> HWY_INLINE void StorePixels(const Sample* channels, int samples, Sample* HWY_RESTRICT to) {
    const hn::FixedTag<Sample, 16 / sizeof(Sample)> d;
    constexpr std::size_t lanes = 16 / sizeof(Sample);
    for (std::size_t i = 0; i < BlockLanes; i += lanes) {
        const Sample* const from = channels + i;
        Sample* const pixels = to + i * static_cast<std::size_t>(samples);
        const auto channel = [&](std::size_t c) HWY_ATTR { return hn::LoadU(d, from + c * BlockLanes); };
        switch (samples) {
        case 1:
            hn::StoreU(channel(0), d, pixels);
            break;
        case 2:
            hn::StoreInterleaved2(channel(0), channel(1), d, pixels);
            break;
        case 3:
            hn::StoreInterleaved3(channel(0), channel(1), channel(2), d, pixels);
            break;
        case 4:
            hn::StoreInterleaved4(channel(0), channel(1), channel(2), channel(3), d, pixels);
            break;
        default:
            for (std::size_t x = 0; x < lanes; ++x) {
                for (std::size_t c = 0; c < static_cast<std::size_t>(samples); ++c) {
                    pixels[x * static_cast<std::size_t>(samples) + c] = from[c * BlockLanes + x];
                }
            }
        }
    }
}

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
