#pragma once

#include "transforms/resize/PixelLayout.h"
#include "transforms/resize/TapAxis.h"

#include <algorithm>
#include <array>

namespace ImagingFramework {

/// The canonical arithmetic of the two-pass filters for one pixel of either pass: every sum takes its taps in ascending
/// order, one multiplication and one addition each. With alpha, the colours' weights are those of the taps times alpha.
/// `Policy` names the types of weights and sums and turns sums into samples. Faster kernels must give the very same samples.
/// `pixelAt` gives the samples of the pixel at a position of the axis.
template <class Policy, class Layout, class PixelAt>
void FilterPixel(const TapAxis<typename Policy::Weight>& axis, std::uint32_t position, const PixelAt& pixelAt,
                 typename Layout::Sample* result) {
    using Sample = typename Layout::Sample;
    using Sum = typename Policy::Sum;
    const std::uint32_t first = axis.Windows.First[position];
    if (axis.Copies[position] != 0) {
        std::copy_n(pixelAt(first), Layout::Samples, result);
        return;
    }
    const std::uint32_t count = axis.Windows.Count[position];
    const auto* const weights = axis.WeightsOf(position);
    std::array<Sum, Layout::Samples> sums{};
    for (std::uint32_t t = 0; t < count; ++t) {
        const Sample* const pixel = pixelAt(first + t);
        Sum weight = static_cast<Sum>(weights[t]);
        std::array<Sum, Layout::Samples> values;
        for (std::size_t c = 0; c < Layout::Samples; ++c) {
            values[c] = static_cast<Sum>(pixel[c]);
        }
        if constexpr (Layout::Alpha) {
            // Nothing is added by a transparent pixel, and large parts of many pictures are.
            if (pixel[Layout::Colors] == 0) {
                continue;
            }
            weight = weight * values[Layout::Colors];
            values[Layout::Colors] = 1; // the sum of alpha is that of the weights
        }
        for (std::size_t c = 0; c < Layout::Samples; ++c) {
            sums[c] += weight * values[c];
        }
    }
    const Sum total = static_cast<Sum>(axis.Totals[position]);
    for (int c = 0; c < Layout::Colors; ++c) {
        const Sum sum = sums[static_cast<std::size_t>(c)];
        result[c] = Layout::Alpha ? Policy::template WeightedSample<Sample>(sum, sums[Layout::Samples - 1])
                                  : Policy::template PlainSample<Sample>(sum, total);
    }
    if constexpr (Layout::Alpha) {
        result[Layout::Colors] = Policy::template PlainSample<Sample>(sums[Layout::Colors], total);
    }
}

/// The two passes pixel by pixel. A block is one row.
template <class Policy, class Layout> class PlainTwoPassKernel final : public ITwoPassKernel {
public:
    using Sample = typename Layout::Sample;
    using Axis = TapAxis<typename Policy::Weight>;

    PlainTwoPassKernel(const Axis& axisX, const Axis& axisY) : m_axisX(axisX), m_axisY(axisY) {}

    std::uint32_t BlockRows() const override { return 1; }
    std::uint64_t ColumnBytes() const override { return sizeof(Sample) * Layout::Samples; }

    void FilterRows(const std::uint8_t* const* sources, std::uint32_t, std::uint32_t firstColumn, std::uint32_t endColumn,
                    std::uint8_t* block) override {
        const auto* const source = reinterpret_cast<const Sample*>(sources[0]);
        auto* row = reinterpret_cast<Sample*>(block);
        for (std::uint32_t x = firstColumn; x < endColumn; ++x) {
            FilterPixel<Policy, Layout>(
                m_axisX, x, [source](std::uint32_t tap) { return source + std::size_t{tap} * Layout::Samples; }, row);
            row += Layout::Samples;
        }
    }

    void FilterColumns(const std::uint8_t* const* blocks, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t columns) override {
        const std::uint32_t top = m_axisY.Windows.First[y];
        auto* const row = reinterpret_cast<Sample*>(destination);
        for (std::uint32_t x = 0; x < columns; ++x) {
            const std::size_t offset = std::size_t{x} * Layout::Samples;
            FilterPixel<Policy, Layout>(
                m_axisY, y, [=](std::uint32_t tap) { return reinterpret_cast<const Sample*>(blocks[tap - top]) + offset; },
                row + offset);
        }
    }

    void CopyRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t, std::uint32_t columns) const override {
        std::copy_n(from, columns * ColumnBytes(), to);
    }

private:
    const Axis& m_axisX;
    const Axis& m_axisY;
};

} // namespace ImagingFramework
