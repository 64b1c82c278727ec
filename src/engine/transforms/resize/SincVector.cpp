#include "transforms/resize/SincVector.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/SincVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/RowTile-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

bool FilterRows(const SincRowsTask&, int, bool) { return false; }
bool FilterColumns(const SincColumnsTask&, int, bool) { return false; }

#else

using LaneTag = hn::CappedTag<float, TileRows>;
using Lane = hn::VFromD<LaneTag>;

/// Bytes of floats that a tile may take, so that it stays in the second cache, and columns that are made from it.
constexpr std::size_t TileLimit = 128 * 1024;
constexpr std::uint32_t ChunkColumns = 16;

struct Rounded {
    hn::VFromD<hn::Rebind<std::int32_t, LaneTag>> Value;
    hn::MFromD<LaneTag> Doubtful;
};

/// The nearest integers, and where a value lies within 0.5 - `limit` of a boundary between two.
HWY_INLINE Rounded RoundLanes(Lane value, Lane limit) {
    const LaneTag df;
    const auto nearest = hn::NearestInt(value);
    const Lane distance = hn::Abs(hn::Sub(value, hn::ConvertTo(df, nearest)));
    return {nearest, hn::Gt(distance, limit)};
}

/// Writes lanes as bytes, cut to 0..255.
HWY_INLINE void StoreBytes(hn::VFromD<hn::Rebind<std::int32_t, LaneTag>> value, std::uint8_t* to) {
    const hn::Rebind<std::uint8_t, LaneTag> du;
    hn::StoreU(hn::DemoteTo(du, value), du, to);
}

HWY_INLINE std::uint32_t MaskBits(hn::MFromD<LaneTag> mask) {
    std::uint8_t bits[8] = {};
    hn::StoreMaskBits(LaneTag(), mask, bits);
    return bits[0] | (static_cast<std::uint32_t>(bits[1]) << 8);
}

/// What samples are less by while they are summed: half the magnitude, half the error.
constexpr float Centre = 128.0F;

/// Turns the centred colours of a tile into products with their alpha, and alpha into itself; integers that a float holds
/// exactly.
template <int Samples> void PremultiplyTile(float* HWY_RESTRICT tile, std::size_t pixels) {
    const LaneTag df;
    for (std::size_t i = 0; i < pixels; ++i) {
        for (std::size_t row = 0; row < TileRows; row += hn::Lanes(df)) {
            float* const pixel = tile + i * Samples * TileRows + row;
            const Lane alpha = hn::Add(hn::Load(df, pixel + (Samples - 1) * TileRows), hn::Set(df, Centre));
            hn::Store(alpha, df, pixel + (Samples - 1) * TileRows);
            for (std::size_t c = 0; c + 1 < Samples; ++c) {
                float* const sample = pixel + c * TileRows;
                hn::Store(hn::Mul(hn::Load(df, sample), alpha), df, sample);
            }
        }
    }
}

/// Everything about one destination pixel that its 16 rows share.
struct PixelTaps {
    const float* Weights;
    std::size_t Count;
    const float* Tile;
    std::uint32_t Pixel;
    std::uint8_t* Output;
};

