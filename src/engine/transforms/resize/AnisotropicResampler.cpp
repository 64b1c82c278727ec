#include "transforms/resize/AxisMap.h"
#include "transforms/resize/BilinearRows.h"
#include "transforms/resize/PixelLayout.h"
#include "transforms/resize/Resamplers.h"

#include <array>
#include <limits>
#include <vector>

namespace ImagingFramework {

namespace {

template <class Layout> using SampleSum = std::conditional_t<sizeof(typename Layout::Sample) == 1, std::uint32_t, std::uint64_t>;

/// The offsets as the pixels of a row take them. The counter into the table has 16 bits and wraps without a check: very wide
/// rasters repeat their first columns. That is the established result, and stays.
template <class Layout, std::uint32_t Count> std::vector<std::size_t> ColumnOffsets(const ResizeJob& job) {
    const std::uint32_t pixels = job.Destination.GetWidth();
    const std::vector<std::uint32_t> table =
        SampleIndices(job.Source.GetWidth(), job.NewWidth, Count, job.CropLeft, pixels);
    std::vector<std::size_t> offsets(table.size());
    std::uint16_t counter = 0;
    for (std::size_t x = 0; x < pixels; ++x) {
        for (std::uint32_t k = 0; k < Count; ++k) {
            offsets[x * Count + k] = std::size_t{table[std::size_t{counter} + k]} * Layout::Samples;
        }
        counter = static_cast<std::uint16_t>(counter + Count);
    }
    return offsets;
}

template <class Layout, std::uint32_t Count>
void AnisotropicPixel(const std::array<const typename Layout::Sample*, Count>& rows, const std::size_t* offsets,
                      typename Layout::Sample* pixel) {
    using Sample = typename Layout::Sample;
    using Sum = SampleSum<Layout>;
    std::array<Sum, Layout::Samples> sums{};
    for (const Sample* const row : rows) {
        for (std::uint32_t k = 0; k < Count; ++k) {
            const Sample* const from = row + offsets[k];
            const Sum weight = Layout::Alpha ? Sum{from[Layout::Samples - 1]} : Sum{1};
            for (int c = 0; c < Layout::Colors; ++c) {
                sums[static_cast<std::size_t>(c)] += weight * from[c];
            }
            if constexpr (Layout::Alpha) {
                sums[Layout::Samples - 1] += weight;
            }
        }
    }
    if constexpr (Layout::Alpha) {
        const Sum total = sums[Layout::Samples - 1];
        const SharedDivisor<Sum> divisor(total != 0 ? total : 1); // all sums are 0 then
        for (int c = 0; c < Layout::Colors; ++c) {
            pixel[c] = static_cast<Sample>(divisor.Divide(sums[static_cast<std::size_t>(c)]));
        }
        pixel[Layout::Samples - 1] = static_cast<Sample>(total / (Count * Count));
    } else {
        for (int c = 0; c < Layout::Samples; ++c) {
            pixel[c] = static_cast<Sample>(sums[static_cast<std::size_t>(c)] / (Count * Count));
        }
    }
}

template <class Layout, std::uint32_t Count> void Resample(const ResizeJob& job) {
    using Sample = typename Layout::Sample;
    const std::uint32_t rows = job.Destination.GetHeight();
    const std::uint32_t width = job.Destination.GetWidth();
    const std::vector<std::size_t> columns = ColumnOffsets<Layout, Count>(job);
    const std::vector<std::uint32_t> sourceRows =
        SampleIndices(job.Source.GetHeight(), job.NewHeight, Count, job.CropTop, rows);
    job.Team.Prepare(rows);
    job.Team.Run(rows, 1, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        for (std::uint32_t y = first; y < end; ++y) {
            if (!member.BeginRow()) {
                return;
            }
            std::array<const Sample*, Count> from{};
            for (std::uint32_t k = 0; k < Count; ++k) {
                const std::uint32_t index = sourceRows[std::size_t{y} * Count + k];
                from[k] = reinterpret_cast<const Sample*>(job.Source.GetScanlineRef(index));
            }
            auto* const row = reinterpret_cast<Sample*>(job.Destination.GetScanlineRef(y));
            for (std::size_t x = 0; x < width; ++x) {
                AnisotropicPixel<Layout, Count>(from, columns.data() + x * Count, row + x * Layout::Samples);
            }
            member.EndRow();
        }
    });
    job.Team.Finish();
}

} // namespace

void CheckAnisotropicHeight(std::uint32_t height) {
    if (std::uint64_t{height} * 3 > std::numeric_limits<std::uint16_t>::max()) {
        throw OverflowException();
    }
}

void ResampleAnisotropic(const ResizeJob& job) {
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) {
        using Layout = decltype(layout);
        if (job.Mode == InterpolationMode::Anisotropic4) {
            Resample<Layout, 2>(job);
        } else {
            Resample<Layout, 3>(job);
        }
    });
}

} // namespace ImagingFramework
