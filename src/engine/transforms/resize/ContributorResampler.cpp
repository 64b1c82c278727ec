#include "transforms/resize/ContributorAxis.h"
#include "transforms/resize/PlainTwoPassKernel.h"

#include "ErrorHandling/Exceptions.h"

namespace ImagingFramework {

namespace {

constexpr int MaximumColors = 6;

using ContributorTaps = TapAxis<std::int32_t>;

template <class Layout>
void Resample(const ResizeJob& job, const ContributorTaps& axisX, const ContributorTaps& axisY) {
    static_assert(Layout::Colors <= MaximumColors);
    using Kernel = PlainTwoPassKernel<ContributorPolicy, Layout>;
    RunTwoPass(job, axisY.Windows, [&] { return std::make_unique<Kernel>(axisX, axisY); }, false);
}

} // namespace

void ResampleWithContributors(const ResizeJob& job) {
    const ContributorTaps axisX = CreateContributorAxis(job.Mode, job.Source.GetWidth(), job.NewWidth, job.CropLeft,
                                                        job.Destination.GetWidth());
    const ContributorTaps axisY = CreateContributorAxis(job.Mode, job.Source.GetHeight(), job.NewHeight, job.CropTop,
                                                        job.Destination.GetHeight());
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) { Resample<decltype(layout)>(job, axisX, axisY); });
}

} // namespace ImagingFramework
