#include "metadata/Thumbnails/AnisotropicThumbnailer.h"

#include "transforms/resize/AxisMap.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::size_t ChannelCount = 4;

/// The sampling factor is a constant here, so that the compiler sees vectors.
template <std::uint32_t Factor>
void AddSamples(const std::uint8_t* pSamples, std::uint16_t* pSums, std::size_t pixelCount) {
    for (std::size_t x = 0; x < pixelCount; ++x, pSums += ChannelCount, pSamples += Factor * ChannelCount) {
        for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
            std::uint32_t sum = pSums[channel];
            for (std::size_t i = 0; i < Factor; ++i) {
                sum += pSamples[i * ChannelCount + channel];
            }
            pSums[channel] = static_cast<std::uint16_t>(sum);
        }
    }
}

template <std::uint32_t Factor>
void DivideSums(const std::uint16_t* pSums, std::uint8_t* pTarget, std::size_t count) {
    std::transform(pSums, pSums + count, pTarget,
                   [](std::uint16_t sum) { return static_cast<std::uint8_t>(sum / (Factor * Factor)); });
}

} // namespace

AnisotropicThumbnailer::AnisotropicThumbnailer(std::uint32_t samplingFactor, std::uint32_t imageWidth,
                                               std::uint32_t imageHeight, PixelFormat imageFormat,
                                               const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_uintSamplingFactor(samplingFactor) {
    if (HasImageSize()) {
        m_converter.emplace(imageWidth, imageFormat, pImageColorMap);
        return;
    }
    m_sampleRows = SampleIndices(imageHeight, m_uintThumbHeight, samplingFactor, 0, m_uintThumbHeight);
    m_sampler.emplace(SampleIndices(imageWidth, m_uintThumbWidth, samplingFactor, 0, m_uintThumbWidth), imageFormat,
                      pImageColorMap);
    const std::size_t sumCount = std::size_t{m_uintThumbWidth} * m_uintThumbHeight * ChannelCount;
    m_sums.AllocateCount(sumCount);
    std::fill_n(m_sums.Get(), sumCount, std::uint16_t{0});
}

void AnisotropicThumbnailer::SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) {
    if (rowIndex >= m_uintImageHeight) {
        return;
    }
    if (m_converter) {
        m_converter->Convert(rowData, m_pThumbBitmapData->GetScanlineRef(rowIndex));
        return;
    }
    const auto [begin, end] = std::ranges::equal_range(m_sampleRows, rowIndex);
    if (begin != end) {
        const std::uint8_t* const pSamples = m_sampler->Sample(rowData);
        for (auto sample = begin; sample != end; ++sample) {
            AddRow(static_cast<std::uint32_t>(sample - m_sampleRows.begin()) / m_uintSamplingFactor, pSamples);
        }
    }
    if (++m_uintRowsSeen == m_uintImageHeight) {
        Finish();
    }
}

void AnisotropicThumbnailer::AddRow(std::uint32_t thumbRow, const std::uint8_t* pSamples) {
    std::uint16_t* const pSums = m_sums.Get() + std::size_t{thumbRow} * m_uintThumbWidth * ChannelCount;
    const auto add = m_uintSamplingFactor == 2 ? AddSamples<2> : AddSamples<3>;
    add(pSamples, pSums, m_uintThumbWidth);
}

void AnisotropicThumbnailer::Finish() {
    const std::size_t rowSize = std::size_t{m_uintThumbWidth} * ChannelCount;
    const auto divide = m_uintSamplingFactor == 2 ? DivideSums<2> : DivideSums<3>;
    for (std::uint32_t y = 0; y < m_uintThumbHeight; ++y) {
        divide(m_sums.Get() + y * rowSize, m_pThumbBitmapData->GetScanlineRef(y), rowSize);
    }
}

} // namespace ImagingFramework
