#include "transforms/resize/PairVector.h"

#include "transforms/resize/PairSum.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/PairVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "transforms/resize/PairFinish-inl.h"
#include "transforms/resize/PairTile-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

#if RASTERLOOM_PLAIN_TARGET

bool HasLanes() { return false; }
void FilterRows(const PairRowsTask&) {}
void FilterColumns(const PairColumnsTask&) {}

#else

bool HasLanes() { return true; }

/// Adds the products of both words of each lane with both weights.
HWY_INLINE Int AddPairProducts(Int sum, Word samples, Word weights) {
#if HWY_ARCH_X86
    Int unused = sum; // only other processors split the sum
    return hn::ReorderWidenMulAccumulate(Ints(), samples, weights, sum, unused);
#else
    const auto even = [](Word words) HWY_ATTR { return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(Ints(), words))); };
    const auto odd = [](Word words) HWY_ATTR { return hn::ShiftRight<16>(hn::BitCast(Ints(), words)); };
    return hn::Add(sum, hn::Add(hn::Mul(even(samples), even(weights)), hn::Mul(odd(samples), odd(weights))));
#endif
}

template <int Channels, int Digits> void SumPairs(const PairSumTask& task) {
    const Ints di;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(di)) {
        Int sums[Channels * Digits];
        for (Int& sum : sums) {
            sum = hn::Zero(di);
        }
        const std::int32_t* weights = task.Weights;
        for (std::size_t i = 0; i < task.SpanCount; ++i) {
            const std::int16_t* data = task.Spans[i].Data + 2 * lane;
            for (std::size_t pair = 0; pair < task.Spans[i].Pairs; ++pair) {
                Word digits[Digits];
                for (std::size_t d = 0; d < Digits; ++d) {
                    digits[d] = hn::BitCast(Words(), hn::Set(di, weights[d]));
                }
                for (std::size_t c = 0; c < Channels; ++c) {
                    const Word samples = hn::Load(Words(), data + c * task.ChannelStride);
                    for (std::size_t d = 0; d < Digits; ++d) {
                        sums[c * Digits + d] = AddPairProducts(sums[c * Digits + d], samples, digits[d]);
                    }
                }
                weights += Digits;
                data += task.PairStride;
            }
        }
        for (std::size_t i = 0; i < Channels * Digits; ++i) {
            hn::Store(sums[i], di, task.Sums + i * BlockLanes + lane);
        }
    }
}

PairSumFunction ChooseSum(int samples, std::uint32_t digits) {
#if HWY_TARGET == HWY_AVX3
    if (const PairSumFunction sum = ChooseDotProductSum(samples, digits)) {
        return sum;
    }
#endif
    return ChoosePairSum(samples, digits, []<int Channels, int Digits>(PairCount<Channels>, PairCount<Digits>) {
        return &SumPairs<Channels, Digits>;
    });
}

/// Lanes that have a pixel which is not transparent in their window. The others are all 0, with nothing to decide.
std::uint32_t VisibleLanes(const PairSumTask& task, std::size_t alphaChannel) {
    const Ints di;
    std::uint32_t visible = 0;
    for (std::size_t lane = 0; lane < BlockLanes; lane += hn::Lanes(di)) {
        Int any = hn::Zero(di);
        for (std::size_t i = 0; i < task.SpanCount; ++i) {
            const std::int16_t* alpha = task.Spans[i].Data + alphaChannel * task.ChannelStride + 2 * lane;
            for (std::size_t pair = 0; pair < task.Spans[i].Pairs; ++pair) {
                any = hn::Or(any, hn::BitCast(di, hn::Load(Words(), alpha + pair * task.PairStride)));
            }
        }
        visible |= MaskBits(di, hn::Ne(any, hn::Zero(di))) << lane;
    }
    return visible;
}

/// One pixel of 16 lanes: sums, samples and the lanes that need repair.
class LaneFilter {
public:
    LaneFilter(const PairFormat& format, const PairAxis& axis, HiddenColours hiddenColours)
        : m_format(format), m_axis(axis), m_hiddenColours(hiddenColours), m_sum(ChooseSum(format.Samples, axis.Digits)),
          m_finish(ChooseFinish(format)) {}

