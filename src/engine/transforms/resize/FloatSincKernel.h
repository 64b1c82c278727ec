#pragma once

#include "transforms/resize/PlainTwoPassKernel.h"
#include "transforms/resize/SincResampleHelper.h"
#include "transforms/resize/SincVector.h"

#include <array>

namespace ImagingFramework {

/// 8-bit samples in lanes of single precision, with canonical sums where those cannot decide.
template <class Layout> class FloatSincKernel final : public PlainTwoPassKernel<SincPolicy, Layout> {
public:
    using Base = PlainTwoPassKernel<SincPolicy, Layout>;

    FloatSincKernel(const SincFloatAxis& axisX, const SincFloatAxis& axisY, std::uint32_t sourceWidth)
        : Base(axisX.Axis, axisY.Axis), m_floatX(axisX), m_floatY(axisY), m_sourceWidth(sourceWidth) {}

    std::uint32_t BlockRows() const override { return SincBlockRows; }

    void FilterRows(const std::uint8_t* const* sources, std::uint8_t* const* destinations, std::uint32_t count,
                    std::uint32_t firstColumn, std::uint32_t endColumn) override {
        std::array<const std::uint8_t*, SincBlockRows> rows{};
        for (std::uint32_t k = 0; k < SincBlockRows; ++k) {
            rows[k] = sources[k < count ? k : 0];
        }
        m_rows = rows.data();
        const SincRowsTask task{m_floatX,    rows.data(), destinations,       count,    m_sourceWidth,
                                firstColumn, endColumn,   {&RepairRow, this}, m_scratch};
        if (!IsVector(m_floatX) || !FilterSincRows(task, Layout::Samples, Layout::Alpha)) {
            Base::FilterRows(sources, destinations, count, firstColumn, endColumn);
        }
    }

    void FilterColumns(const std::uint8_t* const* rows, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t pixels) override {
        m_rows = rows;
        m_position = y;
        const SincColumnsTask task{m_floatY, rows, y, destination, pixels, {&RepairColumn, this}};
        constexpr bool hasLanes = !Layout::Alpha || Layout::Samples != 5;
        if (!hasLanes || !IsVector(m_floatY) || !FilterSincColumns(task, Layout::Samples, Layout::Alpha)) {
            Base::FilterColumns(rows, y, destination, pixels);
        }
    }

private:
    static bool IsVector(const SincFloatAxis& axis) { return axis.IsUsable() && axis.Axis.Copies[0] == 0; }

    static void RepairRow(const void* context, std::uint32_t row, std::uint32_t pixel, std::uint8_t* result) {
        const auto& self = *static_cast<const FloatSincKernel*>(context);
        const std::uint8_t* const source = self.m_rows[row];
        Base::FilterPixel(self.m_axisX, pixel,
                          [source](std::uint32_t tap) { return source + std::size_t{tap} * Layout::Samples; }, result);
    }

    static void RepairColumn(const void* context, std::uint32_t, std::uint32_t pixel, std::uint8_t* result) {
        const auto& self = *static_cast<const FloatSincKernel*>(context);
        const std::uint32_t top = self.m_axisY.Windows.First[self.m_position];
        const std::size_t offset = std::size_t{pixel} * Layout::Samples;
        Base::FilterPixel(self.m_axisY, self.m_position,
                          [&](std::uint32_t tap) { return self.m_rows[tap - top] + offset; }, result);
    }

    const SincFloatAxis& m_floatX;
    const SincFloatAxis& m_floatY;
    std::uint32_t m_sourceWidth;
    SincScratch m_scratch;
    const std::uint8_t* const* m_rows = nullptr;
    std::uint32_t m_position = 0;
};

} // namespace ImagingFramework
