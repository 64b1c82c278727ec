#pragma once

#include "Common/BitmapData.h"
#include "Common/InternalEvents.h"
#include "Common/PerChannelItem.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

enum class HistogramMode : std::uint32_t {
    Luminosity = 0, ///< one gray value for each pixel
    Sum = 1,        ///< each sample of the selected channels
};

/// How often each value occurs in a picture: 256 counts for 8 bits per channel, 65536 for 16.
class Histogram : public IInternalEventsHostImpl {
public:
    Histogram() = default;

    /// Counts the pixels of `data`, or of a region of it whose corners are inclusive and in any order. The channels of the
    /// mode `Sum` are those of `GetChannels`. One step of progress for each row.
    ///
    /// Fails with `UnsupportedPixelFormatException` for indexed and packed 16-bit formats, with `NotInitializedException`
    /// for an empty raster and with `ArgumentOutOfRangeException` ("region") for a region that is not inside it.
    void BuildHistogram(const BitmapData& data, HistogramMode mode, const RegionRect* pRegion = nullptr);

    bool IsEmpty() const noexcept { return m_counts.empty(); }
    std::uint32_t GetSize() const noexcept { return static_cast<std::uint32_t>(m_counts.size()); }
    /// These two fail with `ArgumentOutOfRangeException` ("index").
    std::uint32_t GetEntry(std::uint32_t index) const;
    void SetEntry(std::uint32_t index, std::uint32_t count);

    /// What was counted: the size in pixels, and the samples of each pixel.
    std::uint32_t GetWidth() const noexcept { return m_uintWidth; }
    std::uint32_t GetHeight() const noexcept { return m_uintHeight; }
    std::uint32_t GetChannelCount() const noexcept { return m_uintChannelCount; }

    /// Of nothing, these give 0.
    double CalculateMean() const;
    double CalculateStdDev() const;
    /// The value in the middle of all samples; of an even number of them the upper one.
    std::uint32_t CalculateMedian() const { return GetPercentile(0.5F); }
    /// The first value up to which there are more samples than `fraction` of all, rounded; the last value when there is
    /// none. Fails with `ArgumentOutOfRangeException` ("fPercentile") outside 0 to 1.
    std::uint32_t GetPercentile(float fraction) const;

    PerChannelItem& GetChannels() noexcept { return m_channels; }
    const PerChannelItem& GetChannels() const noexcept { return m_channels; }

private:
    void CountSamples(const BitmapData& data, const RegionRect& region);
    void CountLuminosity(const BitmapData& data, const RegionRect& region);
    std::uint64_t GetTotal() const;

    PerChannelItem m_channels;
    std::vector<std::uint32_t> m_counts;
    std::uint32_t m_uintWidth = 0;
    std::uint32_t m_uintHeight = 0;
    std::uint32_t m_uintChannelCount = 0;
};

} // namespace ImagingFramework