    std::size_t Samples() const { return static_cast<std::size_t>(m_format.Samples); }
    std::size_t SampleSize() const { return m_format.Kind == PairSamples::Words ? 2 : 1; }

    HWY_INLINE std::uint32_t Filter(PairSumTask& task, std::size_t position, std::uint8_t* output) {
        task.Weights = m_axis.WeightsOf(position);
        task.Sums = m_sums;
        m_sum(task);
        std::uint32_t doubtful = m_finish(FinishTask{m_axis, position, Samples(), m_sums, output, m_hiddenColours});
        if (HWY_UNLIKELY(doubtful != 0) && m_format.Kind == PairSamples::AlphaBytes) {
            doubtful &= VisibleLanes(task, Samples() - 1);
        }
        return doubtful;
    }

    /// Replaces the samples of one lane by those of a pixel.
    void PutPixel(const std::uint8_t* pixel, std::size_t lane, std::uint8_t* output) const {
        for (std::size_t c = 0; c < Samples(); ++c) {
            for (std::size_t byte = 0; byte < SampleSize(); ++byte) {
                output[(c * BlockLanes + lane) * SampleSize() + byte] = pixel[c * SampleSize() + byte];
            }
        }
    }

private:
    PairFormat m_format;
    const PairAxis& m_axis;
    HiddenColours m_hiddenColours;
    PairSumFunction m_sum;
    FinishFunction m_finish;
    alignas(64) std::int32_t m_sums[5 * 3 * BlockLanes];
};

template <class T> T* AlignUp(T* pointer) {
    return reinterpret_cast<T*>((reinterpret_cast<std::uintptr_t>(pointer) + 63) & ~std::uintptr_t{63});
}

/// Bytes of a tile, so that it stays in the nearest cache, unless one window is larger.
constexpr std::size_t TileLimit = 24 * 1024;

