#include "metadata/Thumbnails/AnisotropicThumbnailer.h"

#include "transforms/resize/AxisMap.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::size_t ChannelCount = 4;

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
    m_sums.resize(std::size_t{m_uintThumbWidth} * m_uintThumbHeight * ChannelCount);
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
    std::uint16_t* pSum = m_sums.data() + std::size_t{thumbRow} * m_uintThumbWidth * ChannelCount;
    for (std::uint32_t x = 0; x < m_uintThumbWidth; ++x, pSum += ChannelCount) {
        for (std::uint32_t i = 0; i < m_uintSamplingFactor; ++i, pSamples += ChannelCount) {
            for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
                pSum[channel] = static_cast<std::uint16_t>(pSum[channel] + pSamples[channel]);
            }
        }
    }
}

void AnisotropicThumbnailer::Finish() {
    const std::uint32_t sampleCount = m_uintSamplingFactor * m_uintSamplingFactor;
    const std::size_t rowSize = std::size_t{m_uintThumbWidth} * ChannelCount;
    for (std::uint32_t y = 0; y < m_uintThumbHeight; ++y) {
        const std::uint16_t* const pSums = m_sums.data() + y * rowSize;
        std::transform(pSums, pSums + rowSize, m_pThumbBitmapData->GetScanlineRef(y),
                       [sampleCount](std::uint16_t sum) { return static_cast<std::uint8_t>(sum / sampleCount); });
    }
}

} // namespace ImagingFramework