template <int Samples, bool Alpha> class RowFilter {
public:
    explicit RowFilter(const SincRowsTask& task)
        : m_task(task), m_axis(task.Axis.Axis), m_limit(hn::Set(LaneTag(), static_cast<float>(0.5 - task.Axis.SumError))),
          m_quotientError(hn::Set(LaneTag(), static_cast<float>(task.Axis.QuotientError))),
          m_leastWeight(hn::Set(LaneTag(), static_cast<float>(std::max(1.0, task.Axis.QuotientError * 3.0)))),
          m_leastNegative(hn::Set(LaneTag(), static_cast<float>(-task.Axis.SumError))) {}

    bool Run() {
        std::uint32_t first = m_task.FirstColumn;
        while (first < m_task.EndColumn) {
            const std::uint32_t end = ChunkEnd(first);
            FilterChunk(first, end);
            first = end;
        }
        return true;
    }

private:
    static constexpr std::size_t PixelFloats = Samples * TileRows;

    std::size_t SourceEnd(std::uint32_t column) const {
        return std::size_t{m_axis.Windows.First[column]} + m_axis.Windows.Count[column];
    }

    /// 16 columns, or as many as the tile can hold the windows of, and one in any case.
    std::uint32_t ChunkEnd(std::uint32_t first) const {
        constexpr std::size_t limit = TileLimit / (PixelFloats * sizeof(float));
        std::uint32_t end = first + 1;
        while (end < m_task.EndColumn && end - first < ChunkColumns && SourceEnd(end) - m_axis.Windows.First[first] <= limit) {
            ++end;
        }
        return end;
    }

    /// Brings the window of a chunk into the tile; what the last chunk had of it is moved, not made again.
    float* FillTile(std::size_t first, std::size_t end) {
        std::vector<float>& memory = m_task.Scratch.Tile;
        const std::size_t room = (end - first) * PixelFloats + 2 * 16 * TileRows;
        if (memory.size() < room) {
            memory.resize(room);
            m_tileEnd = 0;
        }
        float* const tile = AlignUp(memory.data());
        const std::size_t kept = m_tileEnd > first ? m_tileEnd - first : 0;
        if (kept != 0) {
            std::memmove(tile, tile + (first - m_tileFirst) * PixelFloats, kept * PixelFloats * sizeof(float));
        }
        float* const fresh = tile + kept * PixelFloats;
        FillFloatTile(m_task.Sources, (first + kept) * Samples, end * Samples, m_task.SourceWidth * std::size_t{Samples}, fresh);
        if constexpr (Alpha) {
            PremultiplyTile<Samples>(fresh, end - first - kept);
        }
        m_tileFirst = first;
        m_tileEnd = end;
        return tile;
    }

    void FilterChunk(std::uint32_t first, std::uint32_t end) {
        const std::size_t sourceFirst = m_axis.Windows.First[first];
        const float* const tile = FillTile(sourceFirst, std::max(SourceEnd(end - 1), m_tileEnd));
        m_task.Scratch.Output.resize(ChunkColumns * PixelFloats + 64);
        std::uint8_t* const output = AlignUp(m_task.Scratch.Output.data());
        for (std::uint32_t x = first; x < end; ++x) {
            const PixelTaps taps{m_task.Axis.Weights.data() + std::size_t{x} * m_axis.MaximumTaps, m_axis.Windows.Count[x],
                                 tile + (m_axis.Windows.First[x] - sourceFirst) * PixelFloats, x,
                                 output + (x - first) * PixelFloats};
            FilterPixel(taps);
        }
        StoreByteTile(output, (end - first) * std::size_t{Samples}, (first - m_task.FirstColumn) * std::size_t{Samples},
                      m_task.Destinations, m_task.Count);
    }

    template <class T> static T* AlignUp(T* pointer) {
        return reinterpret_cast<T*>((reinterpret_cast<std::uintptr_t>(pointer) + 63) & ~std::uintptr_t{63});
    }

    HWY_INLINE void FilterPixel(const PixelTaps& taps) {
        const LaneTag df;
        for (std::size_t row = 0; row < TileRows; row += hn::Lanes(df)) {
            Lane even[Samples];
            Lane odd[Samples];
            for (std::size_t c = 0; c < Samples; ++c) {
                even[c] = odd[c] = hn::Zero(df);
            }
            const float* pixel = taps.Tile + row;
            std::size_t t = 0;
            for (; t + 2 <= taps.Count; t += 2) {
                const Lane first = hn::Set(df, taps.Weights[t]);
                const Lane second = hn::Set(df, taps.Weights[t + 1]);
                for (std::size_t c = 0; c < Samples; ++c) {
                    even[c] = hn::MulAdd(first, hn::Load(df, pixel + c * TileRows), even[c]);
                    odd[c] = hn::MulAdd(second, hn::Load(df, pixel + PixelFloats + c * TileRows), odd[c]);
                }
                pixel += 2 * PixelFloats;
            }
            if (t < taps.Count) {
                const Lane first = hn::Set(df, taps.Weights[t]);
                for (std::size_t c = 0; c < Samples; ++c) {
                    even[c] = hn::MulAdd(first, hn::Load(df, pixel + c * TileRows), even[c]);
                }
            }
            for (std::size_t c = 0; c < Samples; ++c) {
                even[c] = hn::Add(even[c], odd[c]);
            }
            if constexpr (Alpha) {
                FinishWithAlpha(taps, row, even);
            } else {
                FinishPlain(taps, row, even);
            }
        }
    }

    HWY_INLINE void FinishPlain(const PixelTaps& taps, std::size_t row, const Lane* sums) {
        auto doubtful = hn::FirstN(LaneTag(), 0);
        for (std::size_t c = 0; c < Samples; ++c) {
            const Rounded rounded = RoundLanes(hn::Add(sums[c], hn::Set(LaneTag(), Centre)), m_limit);
            StoreBytes(rounded.Value, taps.Output + c * TileRows + row);
            doubtful = hn::Or(doubtful, rounded.Doubtful);
        }
        if (HWY_UNLIKELY(!hn::AllFalse(LaneTag(), doubtful))) {
            RepairLanes(taps, row, MaskBits(doubtful));
        }
    }

    HWY_INLINE void FinishWithAlpha(const PixelTaps& taps, std::size_t row, const Lane* sums) {
        const LaneTag df;
        const Lane weight = sums[Samples - 1];
        const Rounded alpha = RoundLanes(weight, m_limit);
        StoreBytes(alpha.Value, taps.Output + (Samples - 1) * TileRows + row);
        auto doubtful = alpha.Doubtful;
        const auto faint = hn::Lt(weight, m_leastWeight);
        // Faint lanes get a harmless divisor; they are decided below.
        const Lane inverse = hn::Div(hn::Set(df, 1.0F), hn::IfThenElse(faint, hn::Set(df, 1.0F), weight));
        const Lane limit = hn::NegMulAdd(m_quotientError, inverse, hn::Set(df, 0.4999F));
        for (std::size_t c = 0; c + 1 < Samples; ++c) {
            const Rounded rounded = RoundLanes(hn::MulAdd(sums[c], inverse, hn::Set(df, Centre)), limit);
            StoreBytes(hn::IfThenZeroElse(hn::RebindMask(hn::Rebind<std::int32_t, LaneTag>(), faint), rounded.Value),
                       taps.Output + c * TileRows + row);
            doubtful = hn::Or(doubtful, hn::AndNot(faint, rounded.Doubtful));
        }
        // A weight sum that is surely negative makes the pixel 0, and so does a window without any alpha.
        const auto unsure = hn::And(faint, hn::Ge(weight, m_leastNegative));
        if (HWY_UNLIKELY(!hn::AllFalse(df, unsure))) {
            doubtful = hn::Or(doubtful, hn::And(unsure, hn::Ne(HighestAlpha(taps, row), hn::Zero(df))));
        }
        if (HWY_UNLIKELY(!hn::AllFalse(df, doubtful))) {
            RepairLanes(taps, row, MaskBits(doubtful));
        }
    }

    /// 0 where all pixels of the window are transparent, which leaves nothing to compute.
    static Lane HighestAlpha(const PixelTaps& taps, std::size_t row) {
        const LaneTag df;
        Lane highest = hn::Zero(df);
        for (std::size_t t = 0; t < taps.Count; ++t) {
            highest = hn::Max(highest, hn::Load(df, taps.Tile + t * PixelFloats + (Samples - 1) * TileRows + row));
        }
        return highest;
    }

    HWY_NOINLINE void RepairLanes(const PixelTaps& taps, std::size_t row, std::uint32_t bits) {
        for (std::size_t lane = row; bits != 0; ++lane, bits >>= 1) {
            if ((bits & 1) == 0 || lane >= m_task.Count) {
                continue;
            }
            std::uint8_t pixel[Samples];
            m_task.Repair.Repair(m_task.Repair.Context, static_cast<std::uint32_t>(lane), taps.Pixel, pixel);
            for (std::size_t c = 0; c < Samples; ++c) {
                taps.Output[c * TileRows + lane] = pixel[c];
            }
        }
    }

    const SincRowsTask& m_task;
    const TapAxis<double>& m_axis;
    Lane m_limit;
    Lane m_quotientError;
    Lane m_leastWeight;
    Lane m_leastNegative;
    std::size_t m_tileFirst = 0;
    std::size_t m_tileEnd = 0;
};