template <int Samples, PairSamples Kind> class RowPass {
public:
    explicit RowPass(const PairRowsTask& task) : m_task(task), m_filter(task.Format, task.Axis, HiddenColours::Free) {
        task.Scratch.Group.resize(BlockLanes * PixelBytes + 64);
        m_group = AlignUp(task.Scratch.Group.data());
    }

    void Run() {
        for (std::uint32_t first = m_task.FirstColumn; first < m_task.EndColumn; first += BlockLanes) {
            const auto count = std::min<std::uint32_t>(BlockLanes, m_task.EndColumn - first);
            for (std::uint32_t i = 0; i < count; ++i) {
                FilterColumn(first, count, i);
            }
            StoreGroup(first - m_task.FirstColumn);
        }
    }

private:
    using Layout = GroupLayout<Samples, Kind>;
    static constexpr std::size_t PixelBytes = Samples * Layout::SampleSize * BlockLanes;
    static constexpr std::size_t PairWords = Samples * 2 * BlockLanes;

    void FilterColumn(std::uint32_t first, std::uint32_t count, std::uint32_t i) {
        const std::uint32_t x = first + i;
        if (m_task.Axis.End(x) > m_tileEnd) {
            FillTile(x, first + count);
        }
        const std::size_t skipped = (m_task.Axis.First[x] - m_tileFirst) / 2;
        const PairSpan span{m_tile + skipped * PairWords, m_task.Axis.Pairs[x]};
        PairSumTask sum{&span, 1, PairWords, 2 * BlockLanes, nullptr, nullptr};
        std::uint8_t* const output = m_group + i * PixelBytes;
        std::uint32_t doubtful = m_filter.Filter(sum, x, output);
        for (std::size_t row = 0; HWY_UNLIKELY(doubtful != 0); ++row, doubtful >>= 1) {
            if ((doubtful & 1) != 0) {
                std::uint8_t pixel[16];
                m_task.Repair.Repair(m_task.Repair.Context, static_cast<std::uint32_t>(row), x, pixel);
                m_filter.PutPixel(pixel, row, output);
            }
        }
    }

    /// Makes the tile begin with the window of column `x` and reach as far as the columns before `end` need, or as it may.
    /// What it has of that is moved, not made again.
    void FillTile(std::uint32_t x, std::uint32_t end) {
        constexpr std::size_t groupLimit = TileLimit / (Layout::TileWords * sizeof(std::int16_t));
        const std::size_t firstGroup = m_task.Axis.First[x] / Layout::Pixels;
        const auto groupsTo = [&](std::uint32_t column) { return (m_task.Axis.End(column) - 1) / Layout::Pixels + 1; };
        const std::size_t needed = groupsTo(x);
        std::size_t endGroup = std::max(needed, std::min(groupsTo(end - 1), firstGroup + groupLimit));
        const std::size_t oldFirst = m_tileFirst / Layout::Pixels;
        const std::size_t oldEnd = m_tileEnd / Layout::Pixels;
        endGroup = std::max(endGroup, oldEnd);
        std::vector<std::int16_t>& memory = m_task.Scratch.Tile;
        const std::size_t room = (endGroup - firstGroup) * Layout::TileWords + 64;
        std::size_t kept = oldEnd > firstGroup ? oldEnd - firstGroup : 0;
        if (memory.size() < room) {
            memory.resize(room);
            kept = 0;
        }
        m_tile = AlignUp(memory.data());
        if (kept != 0) {
            std::memmove(m_tile, m_tile + (firstGroup - oldFirst) * Layout::TileWords, kept * Layout::TileWords * sizeof(std::int16_t));
        }
        FillPairTile<Samples, Kind>(m_task.Sources, m_task.RowBytes, firstGroup + kept, endGroup, m_tile + kept * Layout::TileWords);
        m_tileFirst = firstGroup * Layout::Pixels;
        m_tileEnd = endGroup * Layout::Pixels;
    }

    /// Puts 16 columns into the block.
    void StoreGroup(std::size_t column) {
        constexpr std::size_t channelBytes = Layout::SampleSize * BlockLanes;
        constexpr std::size_t turnedWords = PairBlockRows * BlockLanes;
        HWY_ALIGN std::int16_t turned[turnedWords];
        HWY_ALIGN std::int16_t alpha[turnedWords];
        for (std::size_t c = Samples; c-- > 0;) {
            constexpr bool hasAlpha = Kind == PairSamples::AlphaBytes;
            std::int16_t* const pairs = hasAlpha && c == Samples - 1 ? alpha : turned;
            if constexpr (Kind == PairSamples::Words) {
                TurnWordColumns(m_group + c * channelBytes, PixelBytes, pairs);
            } else {
                TurnByteColumns(m_group + c * channelBytes, PixelBytes, pairs);
            }
            for (std::size_t pair = 0; pair < PairBlockRows / 2; ++pair) {
                auto* const to = reinterpret_cast<std::int16_t*>(m_task.Block) + ((pair * Samples + c) * m_task.BlockColumns + column) * 2;
                for (std::size_t i = 0; i < 2 * BlockLanes; i += hn::Lanes(Words())) {
                    Word words = hn::Load(Words(), pairs + pair * 2 * BlockLanes + i);
                    if (hasAlpha && c + 1 < Samples) {
                        words = Premultiplied(words, hn::Load(Words(), alpha + pair * 2 * BlockLanes + i));
                    }
                    hn::Store(words, Words(), to + i);
                }
            }
        }
    }

    const PairRowsTask& m_task;
    LaneFilter m_filter;
    std::uint8_t* m_group;
    std::int16_t* m_tile = nullptr;
    std::size_t m_tileFirst = 0;
    std::size_t m_tileEnd = 0;
};

/// `Alpha` where the last sample may weigh the others.
template <int Samples, bool Alpha> void FilterRowsOf(const PairRowsTask& task) {
    if (task.Format.Kind == PairSamples::Words) {
        RowPass<Samples, PairSamples::Words>(task).Run();
    } else if (Alpha && task.Format.Kind == PairSamples::AlphaBytes) {
        RowPass<Samples, Alpha ? PairSamples::AlphaBytes : PairSamples::Bytes>(task).Run();
    } else {
        RowPass<Samples, PairSamples::Bytes>(task).Run();
    }
}

