#include "transforms/resize/ContributorAxis.h"
#include "transforms/resize/PairKernel.h"

namespace ImagingFramework {

void ResampleWithContributors(const ResizeJob& job) {
    const TapAxis<std::int32_t> axisX = CreateContributorAxis(job.Mode, job.Source.GetWidth(), job.NewWidth, job.CropLeft,
                                                              job.Destination.GetWidth());
    const TapAxis<std::int32_t> axisY = CreateContributorAxis(job.Mode, job.Source.GetHeight(), job.NewHeight, job.CropTop,
                                                              job.Destination.GetHeight());
    RunFilter<ContributorPolicy>(job, axisX, axisY, false);
}

} // namespace ImagingFramework
