#pragma once

#include "transforms/resize/PairVector.h"
#include "transforms/resize/PlainTwoPassKernel.h"

#include <optional>
#include <type_traits>

namespace ImagingFramework {

/// The two passes in lanes, equal to `PlainTwoPassKernel`. Not for 16-bit samples with alpha, and only where the processor
/// `HasPairLanes`.
template <class Policy, class Layout> class PairKernel final : public ITwoPassKernel {
public:
    using Sample = typename Layout::Sample;
    using Axis = TapAxis<typename Policy::Weight>;

    static constexpr PairFormat Format{Layout::Samples,
                                       sizeof(Sample) == 2 ? PairSamples::Words
                                       : Layout::Alpha     ? PairSamples::AlphaBytes
                                                           : PairSamples::Bytes,
                                       std::is_floating_point_v<typename Policy::Weight>};

    /// Both axes cut into digits; what all threads share. Null for a pass that is not used.
    struct Axes {
        Axes(const Axis* axisX, const Axis* axisY) : X(axisX), Y(axisY) {
            if (X != nullptr) {
                PairsX.emplace(*X, Format.Kind, sizeof(Sample) == 2 ? 2 : 4);
            }
            if (Y != nullptr) {
                PairsY.emplace(*Y, Format.Kind, 2);
            }
        }

        const Axis* X;
        const Axis* Y;
        std::optional<PairAxis> PairsX;
        std::optional<PairAxis> PairsY;
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
        const std::size_t columns = PaddedColumns(endColumn - firstColumn);
        if (m_axes.PairsX->IsUsable) {
            FilterPairRows({Format, *m_axes.PairsX, m_sources, m_rowBytes, firstColumn, endColumn, block, columns,
                            {&RepairRow, this}, m_scratch});
            return;
        }
        for (std::uint32_t row = 0; row < PairBlockRows; ++row) {
            for (std::uint32_t x = firstColumn; x < endColumn; ++x) {
                Sample pixel[Layout::Samples];
                RepairRow(this, row, x, reinterpret_cast<std::uint8_t*>(pixel));
                WritePixel(pixel, reinterpret_cast<std::int16_t*>(block), columns, row, x - firstColumn);
            }
        }
    }

    void FilterColumns(const std::uint8_t* const* blocks, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t columns) override {
        m_blocks = blocks;
        m_blockColumns = PaddedColumns(columns);
        m_position = y;
        if (m_axes.PairsY->IsUsable) {
            FilterPairColumns({Format, *m_axes.PairsY, y, blocks, m_blockColumns, destination, columns, {&RepairColumn, this}});
            return;
        }
        for (std::uint32_t x = 0; x < columns; ++x) {
            RepairColumn(this, 0, x, destination + x * PixelSize);
        }
    }

    void CopyRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t row, std::uint32_t columns) const override {
        const std::size_t words = Layout::Samples * PaddedColumns(columns);
        const std::size_t begin = row / 2 * words * 2 + row % 2;
        for (std::size_t i = 0; i < words; ++i) {
            reinterpret_cast<std::int16_t*>(to)[begin + 2 * i] = reinterpret_cast<const std::int16_t*>(from)[begin + 2 * i];
        }
    }

private:
    static constexpr std::size_t PixelSize = sizeof(Sample) * Layout::Samples;
    static constexpr std::int32_t WordCentre = sizeof(Sample) == 2 ? 32768 : 0;

    static std::size_t PaddedColumns(std::uint32_t columns) {
        return (std::size_t{columns} + BlockColumns - 1) / BlockColumns * BlockColumns;
    }

    static void RepairRow(const void* context, std::uint32_t row, std::uint32_t column, std::uint8_t* pixel) {
        const auto& self = *static_cast<const PairKernel*>(context);
        const auto* const source = reinterpret_cast<const Sample*>(self.m_sources[row]);
        FilterPixel<Policy, Layout>(
            *self.m_axes.X, column, [source](std::uint32_t tap) { return source + std::size_t{tap} * Layout::Samples; },
            reinterpret_cast<Sample*>(pixel));
    }

    static void RepairColumn(const void* context, std::uint32_t, std::uint32_t column, std::uint8_t* pixel) {
        const auto& self = *static_cast<const PairKernel*>(context);
        const std::uint32_t firstRow = self.m_axes.Y->Windows.First[self.m_position] / PairBlockRows * PairBlockRows;
        Sample samples[Layout::Samples];
        FilterPixel<Policy, Layout>(
            *self.m_axes.Y, self.m_position,
            [&](std::uint32_t row) {
                const auto* const block =
                    reinterpret_cast<const std::int16_t*>(self.m_blocks[(row - firstRow) / PairBlockRows]);
                ReadPixel(block, self.m_blockColumns, row % PairBlockRows, column, samples);
                return static_cast<const Sample*>(samples);
            },
            reinterpret_cast<Sample*>(pixel));
    }

    static std::size_t WordIndex(std::size_t columns, std::uint32_t row, std::uint32_t column, std::size_t channel) {
        return ((row / 2 * std::size_t{Layout::Samples} + channel) * columns + column) * 2 + row % 2;
    }

    /// The samples that a block holds. Where alpha is 0 the colours do not matter, and are 0.
    static void ReadPixel(const std::int16_t* block, std::size_t columns, std::uint32_t row, std::uint32_t column,
                          Sample* samples) {
        const std::int32_t alpha = Layout::Alpha ? block[WordIndex(columns, row, column, Layout::Colors)] : 1;
        for (std::size_t c = 0; c < Layout::Samples; ++c) {
            std::int32_t value = block[WordIndex(columns, row, column, c)] + WordCentre;
            if (Layout::Alpha && c < Layout::Colors) {
                value = alpha != 0 ? value / alpha + 128 : 0;
            }
            samples[c] = static_cast<Sample>(value);
        }
    }

    static void WritePixel(const Sample* samples, std::int16_t* block, std::size_t columns, std::uint32_t row,
                           std::uint32_t column) {
        for (std::size_t c = 0; c < Layout::Samples; ++c) {
            std::int32_t value = samples[c] - WordCentre;
            if (Layout::Alpha && c < Layout::Colors) {
                value = (value - 128) * samples[Layout::Colors];
            }
            block[WordIndex(columns, row, column, c)] = static_cast<std::int16_t>(value);
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

/// Runs a filter in lanes where there are some, and pixel by pixel otherwise.
template <class Policy>
void RunFilter(const ResizeJob& job, const TapAxis<typename Policy::Weight>& axisX,
               const TapAxis<typename Policy::Weight>& axisY, bool mayRunParallel) {
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) {
        using Layout = decltype(layout);
        if constexpr (sizeof(typename Layout::Sample) == 1 || !Layout::Alpha) {
            if (HasPairLanes()) {
                using Kernel = PairKernel<Policy, Layout>;
                const typename Kernel::Axes axes(&axisX, &axisY);
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