bool FilterRows(const SincRowsTask& task, int samples, bool alpha) {
    switch (samples) {
    case 1:
        return RowFilter<1, false>(task).Run();
    case 2:
        return alpha ? RowFilter<2, true>(task).Run() : RowFilter<2, false>(task).Run();
    case 3:
        return RowFilter<3, false>(task).Run();
    case 4:
        return alpha ? RowFilter<4, true>(task).Run() : RowFilter<4, false>(task).Run();
    default:
        return alpha ? RowFilter<5, true>(task).Run() : RowFilter<5, false>(task).Run();
    }
}

/// The second pass: lanes are neighbouring samples of a row.
template <int Samples, bool Alpha> class ColumnFilter {
public:
    explicit ColumnFilter(const SincColumnsTask& task)
        : m_task(task), m_count(task.Axis.Axis.Windows.Count[task.Position]),
          m_weights(task.Axis.Weights.data() + std::size_t{task.Position} * task.Axis.Axis.MaximumTaps),
          m_limit(hn::Set(LaneTag(), static_cast<float>(0.5 - task.Axis.SumError))),
          m_quotientError(hn::Set(LaneTag(), static_cast<float>(task.Axis.QuotientError))),
          m_leastWeight(hn::Set(LaneTag(), static_cast<float>(std::max(1.0, task.Axis.QuotientError * 3.0)))),
          m_leastNegative(hn::Set(LaneTag(), static_cast<float>(-task.Axis.SumError))) {}

    bool Run() {
        const LaneTag df;
        const std::size_t lanes = hn::Lanes(df);
        const std::size_t samples = std::size_t{m_task.Pixels} * Samples;
        std::size_t i = 0;
        for (; i + 4 * lanes <= samples; i += 4 * lanes) {
            FilterVectors<4>(i);
        }
        for (; i + lanes <= samples; i += lanes) {
            FilterVectors<1>(i);
        }
        for (std::size_t pixel = i / Samples; pixel < m_task.Pixels; ++pixel) {
            RepairPixel(pixel);
        }
        return true;
    }

private:
    template <std::size_t Vectors> HWY_INLINE void FilterVectors(std::size_t first) {
        const LaneTag df;
        const hn::Rebind<std::uint8_t, LaneTag> du;
        Lane sums[2][Vectors];
        for (std::size_t v = 0; v < Vectors; ++v) {
            sums[0][v] = sums[1][v] = hn::Zero(df);
        }
        const auto add = [&](std::size_t t, Lane* chain) HWY_ATTR {
            const Lane weight = hn::Set(df, m_weights[t]);
            const std::uint8_t* const row = m_task.Rows[t] + first;
            for (std::size_t v = 0; v < Vectors; ++v) {
                const auto bytes = hn::LoadU(du, row + v * hn::Lanes(df));
                chain[v] = hn::MulAdd(weight, Alpha ? WithAlpha(bytes) : Centred(bytes), chain[v]);
            }
        };
        std::size_t t = 0;
        for (; t + 2 <= m_count; t += 2) {
            add(t, sums[0]);
            add(t + 1, sums[1]);
        }
        if (t < m_count) {
            add(t, sums[0]);
        }
        for (std::size_t v = 0; v < Vectors; ++v) {
            Finish(first + v * hn::Lanes(df), hn::Add(sums[0][v], sums[1][v]));
        }
    }

    static HWY_INLINE Lane AlphaOfPixel(Lane samples) {
        if constexpr (Samples == 2) {
            return hn::DupOdd(samples);
        } else {
            return hn::Broadcast<3>(samples);
        }
    }

    /// Lanes that hold alpha.
    static HWY_INLINE hn::MFromD<LaneTag> AlphaLanes() {
        const hn::Rebind<std::int32_t, LaneTag> di;
        const auto last = hn::Set(di, Samples - 1);
        return hn::RebindMask(LaneTag(), hn::Eq(hn::And(hn::Iota(di, 0), last), last));
    }

    using Bytes = hn::VFromD<hn::Rebind<std::uint8_t, LaneTag>>;

    static HWY_INLINE Lane Centred(Bytes bytes) {
        const hn::Rebind<std::uint8_t, LaneTag> du;
        const hn::Rebind<std::int8_t, LaneTag> d8;
        const auto centred = hn::BitCast(d8, hn::Xor(bytes, hn::Set(du, 0x80)));
        return hn::ConvertTo(LaneTag(), hn::PromoteTo(hn::Rebind<std::int32_t, LaneTag>(), centred));
    }

    /// Centred colours times alpha, and alpha.
    static HWY_INLINE Lane WithAlpha(Bytes bytes) {
        const LaneTag df;
        const Lane centred = Centred(bytes);
        const Lane alpha = hn::Add(AlphaOfPixel(centred), hn::Set(df, Centre));
        return hn::Mul(hn::IfThenElse(AlphaLanes(), hn::Set(df, 1.0F), centred), alpha);
    }

    HWY_INLINE void Finish(std::size_t first, Lane sum) {
        const LaneTag df;
        if constexpr (Alpha) {
            const Lane weight = AlphaOfPixel(sum);
            const auto alphaLanes = AlphaLanes();
            const auto faint = hn::AndNot(alphaLanes, hn::Lt(weight, m_leastWeight));
            const auto plain = hn::Or(alphaLanes, faint);
            const Lane inverse = hn::Div(hn::Set(df, 1.0F), hn::IfThenElse(plain, hn::Set(df, 1.0F), weight));
            const Lane limit = hn::IfThenElse(alphaLanes, m_limit,
                                              hn::NegMulAdd(m_quotientError, inverse, hn::Set(df, 0.4999F)));
            const Lane centre = hn::IfThenZeroElse(alphaLanes, hn::Set(df, Centre));
            const Rounded rounded = RoundLanes(hn::MulAdd(sum, inverse, centre), limit);
            StoreBytes(hn::IfThenZeroElse(hn::RebindMask(hn::Rebind<std::int32_t, LaneTag>(), faint), rounded.Value),
                       m_task.Destination + first);
            const auto unsure = hn::And(faint, hn::Ge(weight, m_leastNegative));
            const auto doubtful = hn::Or(hn::AndNot(faint, rounded.Doubtful), unsure);
            if (HWY_UNLIKELY(!hn::AllFalse(df, doubtful))) {
                RepairLanes(first, MaskBits(doubtful));
            }
        } else {
            const Rounded rounded = RoundLanes(hn::Add(sum, hn::Set(df, Centre)), m_limit);
            StoreBytes(rounded.Value, m_task.Destination + first);
            if (HWY_UNLIKELY(!hn::AllFalse(df, rounded.Doubtful))) {
                RepairLanes(first, MaskBits(rounded.Doubtful));
            }
        }
    }

    HWY_NOINLINE void RepairLanes(std::size_t first, std::uint32_t bits) {
        std::size_t done = static_cast<std::size_t>(-1);
        for (std::size_t i = first; bits != 0; ++i, bits >>= 1) {
            if ((bits & 1) != 0 && i / Samples != done) {
                done = i / Samples;
                RepairPixel(done);
            }
        }
    }

    void RepairPixel(std::size_t pixel) {
        if constexpr (Alpha) {
            if (IsTransparent(pixel)) {
                std::fill_n(m_task.Destination + pixel * Samples, Samples, std::uint8_t{0});
                return;
            }
        }
        m_task.Repair.Repair(m_task.Repair.Context, 0, static_cast<std::uint32_t>(pixel),
                             m_task.Destination + pixel * Samples);
    }

    bool IsTransparent(std::size_t pixel) const {
        std::uint32_t any = 0;
        for (std::size_t t = 0; t < m_count; ++t) {
            any |= m_task.Rows[t][pixel * Samples + Samples - 1];
        }
        return any == 0;
    }

    const SincColumnsTask& m_task;
    std::size_t m_count;
    const float* m_weights;
    Lane m_limit;
    Lane m_quotientError;
    Lane m_leastWeight;
    Lane m_leastNegative;
};

