#include <Corvane/Rasterloom/BitmapStatisticsProvider.h>

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "transforms/Histogram.h"

#include <Corvane/Rasterloom/Bitmap.h>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

BitmapStatisticsProvider::BitmapStatisticsProvider(std::shared_ptr<BitmapLink> link)
    : BitmapProvider(std::move(link)) {}

std::unique_ptr<Histogram> BitmapStatisticsProvider::BuildHistogram(engine::HistogramMode mode) {
    const ObjectGuard guard(*this);
    Bitmap& bitmap = ValidateRuntimeData();
    const ObjectGuard bitmapGuard(bitmap);
    // The bitmap may have been emptied before its lock was had.
    bitmap.ThrowIfEmpty();
    auto counts = CallEngine([&] {
        auto histogram = std::make_unique<engine::Histogram>();
        // Without events there would be no time limit.
        engine::IInternalEventsImpl events;
        histogram->SetEvents(&events);
        histogram->SetTimeout(bitmap.get_Timeout());
        histogram->BuildHistogram(bitmap.get__InternalBitmapData(), mode);
        histogram->SetEvents(nullptr);
        return histogram;
    });
    return std::make_unique<Histogram>(std::move(counts));
}

std::unique_ptr<Histogram> BitmapStatisticsProvider::GetLuminosityHistogram() {
    return BuildHistogram(engine::HistogramMode::Luminosity);
}

std::unique_ptr<Histogram> BitmapStatisticsProvider::GetSumHistogram() {
    return BuildHistogram(engine::HistogramMode::Sum);
}

} // namespace Corvane::Rasterloom
