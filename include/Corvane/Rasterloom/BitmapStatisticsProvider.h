#pragma once

#include <Corvane/Rasterloom/BitmapProvider.h>
#include <Corvane/Rasterloom/Histogram.h>

#include <memory>

namespace ImagingFramework {
enum class HistogramMode : std::uint32_t;
}

namespace Corvane::Rasterloom {

/// What can be told of a picture by counting: `bitmap.get_Statistics()->GetSumHistogram()`. The bitmap is locked meanwhile.
///
/// An empty bitmap fails with `BitmapEmptyException`, an indexed one and one of a packed 16-bit format with
/// `UnsupportedPixelFormatException`, a count that takes longer than `Timeout` with `TimeoutException`.
class RASTERLOOM_API BitmapStatisticsProvider final : public BitmapProvider {
public:
    explicit BitmapStatisticsProvider(std::shared_ptr<BitmapLink> link);

    /// Counts one gray value for each pixel, by the weights with which colours are converted to gray.
    std::unique_ptr<Histogram> GetLuminosityHistogram();
    /// Counts the samples of all colour channels; alpha does not count.
    std::unique_ptr<Histogram> GetSumHistogram();

private:
    std::unique_ptr<Histogram> BuildHistogram(ImagingFramework::HistogramMode mode);
};

} // namespace Corvane::Rasterloom
