#pragma once

#include "transforms/resize/AxisMap.h"
#include "transforms/resize/PixelLayout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Eight neighbouring columns of a row of bytes, read by a few loads of 16 bytes and put in their places by shuffles. Empty
/// where the columns of a group lie too far apart for that.
struct ByteGroups {
    static constexpr std::size_t Columns = 8;
    static constexpr std::size_t MaximumLoads = 8;

    std::size_t Loads = 0;            ///< of each group
    std::vector<std::uint32_t> First; ///< where the first load of each group begins
    /// For each load of each group: which of its bytes become the first and the second neighbour of each column; 0x80 for none.
    std::vector<std::uint8_t> Shuffles;
};

/// Where the columns of a bilinear loop read: sample offsets of both neighbours and the 16.16 weight of the second.
struct BilinearColumns {
    std::vector<std::uint32_t> First;
    std::vector<std::uint32_t> Second;
    std::vector<std::uint16_t> Weight;
    ByteGroups Groups; ///< made for rows of single bytes alone
};

inline BilinearColumns BilinearInitialize(const FixedAxis& axis, std::uint64_t cropStart, std::size_t width,
                                          std::uint32_t samples) {
    BilinearColumns columns;
    columns.First.resize(width);
    columns.Second.resize(width);
    columns.Weight.resize(width);
    for (std::size_t x = 0; x < width; ++x) {
        const std::uint32_t index = axis.Index(cropStart + x);
        columns.First[x] = index * samples;
        columns.Second[x] = axis.Next(index) * samples;
        columns.Weight[x] = static_cast<std::uint16_t>(axis.Fraction(cropStart + x));
    }
    return columns;
}

/// Pixels whose first neighbour, with what a load of `Bytes` takes behind it, lies inside the row and whose second one
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

/// One blended sample; the 16.16 weight of the second is below 1.
inline std::uint32_t Blend(std::uint32_t first, std::uint32_t second, std::uint32_t weight) {
    return (first * (65536U - weight) + second * weight) >> 16;
}

/// The horizontal half, samples without alpha weighting, from pixel `begin` on, which goes to the start of `row`.
template <class Sample, int Samples>
void BlendColumns(const Sample* source, Sample* row, const BilinearColumns& columns, std::size_t begin = 0) {
    for (std::size_t x = begin; x < columns.First.size(); ++x) {
        const Sample* const first = source + columns.First[x];
        const Sample* const second = source + columns.Second[x];
        const std::uint32_t weight = columns.Weight[x];
        for (int c = 0; c < Samples; ++c) {
            row[c] = static_cast<Sample>(Blend(first[c], second[c], weight));
        }
        row += Samples;
    }
}

/// The vertical half.
template <class Sample>
void BlendRows(const Sample* top, const Sample* bottom, Sample* row, std::size_t samples, std::uint32_t weight) {
    for (std::size_t i = 0; i < samples; ++i) {
        row[i] = static_cast<Sample>(Blend(top[i], bottom[i], weight));
    }
}

/// Quotients of several sums by one weight, truncated, for quotients of up to 16 bits. For 8-bit samples the sums have 32
/// bits: with half a unit added no product by the inverse comes near an integer, so the truncation is exact.
template <class Wide> class SharedDivisor {
public:
    explicit SharedDivisor(Wide divisor) : m_divisor(divisor), m_inverse(1.0 / static_cast<double>(divisor)) {}
    Wide Divide(Wide sum) const {
        if constexpr (sizeof(Wide) == 4) {
            return static_cast<Wide>(static_cast<std::int32_t>((static_cast<double>(sum) + 0.5) * m_inverse));
        } else {
            return sum / m_divisor;
        }
    }

private:
    Wide m_divisor;
    double m_inverse;
};

/// One pixel between two, colours weighted by alpha. Where the alpha of the result is 0 its colours are 0: they would have no
/// weight in what follows either.
template <class Layout>
void BlendPixelWithAlpha(const typename Layout::Sample* first, const typename Layout::Sample* second, std::uint32_t weight,
                         typename Layout::Sample* result) {
    using Sample = typename Layout::Sample;
    using Wide = std::conditional_t<sizeof(Sample) == 1, std::uint32_t, std::uint64_t>;
    const Wide firstWeight = Wide{first[Layout::Colors]} * (65536U - weight);
    const Wide secondWeight = Wide{second[Layout::Colors]} * weight;
    const Wide alpha = firstWeight + secondWeight;
    result[Layout::Colors] = static_cast<Sample>(alpha >> 16);
    const bool visible = (alpha >> 16) != 0;
    const SharedDivisor<Wide> divisor(visible ? alpha : 1);
    for (int c = 0; c < Layout::Colors; ++c) {
        const Wide sum = first[c] * firstWeight + second[c] * secondWeight;
        result[c] = static_cast<Sample>(divisor.Divide(visible ? sum : 0));
    }
}

/// The horizontal half with alpha, from pixel `begin` on, which goes to the start of `row`.
template <class Layout>
void BlendColumnsWithAlpha(const typename Layout::Sample* source, typename Layout::Sample* row,
                           const BilinearColumns& columns, std::size_t begin = 0) {
    for (std::size_t x = begin; x < columns.First.size(); ++x) {
        BlendPixelWithAlpha<Layout>(source + columns.First[x], source + columns.Second[x], columns.Weight[x], row);
        row += Layout::Samples;
    }
}

/// The vertical half with alpha.
template <class Layout>
void BlendRowsWithAlpha(const typename Layout::Sample* top, const typename Layout::Sample* bottom,
                        typename Layout::Sample* row, std::size_t pixels, std::uint32_t weight) {
    for (std::size_t i = 0; i < pixels * Layout::Samples; i += Layout::Samples) {
        BlendPixelWithAlpha<Layout>(top + i, bottom + i, weight, row + i);
    }
}

} // namespace ImagingFramework
