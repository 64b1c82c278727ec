#include "transforms/Histogram.h"

#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/SampleAccess.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>
#include <utility>

namespace ImagingFramework {

namespace {

template <class Sample>
void CountRow(const std::uint8_t* samples, std::size_t count, std::size_t step, std::vector<std::uint32_t>& counts) {
    for (std::size_t i = 0; i < count; ++i) {
        ++counts[LoadSample<Sample>(samples, i * step)];
    }
}

void CountRow(const std::uint8_t* samples, std::size_t count, std::size_t step, std::vector<std::uint32_t>& counts) {
    if (counts.size() > 256) {
        CountRow<std::uint16_t>(samples, count, step, counts);
    } else {
        CountRow<std::uint8_t>(samples, count, step, counts);
    }
}

/// The region with its corners in order; the whole for null.
RegionRect OrderedRegion(const BitmapData& data, const RegionRect* pRegion) {
    const std::int64_t width = data.GetWidth();
    const std::int64_t height = data.GetHeight();
    if (pRegion == nullptr) {
        return {0, 0, static_cast<std::int32_t>(width - 1), static_cast<std::int32_t>(height - 1)};
    }
    RegionRect region = *pRegion;
    if (region.Left > region.Right) {
        std::swap(region.Left, region.Right);
    }
    if (region.Top > region.Bottom) {
        std::swap(region.Top, region.Bottom);
    }
    if (region.Left < 0 || region.Top < 0 || region.Right >= width || region.Bottom >= height) {
        throw ArgumentOutOfRangeException("region");
    }
    return region;
}

} // namespace

void Histogram::BuildHistogram(const BitmapData& data, HistogramMode mode, const RegionRect* pRegion) {
    if (data.IsEmpty()) {
        throw NotInitializedException("BitmapData");
    }
    const PixelFormat format = data.GetPixelFormat();
    if (!PixelFormatIsWholeChannel(format)) {
        throw UnsupportedPixelFormatException();
    }
    const RegionRect region = OrderedRegion(data, pRegion);
    const bool isLuminosity = mode == HistogramMode::Luminosity;
    try {
        m_counts.assign(PixelFormatIsExtended(format) ? 65536 : 256, 0);
    } catch (const std::bad_alloc&) {
        throw MemoryException();
    }
    m_uintWidth = static_cast<std::uint32_t>(region.Right - region.Left) + 1;
    m_uintHeight = static_cast<std::uint32_t>(region.Bottom - region.Top) + 1;
    m_uintChannelCount = isLuminosity ? 1 : m_channels.CountSelectedChannels(format);
    ResetProgress(static_cast<std::int32_t>(m_uintHeight));
    if (isLuminosity) {
        CountLuminosity(data, region);
    } else {
        CountSamples(data, region);
    }
}

void Histogram::CountSamples(const BitmapData& data, const RegionRect& region) {
    const PixelFormat format = data.GetPixelFormat();
    const std::size_t sampleSize = PixelFormatIsExtended(format) ? 2 : 1;
    const std::size_t pixelSize = PixelFormatSize(format) / 8;
    const std::uint32_t channels = m_channels.GetIsAlphaProcessed() ? PixelFormatChannelCount(format)
                                                                    : PixelFormatColorChannelCount(format);
    for (std::int32_t y = region.Top; y <= region.Bottom; ++y) {
        const std::uint8_t* const row = data.GetScanlineRef(static_cast<std::uint32_t>(y)) +
                                        pixelSize * static_cast<std::size_t>(region.Left);
        for (std::uint32_t channel = 0; channel < channels; ++channel) {
            if (m_channels.GetIsChannelSelected(channel)) {
                CountRow(row + channel * sampleSize, m_uintWidth, pixelSize / sampleSize, m_counts);
            }
        }
        UpdateEvents(1);
    }
}

void Histogram::CountLuminosity(const BitmapData& data, const RegionRect& region) {
    const PixelFormat format = data.GetPixelFormat();
    ColorSpaceManager manager;
    manager.SetColorManagementEngine(ColorManagementEngine::None);
    manager.InitializePerScanlineHandling(m_uintWidth, format, nullptr, nullptr,
                                          PixelFormatIsExtended(format) ? PixelFormat::Format16bppGrayScale
                                                                        : PixelFormat::Format8bppGrayScale);
    MemPtr<std::uint8_t> grays;
    grays.AllocateCount(std::size_t{m_uintWidth} * 2);
    const std::size_t offset = std::size_t{PixelFormatSize(format) / 8} * static_cast<std::size_t>(region.Left);
    for (std::int32_t y = region.Top; y <= region.Bottom; ++y) {
        manager.TransformScanline(data.GetScanlineRef(static_cast<std::uint32_t>(y)) + offset, grays.Get());
        CountRow(grays.Get(), m_uintWidth, 1, m_counts);
        UpdateEvents(1);
    }
}

std::uint32_t Histogram::GetEntry(std::uint32_t index) const {
    if (index >= m_counts.size()) {
        throw ArgumentOutOfRangeException("index");
    }
    return m_counts[index];
}

void Histogram::SetEntry(std::uint32_t index, std::uint32_t count) {
    if (index >= m_counts.size()) {
        throw ArgumentOutOfRangeException("index");
    }
    m_counts[index] = count;
}

std::uint64_t Histogram::GetTotal() const { return std::accumulate(m_counts.begin(), m_counts.end(), std::uint64_t{0}); }

double Histogram::CalculateMean() const {
    const std::uint64_t total = GetTotal();
    std::uint64_t sum = 0;
    for (std::size_t value = 0; value < m_counts.size(); ++value) {
        sum += value * m_counts[value];
    }
    return total == 0 ? 0.0 : static_cast<double>(sum) / static_cast<double>(total);
}

double Histogram::CalculateStdDev() const {
    const std::uint64_t total = GetTotal();
    const double mean = CalculateMean();
    double sum = 0.0;
    for (std::size_t value = 0; value < m_counts.size(); ++value) {
        const double distance = static_cast<double>(value) - mean;
        sum += distance * distance * m_counts[value];
    }
    return total == 0 ? 0.0 : std::sqrt(sum / static_cast<double>(total));
}

std::uint32_t Histogram::GetPercentile(float fraction) const {
    if (!(fraction >= 0.0F && fraction <= 1.0F)) {
        throw ArgumentOutOfRangeException("fPercentile");
    }
    if (m_counts.empty()) {
        return 0;
    }
    const auto target =
        static_cast<std::uint64_t>(std::floor(static_cast<double>(fraction) * static_cast<double>(GetTotal()) + 0.5));
    std::uint64_t sum = 0;
    for (std::uint32_t value = 0; value < m_counts.size(); ++value) {
        sum += m_counts[value];
        if (sum > target) {
            return value;
        }
    }
    return GetSize() - 1;
}

} // namespace ImagingFramework
