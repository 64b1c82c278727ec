#pragma once

#include "transforms/resize/PairVector.h"
#include "transforms/resize/PlainTwoPassKernel.h"

#include <type_traits>

namespace ImagingFramework {

/// The two passes in lanes, equal to `PlainTwoPassKernel`. Not for 16-bit samples with alpha.
template <class Policy, class Layout> class PairKernel final : public ITwoPassKernel {
public:
    using Sample = typename Layout::Sample;
    using Axis = TapAxis<typename Policy::Weight>;

    static constexpr PairFormat Format{Layout::Samples,
                                       sizeof(Sample) == 2 ? PairSamples::Words
                                       : Layout::Alpha     ? PairSamples::AlphaBytes
                                                           : PairSamples::Bytes,
                                       std::is_floating_point_v<typename Policy::Weight>};

    /// Both axes cut into digits; what all threads share.
    struct Axes {
        Axes(const Axis& axisX, const Axis& axisY)
            : X(axisX), Y(axisY), PairsX(axisX, Format.Kind, sizeof(Sample) == 2 ? 2 : 4), PairsY(axisY, Format.Kind, 2) {}
        bool IsUsable() const { return PairsX.IsUsable && PairsY.IsUsable && HasPairLanes(); }

        const Axis& X;
        const Axis& Y;
        PairAxis PairsX;
        PairAxis PairsY;
    };

    PairKernel(const Axes& axes, std::uint32_t sourceWidth)
        : m_axes(axes), m_rowBytes(std::size_t{sourceWidth} * PixelSize) {}

    std::uint32_t BlockRows() const override { return PairBlockRows; }
    std::uint64_t ColumnBytes() const override { return PairBlockRows * 2 * Layout::Samples; }

    void FilterRows(const std::uint8_t* const* sources, std::uint32_t count, std::uint32_t firstColumn,
                    std::uint32_t endColumn, std::uint8_t* block) override {
        for (std::uint32_t k = 0; k < PairBlockRows; ++k) {
            m_sources[k] = sources[k < count ? k : 0];
        }
        m_blockColumns = (endColumn - firstColumn + BlockColumns - 1) / BlockColumns * BlockColumns;
        FilterPairRows({Format, m_axes.PairsX, m_sources, m_rowBytes, firstColumn, endColumn, block, m_blockColumns,
                        {&RepairRow, this}, m_scratch});
    }

    void FilterColumns(const std::uint8_t* const* blocks, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t columns) override {
        m_blocks = blocks;
        m_position = y;
        FilterPairColumns({Format, m_axes.PairsY, y, blocks, m_blockColumns, destination, columns, {&RepairColumn, this}});
    }

private:
    static constexpr std::size_t PixelSize = sizeof(Sample) * Layout::Samples;

    static void RepairRow(const void* context, std::uint32_t row, std::uint32_t column, std::uint8_t* pixel) {
        const auto& self = *static_cast<const PairKernel*>(context);
        const auto* const source = reinterpret_cast<const Sample*>(self.m_sources[row]);
        FilterPixel<Policy, Layout>(
            self.m_axes.X, column, [source](std::uint32_t tap) { return source + std::size_t{tap} * Layout::Samples; },
            reinterpret_cast<Sample*>(pixel));
    }

    static void RepairColumn(const void* context, std::uint32_t, std::uint32_t column, std::uint8_t* pixel) {
        const auto& self = *static_cast<const PairKernel*>(context);
        Sample samples[Layout::Samples];
        FilterPixel<Policy, Layout>(
            self.m_axes.Y, self.m_position,
            [&](std::uint32_t row) {
                self.ReadBlock(row, column, samples);
                return static_cast<const Sample*>(samples);
            },
            reinterpret_cast<Sample*>(pixel));
    }

    /// The samples that a block holds. Where alpha is 0 the colours do not matter, and are 0.
    void ReadBlock(std::uint32_t row, std::uint32_t column, Sample* samples) const {
        const std::uint32_t firstRow = m_axes.Y.Windows.First[m_position] / PairBlockRows * PairBlockRows;
        const auto* const block =
            reinterpret_cast<const std::int16_t*>(m_blocks[(row - firstRow) / PairBlockRows]);
        const std::size_t pair = row % PairBlockRows / 2;
        const auto word = [&](std::size_t channel) {
            return std::int32_t{block[((pair * Layout::Samples + channel) * m_blockColumns + column) * 2 + row % 2]};
        };
        const std::int32_t alpha = Layout::Alpha ? word(Layout::Colors) : 0;
        if (Layout::Alpha && alpha == 0) {
            std::fill_n(samples, Layout::Samples, Sample{0});
            return;
        }
        for (std::size_t c = 0; c < Layout::Samples; ++c) {
            std::int32_t value = word(c);
            if (Layout::Alpha && c < Layout::Colors) {
                value = value / alpha + 128;
            } else if (sizeof(Sample) == 2) {
                value += 32768;
            }
            samples[c] = static_cast<Sample>(value);
        }
    }

    const Axes& m_axes;
    std::size_t m_rowBytes;
    PairScratch m_scratch;
    const std::uint8_t* m_sources[PairBlockRows] = {};
    std::size_t m_blockColumns = 0;
    const std::uint8_t* const* m_blocks = nullptr;
    std::uint32_t m_position = 0;
};

/// Runs a filter in lanes where they fit, and pixel by pixel otherwise.
template <class Policy>
void RunFilter(const ResizeJob& job, const TapAxis<typename Policy::Weight>& axisX,
               const TapAxis<typename Policy::Weight>& axisY, bool mayRunParallel) {
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) {
        using Layout = decltype(layout);
        if constexpr (sizeof(typename Layout::Sample) == 1 || !Layout::Alpha) {
            using Kernel = PairKernel<Policy, Layout>;
            const typename Kernel::Axes axes(axisX, axisY);
            if (axes.IsUsable()) {
                const auto create = [&] { return std::make_unique<Kernel>(axes, job.Source.GetWidth()); };
                RunTwoPass(job, axisY.Windows, create, mayRunParallel);
                return;
            }
        }
        using Kernel = PlainTwoPassKernel<Policy, Layout>;
        RunTwoPass(job, axisY.Windows, [&] { return std::make_unique<Kernel>(axisX, axisY); }, mayRunParallel);
    });
}

} // namespace ImagingFramework
