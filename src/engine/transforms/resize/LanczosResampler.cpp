#include "transforms/resize/FloatSincKernel.h"

namespace ImagingFramework {

namespace {

template <class Layout>
void Resample(const ResizeJob& job, const TapAxis<double>& axisX, const TapAxis<double>& axisY) {
    if constexpr (sizeof(typename Layout::Sample) == 1) {
        const SincFloatAxis floatX(axisX);
        const SincFloatAxis floatY(axisY);
        using Kernel = FloatSincKernel<Layout>;
        RunTwoPass(job, axisY.Windows, [&] { return std::make_unique<Kernel>(floatX, floatY, job.Source.GetWidth()); }, true);
    } else {
        using Kernel = PlainTwoPassKernel<SincPolicy, Layout>;
        RunTwoPass(job, axisY.Windows, [&] { return std::make_unique<Kernel>(axisX, axisY); }, true);
    }
}

} // namespace

void ResampleLanczos(const ResizeJob& job) {
    const TapAxis<double> axisX = SincResampleHelper::CreateAxis(job.Source.GetWidth(), job.NewWidth, job.CropLeft,
                                                                 job.Destination.GetWidth());
    const TapAxis<double> axisY = SincResampleHelper::CreateAxis(job.Source.GetHeight(), job.NewHeight, job.CropTop,
                                                                 job.Destination.GetHeight());
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) { Resample<decltype(layout)>(job, axisX, axisY); });
}

} // namespace ImagingFramework
