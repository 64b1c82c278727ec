#pragma once

#include "transforms/resize/PixelLayout.h"
#include "transforms/resize/TapAxis.h"

#include <algorithm>
#include <array>

namespace ImagingFramework {

/// The canonical arithmetic of the two-pass filters: every sum takes its taps in ascending order, one multiplication and one
/// addition each. With alpha, the colours' weights are those of the taps times alpha. `Policy` names the types of weights and
/// sums and turns sums into samples. Faster kernels must give the very same samples.
template <class Policy, class Layout> class PlainTwoPassKernel : public ITwoPassKernel {
public:
    using Sample = typename Layout::Sample;
    using Weight = typename Policy::Weight;
    using Sum = typename Policy::Sum;
    using Axis = TapAxis<Weight>;

    PlainTwoPassKernel(const Axis& axisX, const Axis& axisY) : m_axisX(axisX), m_axisY(axisY) {}

    void FilterRows(const std::uint8_t* const* sources, std::uint8_t* const* destinations, std::uint32_t count,
                    std::uint32_t firstColumn, std::uint32_t endColumn) override {
        for (std::uint32_t k = 0; k < count; ++k) {
            const auto* const source = reinterpret_cast<const Sample*>(sources[k]);
            auto* row = reinterpret_cast<Sample*>(destinations[k]);
            for (std::uint32_t x = firstColumn; x < endColumn; ++x) {
                FilterPixel(m_axisX, x, [source](std::uint32_t tap) { return source + std::size_t{tap} * Layout::Samples; },
                            row);
                row += Layout::Samples;
            }
        }
    }

    void FilterColumns(const std::uint8_t* const* rows, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t pixels) override {
        FilterColumnRange(rows, y, destination, 0, pixels);
    }

protected:
    /// One pixel of either pass. `pixelAt` gives the pixel at a position of the axis.
    template <class PixelAt>
    static void FilterPixel(const Axis& axis, std::uint32_t position, const PixelAt& pixelAt, Sample* result) {
        const std::uint32_t first = axis.Windows.First[position];
        if (axis.Copies[position] != 0) {
            std::copy_n(pixelAt(first), Layout::Samples, result);
            return;
        }
        const Weight* const weights = axis.WeightsOf(position);
        std::array<Sum, Layout::Samples> sums{};
        for (std::uint32_t t = 0; t < axis.Windows.Count[position]; ++t) {
            const Sample* const pixel = pixelAt(first + t);
            Sum weight = static_cast<Sum>(weights[t]);
            if constexpr (Layout::Alpha) {
                weight = weight * static_cast<Sum>(pixel[Layout::Colors]);
                sums[Layout::Colors] += weight;
            }
            for (int c = 0; c < Layout::Colors; ++c) {
                sums[static_cast<std::size_t>(c)] += weight * static_cast<Sum>(pixel[c]);
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

    /// The columns from pixel `first` up to and without `end`.
    void FilterColumnRange(const std::uint8_t* const* rows, std::uint32_t y, std::uint8_t* destination,
                           std::uint32_t first, std::uint32_t end) {
        const std::uint32_t top = m_axisY.Windows.First[y];
        auto* const row = reinterpret_cast<Sample*>(destination);
        for (std::uint32_t x = first; x < end; ++x) {
            const std::size_t offset = std::size_t{x} * Layout::Samples;
            FilterPixel(m_axisY, y,
                        [=](std::uint32_t tap) { return reinterpret_cast<const Sample*>(rows[tap - top]) + offset; },
                        row + offset);
        }
    }

    const Axis& m_axisX;
    const Axis& m_axisY;
};

} // namespace ImagingFramework