void FilterRows(const PairRowsTask& task) {
    switch (task.Format.Samples) {
    case 1:
        return FilterRowsOf<1, false>(task);
    case 2:
        return FilterRowsOf<2, true>(task);
    case 3:
        return FilterRowsOf<3, false>(task);
    case 4:
        return FilterRowsOf<4, true>(task);
    default:
        return FilterRowsOf<5, true>(task);
    }
}

/// The second pass: lanes are neighbouring columns.
void FilterColumns(const PairColumnsTask& task) {
    LaneFilter filter(task.Format, task.Axis, HiddenColours::Exact);
    const std::size_t pairStride = filter.Samples() * task.BlockColumns * 2;
    constexpr std::size_t blockPairs = PairBlockRows / 2;
    // Windows of many rows reach over many blocks.
    constexpr std::size_t fewSpans = 8;
    PairSpan few[fewSpans];
    std::vector<PairSpan> many;
    const std::size_t firstPair = task.Axis.First[task.Position] % PairBlockRows / 2;
    const std::size_t pairs = task.Axis.Pairs[task.Position];
    const std::size_t spanCount = (firstPair + pairs + blockPairs - 1) / blockPairs;
    if (spanCount > fewSpans) {
        many.resize(spanCount);
    }
    PairSpan* const spans = spanCount > fewSpans ? many.data() : few;
    std::size_t begin = firstPair;
    std::size_t left = pairs;
    for (std::size_t i = 0; i < spanCount; ++i) {
        spans[i] = {reinterpret_cast<const std::int16_t*>(task.Blocks[i]) + begin * pairStride, std::min(left, blockPairs - begin)};
        left -= spans[i].Pairs;
        begin = 0;
    }
    PairSumTask sum{spans, spanCount, pairStride, task.BlockColumns * 2, nullptr, nullptr};
    const std::size_t pixelSize = filter.Samples() * filter.SampleSize();
    HWY_ALIGN std::uint8_t output[5 * 2 * BlockLanes];
    HWY_ALIGN std::uint8_t pixels[5 * 2 * BlockLanes];
    for (std::uint32_t x = 0; x < task.Columns; x += BlockLanes) {
        std::uint32_t doubtful = filter.Filter(sum, task.Position, output);
        const std::size_t count = std::min<std::size_t>(BlockLanes, task.Columns - x);
        for (std::uint32_t lane = 0; HWY_UNLIKELY(doubtful != 0) && lane < count; ++lane, doubtful >>= 1) {
            if ((doubtful & 1) != 0) {
                task.Repair.Repair(task.Repair.Context, 0, x + lane, pixels);
                filter.PutPixel(pixels, lane, output);
            }
        }
        std::uint8_t* const destination = task.Destination + x * pixelSize;
        std::uint8_t* const to = count == BlockLanes ? destination : pixels;
        if (filter.SampleSize() == 1) {
            StorePixels(output, task.Format.Samples, to);
        } else {
            StorePixels(reinterpret_cast<const std::uint16_t*>(output), task.Format.Samples, reinterpret_cast<std::uint16_t*>(to));
        }
        if (count != BlockLanes) {
            std::memcpy(destination, pixels, count * pixelSize);
        }
        for (std::size_t i = 0; i < spanCount; ++i) {
            spans[i].Data += 2 * BlockLanes;
        }
    }
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(HasLanes);
HWY_EXPORT(FilterRows);
HWY_EXPORT(FilterColumns);

bool HasPairLanes() { return HWY_DYNAMIC_DISPATCH(HasLanes)(); }
void FilterPairRows(const PairRowsTask& task) { HWY_DYNAMIC_DISPATCH(FilterRows)(task); }
void FilterPairColumns(const PairColumnsTask& task) { HWY_DYNAMIC_DISPATCH(FilterColumns)(task); }

} // namespace ImagingFramework
#endif
