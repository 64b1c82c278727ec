#include "transforms/resize/PairKernel.h"
#include "transforms/resize/SincResampleHelper.h"

namespace ImagingFramework {

void ResampleLanczos(const ResizeJob& job) {
    const TapAxis<double> axisX = SincResampleHelper::CreateAxis(job.Source.GetWidth(), job.NewWidth, job.CropLeft,
                                                                 job.Destination.GetWidth());
    const TapAxis<double> axisY = SincResampleHelper::CreateAxis(job.Source.GetHeight(), job.NewHeight, job.CropTop,
                                                                 job.Destination.GetHeight());
    RunFilter<SincPolicy>(job, axisX, axisY, true);
}

} // namespace ImagingFramework
