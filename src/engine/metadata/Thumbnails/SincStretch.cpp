#include "metadata/Thumbnails/SincStretch.h"

#include "transforms/resize/PairKernel.h"

namespace ImagingFramework {

namespace {

/// A kernel in lanes with the weights that it reads.
template <class Layout> class LaneStretch final : public ITwoPassKernel {
public:
    using Kernel = PairKernel<SincPolicy, Layout>;

    LaneStretch(const TapAxis<double>& axis, SincStretch::Pass pass, std::uint32_t sourceSize)
        : m_axes(pass == SincStretch::Pass::Rows ? &axis : nullptr, pass == SincStretch::Pass::Columns ? &axis : nullptr),
          m_kernel(m_axes, sourceSize) {}

    std::uint32_t BlockRows() const override { return m_kernel.BlockRows(); }
    std::uint64_t ColumnBytes() const override { return m_kernel.ColumnBytes(); }
    void FilterRows(const std::uint8_t* const* sources, std::uint32_t count, std::uint32_t firstColumn,
                    std::uint32_t endColumn, std::uint8_t* block) override {
        m_kernel.FilterRows(sources, count, firstColumn, endColumn, block);
    }
    void FilterColumns(const std::uint8_t* const* blocks, std::uint32_t y, std::uint8_t* destination,
                       std::uint32_t columns) override {
        m_kernel.FilterColumns(blocks, y, destination, columns);
    }
    void CopyRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t row, std::uint32_t columns) const override {
        m_kernel.CopyRow(from, to, row, columns);
    }

private:
    typename Kernel::Axes m_axes;
    Kernel m_kernel;
};

template <class Sample, int Samples>
std::unique_ptr<ITwoPassKernel> MakeKernelOf(const TapAxis<double>& axis, SincStretch::Pass pass, std::uint32_t sourceSize) {
    using Layout = PixelLayout<Sample, Samples, false>;
    if (HasPairLanes()) {
        return std::make_unique<LaneStretch<Layout>>(axis, pass, sourceSize);
    }
    return std::make_unique<PlainTwoPassKernel<SincPolicy, Layout>>(axis, axis);
}

template <class Sample>
std::unique_ptr<ITwoPassKernel> MakeKernel(const TapAxis<double>& axis, SincStretch::Pass pass, std::uint32_t sourceSize,
                                           std::uint32_t samples) {
    switch (samples) {
    case 1:
        return MakeKernelOf<Sample, 1>(axis, pass, sourceSize);
    case 2:
        return MakeKernelOf<Sample, 2>(axis, pass, sourceSize);
    case 3:
        return MakeKernelOf<Sample, 3>(axis, pass, sourceSize);
    case 4:
        return MakeKernelOf<Sample, 4>(axis, pass, sourceSize);
    case 5:
        return MakeKernelOf<Sample, 5>(axis, pass, sourceSize);
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

SincStretch::SincStretch(Pass pass, std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t first,
                         std::uint32_t count, std::uint32_t samples, std::size_t sampleSize)
    : m_axis(SincResampleHelper::CreateAxis(sourceSize, newSize, first, count)),
      m_pKernel(sampleSize == 1 ? MakeKernel<std::uint8_t>(m_axis, pass, sourceSize, samples)
                                : MakeKernel<std::uint16_t>(m_axis, pass, sourceSize, samples)) {}

} // namespace ImagingFramework
