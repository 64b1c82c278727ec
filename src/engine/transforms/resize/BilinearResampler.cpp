#include "transforms/resize/BilinearSampler.h"

namespace ImagingFramework {

namespace {

template <class Layout> void Resample(const ResizeJob& job) {
    using Sample = typename Layout::Sample;
    const BilinearTables tables(job.Source.GetWidth(), job.Source.GetHeight(), job, Layout::Samples);
    const auto sourceRow = [&](std::uint32_t y) {
        return reinterpret_cast<const Sample*>(job.Source.GetScanlineRef(y));
    };
    const std::uint32_t rows = job.Destination.GetHeight();
    constexpr std::uint32_t minimumChunk = 16;
    job.Team.Prepare(rows);
    job.Team.Run(rows, minimumChunk, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        BilinearSampler<Layout> sampler(tables);
        for (std::uint32_t y = first; y < end; ++y) {
            if (!member.BeginRow()) {
                return;
            }
            sampler.SampleRow(y, sourceRow, reinterpret_cast<Sample*>(job.Destination.GetScanlineRef(y)));
            member.EndRow();
        }
    });
    job.Team.Finish();
}

} // namespace

void ResampleBilinear(const ResizeJob& job) {
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) { Resample<decltype(layout)>(job); });
}

} // namespace ImagingFramework
