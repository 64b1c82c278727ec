// Included once per target of the dynamic dispatch; no include guard of the usual kind.
#if defined(RASTERLOOM_ROW_TILE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef RASTERLOOM_ROW_TILE_INL_H_
#undef RASTERLOOM_ROW_TILE_INL_H_
#else
#define RASTERLOOM_ROW_TILE_INL_H_
#endif

#include "hwy/highway.h"

#include <cstddef>
#include <cstdint>

// The scalar target, which is what stands for processors before SSSE3, has no vectors of 16 bytes; the canonical loops run
// there.
#if HWY_TARGET != HWY_SCALAR

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Rows that a tile holds side by side: a sample of all of them is one vector, so neighbouring rows share each weight.
constexpr std::size_t TileRows = 16;

/// 16 bytes of each of 16 rows, written as 16 columns of 16 bytes. `rowStride` of the result is 16.
HWY_INLINE void TransposeBytes(const std::uint8_t* const* HWY_RESTRICT rows, std::size_t offset,
                               std::uint8_t* HWY_RESTRICT columns) {
    const hn::FixedTag<std::uint8_t, 16> d;
    using V = hn::VFromD<decltype(d)>;
    V v[16];
    V t[16];
    for (std::size_t i = 0; i < 16; ++i) {
        v[i] = hn::LoadU(d, rows[i] + offset);
    }
    // Four perfect shuffles of rows and bytes swap the two halves of the byte's address.
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < 8; ++i) {
            t[2 * i] = hn::InterleaveLower(d, v[i], v[i + 8]);
            t[2 * i + 1] = hn::InterleaveUpper(d, v[i], v[i + 8]);
        }
        for (std::size_t i = 0; i < 8; ++i) {
            v[2 * i] = hn::InterleaveLower(d, t[i], t[i + 8]);
            v[2 * i + 1] = hn::InterleaveUpper(d, t[i], t[i + 8]);
        }
    }
    for (std::size_t i = 0; i < 16; ++i) {
        hn::Store(v[i], d, columns + 16 * i);
    }
}

/// Fills `tile` with the samples, less 128, from `first` up to and without `end` of 16 rows, `TileRows` floats each. Rows of
/// `rowSamples` samples are read no further; the tile has room for 15 samples more, which get undefined values.
HWY_INLINE void FillFloatTile(const std::uint8_t* const* HWY_RESTRICT rows, std::size_t first, std::size_t end,
                              std::size_t rowSamples, float* HWY_RESTRICT tile) {
    const hn::CappedTag<float, TileRows> df;
    const hn::Rebind<std::int32_t, decltype(df)> di;
    const hn::Rebind<std::int8_t, decltype(df)> d8;
    HWY_ALIGN std::uint8_t columns[256];
    std::size_t sample = first;
    for (; sample < end && sample + 16 <= rowSamples; sample += 16) {
        TransposeBytes(rows, sample, columns);
        for (std::size_t i = 0; i < 256; i += hn::Lanes(df)) {
            const auto bytes = hn::Load(hn::Rebind<std::uint8_t, decltype(df)>(), columns + i);
            // With its top bit flipped, an unsigned byte less 128 is a signed one.
            const auto centred = hn::BitCast(d8, hn::Xor(bytes, hn::Set(hn::Rebind<std::uint8_t, decltype(df)>(), 0x80)));
            hn::Store(hn::ConvertTo(df, hn::PromoteTo(di, centred)), df, tile + i);
        }
        tile += 256;
    }
    for (; sample < end; ++sample) {
        for (std::size_t row = 0; row < TileRows; ++row) {
            *tile++ = static_cast<float>(rows[row][sample] - 128);
        }
    }
}

/// Writes `samples` columns of 16 bytes back as the beginnings of `count` rows.
HWY_INLINE void StoreByteTile(const std::uint8_t* HWY_RESTRICT tile, std::size_t samples, std::size_t offset,
                              std::uint8_t* const* HWY_RESTRICT rows, std::size_t count) {
    const hn::FixedTag<std::uint8_t, 16> d;
    HWY_ALIGN std::uint8_t transposed[256];
    const std::uint8_t* columns[16];
    std::size_t sample = 0;
    for (; sample + 16 <= samples; sample += 16) {
        for (std::size_t i = 0; i < 16; ++i) {
            columns[i] = tile + (sample + i) * 16;
        }
        TransposeBytes(columns, 0, transposed);
        for (std::size_t row = 0; row < count; ++row) {
            hn::StoreU(hn::Load(d, transposed + 16 * row), d, rows[row] + offset + sample);
        }
    }
    for (; sample < samples; ++sample) {
        for (std::size_t row = 0; row < count; ++row) {
            rows[row][offset + sample] = tile[sample * 16 + row];
        }
    }
}

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