bool FilterColumns(const SincColumnsTask& task, int samples, bool alpha) {
    if (!alpha) {
        // Without alpha all samples are alike; pixels matter for the repair alone.
        switch (samples) {
        case 1:
            return ColumnFilter<1, false>(task).Run();
        case 2:
            return ColumnFilter<2, false>(task).Run();
        case 3:
            return ColumnFilter<3, false>(task).Run();
        case 4:
            return ColumnFilter<4, false>(task).Run();
        default:
            return ColumnFilter<5, false>(task).Run();
        }
    }
    if (samples == 2) {
        return ColumnFilter<2, true>(task).Run();
    }
    return ColumnFilter<4, true>(task).Run();
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(FilterRows);
HWY_EXPORT(FilterColumns);

SincFloatAxis::SincFloatAxis(const TapAxis<double>& axis) : Axis(axis), Weights(axis.Weights.size()) {
    double absolute = 0.0;
    for (std::size_t i = 0; i < axis.Positions(); ++i) {
        double sum = 0.0;
        for (std::size_t t = 0; t < axis.MaximumTaps; ++t) {
            const double weight = axis.WeightsOf(i)[t];
            Weights[i * axis.MaximumTaps + t] = static_cast<float>(weight);
            sum += std::fabs(weight);
        }
        absolute = std::max(absolute, sum);
    }
    // Two chains of additions, their joining, the roundings of weight and product, and one more for the canonical side.
    const double relative = (static_cast<double>((axis.MaximumTaps + 1) / 2) + 4.0) * 0x1p-24 * 1.001;
    // Plain samples are centred and so reach 128; alpha is not, and reaches 255. The last term covers adding the centre back.
    SumError = relative * absolute * 255.0 + 0x1p-14;
    // |N / D - N' / D'| <= (e W 255 * 128 + 129 e W 255) / D' for centred colours and quotients that are not cut anyway; the
    // division, the product and the centre are in the 0.0001 by which the quotients' limit stays below one half.
    QuotientError = relative * absolute * 255.0 * (128.0 + 129.0) * 1.01;
}

bool FilterSincRows(const SincRowsTask& task, int samples, bool alpha) {
    return HWY_DYNAMIC_DISPATCH(FilterRows)(task, samples, alpha);
}

bool FilterSincColumns(const SincColumnsTask& task, int samples, bool alpha) {
    return HWY_DYNAMIC_DISPATCH(FilterColumns)(task, samples, alpha);
}

} // namespace ImagingFramework
#endif
