// Included once per target of the dynamic dispatch; no include guard of the usual kind.
#if defined(RASTERLOOM_GRID_SEARCH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef RASTERLOOM_GRID_SEARCH_INL_H_
#undef RASTERLOOM_GRID_SEARCH_INL_H_
#else
#define RASTERLOOM_GRID_SEARCH_INL_H_
#endif

#include "Common/GridColorMapper.h"
#include "Common/VectorTarget.h"

#include <hwy/highway.h>

#include <cstdint>
#include <cstring>
#include <limits>

// The scalar target, which is what stands for processors before SSSE3, has no vectors of 16 bytes; `GridColorMapper::Find`
// serves there.
#if !RASTERLOOM_PLAIN_TARGET

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::GridVector::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using IntTag = hn::FixedTag<std::int32_t, 4>;
using WordTag = hn::FixedTag<std::int16_t, 8>;
using ByteTag = hn::FixedTag<std::uint8_t, 4>;
using Ints = hn::VFromD<IntTag>;
using Words = hn::VFromD<WordTag>;

/// By lane, the sum of the products of two pairs of words.
HWY_INLINE Ints MultiplyPairs(Words a, Words b) {
    const IntTag d;
    Ints upper = hn::Zero(d);
    const Ints lower = hn::ReorderWidenMulAccumulate(d, a, b, hn::Zero(d), upper);
    return hn::RearrangeToOddPlusEven(lower, upper);
}

/// A colour as a word of bytes, alpha on top, and as the pairs (blue, green) and (red, alpha) of words in lanes 0 and 1.
struct Pixel {
    std::uint32_t Bytes;
    Ints Pairs;
};

HWY_INLINE Pixel LoadPixel(const std::uint8_t* bytes) {
    const hn::FixedTag<std::int16_t, 4> half;
    Pixel pixel;
    std::memcpy(&pixel.Bytes, bytes, 4);
    const auto words = hn::PromoteTo(half, hn::LoadU(ByteTag(), bytes));
    pixel.Pairs = hn::BitCast(IntTag(), hn::ZeroExtendVector(WordTag(), words));
    return pixel;
}

/// Lanes of 0 to 255: blue, green, red, alpha.
HWY_INLINE Pixel PixelOfLanes(Ints lanes) {
    const hn::FixedTag<std::int16_t, 4> half;
    const hn::FixedTag<std::uint32_t, 1> word;
    const auto words = hn::DemoteTo(half, lanes);
    return {hn::GetLane(hn::BitCast(word, hn::DemoteTo(ByteTag(), lanes))),
            hn::BitCast(IntTag(), hn::ZeroExtendVector(WordTag(), words))};
}

/// A run of searches in a grid of byte indices.
class GridSearch {
public:
    explicit GridSearch(GridColorMapper& grid)
        : m_grid(grid), m_view(grid.GetView()), m_uintLast(grid.GetLastFound()) {}
    GridSearch(const GridSearch&) = delete;
    GridSearch& operator=(const GridSearch&) = delete;
    ~GridSearch() { m_grid.SetLastFound(m_uintLast); }

    HWY_INLINE std::uint32_t Find(const Pixel& pixel) {
        const std::uint32_t cell = m_view.Cells[GridColorMapper::CellIndex(pixel.Bytes, m_view.AlphaMask)];
        const std::uint32_t blockCount = cell & 255;
        if (HWY_UNLIKELY(blockCount == 0)) {
            return AskGrid(pixel.Bytes);
        }
        const Words blueGreen = hn::BitCast(WordTag(), hn::Broadcast<0>(pixel.Pairs));
        const Words redAlpha = hn::BitCast(WordTag(), hn::Broadcast<1>(pixel.Pairs));
        const GridColorMapper::Block* block = m_view.Blocks + (cell >> 8);
        Two two{Keys(*block, blueGreen, redAlpha), hn::Set(IntTag(), std::numeric_limits<std::int32_t>::max())};
        for (std::uint32_t i = 1; i < blockCount; ++i) {
            two.Add(Keys(*++block, blueGreen, redAlpha));
        }
        two.Fold(hn::Shuffle1032(two.Smallest), hn::Shuffle1032(two.Second));
        two.Fold(hn::Shuffle2301(two.Smallest), hn::Shuffle2301(two.Second));
        const auto smallest = static_cast<std::uint32_t>(hn::GetLane(two.Smallest));
        const auto second = static_cast<std::uint32_t>(hn::GetLane(two.Second));
        // Equal above the index: a tie.
        if (HWY_UNLIKELY((smallest ^ second) < 256)) {
            return AskGrid(pixel.Bytes);
        }
        m_uintLast = smallest & 255;
        return m_uintLast;
    }

private:
    /// The smallest and the second smallest key of each lane.
    struct Two {
        Ints Smallest;
        Ints Second;

        HWY_INLINE void Add(Ints keys) {
            Second = hn::Min(Second, hn::Max(Smallest, keys));
            Smallest = hn::Min(Smallest, keys);
        }
        HWY_INLINE void Fold(Ints otherSmallest, Ints otherSecond) {
            Second = hn::Min(Second, otherSecond);
            Add(otherSmallest);
        }
    };

    static HWY_INLINE Ints Keys(const GridColorMapper::Block& block, Words blueGreen, Words redAlpha) {
        const IntTag d;
        const Words first = hn::BitCast(WordTag(), hn::Load(d, block.BlueGreen.data()));
        const Words second = hn::BitCast(WordTag(), hn::Load(d, block.RedAlpha.data()));
        const Ints products = hn::Add(MultiplyPairs(blueGreen, first), MultiplyPairs(redAlpha, second));
        return hn::Add(hn::ShiftLeft<8>(products), hn::Load(d, block.Constants.data()));
    }

    /// New cells, cells of the tree and ties.
    HWY_NOINLINE std::uint32_t AskGrid(std::uint32_t pixel) {
        m_grid.SetLastFound(m_uintLast);
        m_uintLast = m_grid.Find(pixel);
        m_view = m_grid.GetView();
        return m_uintLast;
    }

    GridColorMapper& m_grid;
    GridColorMapper::View m_view;
    std::uint32_t m_uintLast;
};

} // namespace ImagingFramework::GridVector::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // !RASTERLOOM_PLAIN_TARGET
#endif // include guard
