#include "metadata/Thumbnails/AnisotropicThumbnailer.h"

#include "metadata/Thumbnails/ThumbnailRatio.h"

#include <algorithm>
#include <cmath>

namespace ImagingFramework {

namespace {

constexpr std::size_t ChannelCount = 4;

std::vector<std::uint32_t> MakeSamples(std::uint32_t imageSize, std::uint32_t thumbSize, std::uint32_t factor) {
    const double ratio = ThumbnailRatio(imageSize, thumbSize) / factor;
    const auto step = static_cast<std::uint64_t>(std::floor(ratio * 65536.0 + 0.5));
    std::vector<std::uint32_t> samples(std::size_t{thumbSize} * factor);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::uint32_t>(std::min<std::uint64_t>((i * step) >> 16, imageSize - 1));
    }
    return samples;
}

} // namespace

AnisotropicThumbnailer::AnisotropicThumbnailer(std::uint32_t samplingFactor, std::uint32_t imageWidth,
                                               std::uint32_t imageHeight, PixelFormat imageFormat,
                                               const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_uintSamplingFactor(samplingFactor), m_converter(imageWidth, imageFormat, pImageColorMap) {
    RequireReduction();
    if (!HasImageSize()) {
        m_sampleRows = MakeSamples(imageHeight, m_uintThumbHeight, samplingFactor);
        m_sampleColumns = MakeSamples(imageWidth, m_uintThumbWidth, samplingFactor);
        m_sums.resize(std::size_t{m_uintThumbWidth} * m_uintThumbHeight * ChannelCount);
    }
}

void AnisotropicThumbnailer::SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) {
    if (rowIndex >= m_uintImageHeight) {
        return;
    }
    if (HasImageSize()) {
        m_converter.Convert(rowData, m_pThumbBitmapData->GetScanlineRef(rowIndex));
        return;
    }
    const auto [begin, end] = std::ranges::equal_range(m_sampleRows, rowIndex);
    if (begin != end) {
        const std::uint8_t* const pRow = m_converter.Convert(rowData);
        for (auto sample = begin; sample != end; ++sample) {
            AddRow(static_cast<std::uint32_t>(sample - m_sampleRows.begin()) / m_uintSamplingFactor, pRow);
        }
    }
    if (++m_uintRowsSeen == m_uintImageHeight) {
        Finish();
    }
}

void AnisotropicThumbnailer::AddRow(std::uint32_t thumbRow, const std::uint8_t* pRow) {
    std::uint16_t* pSum = m_sums.data() + std::size_t{thumbRow} * m_uintThumbWidth * ChannelCount;
    const std::uint32_t* pColumn = m_sampleColumns.data();
    for (std::uint32_t x = 0; x < m_uintThumbWidth; ++x, pSum += ChannelCount) {
        for (std::uint32_t i = 0; i < m_uintSamplingFactor; ++i, ++pColumn) {
            const std::uint8_t* const pPixel = pRow + std::size_t{*pColumn} * RowToArgb::PixelSize;
            for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
                pSum[channel] = static_cast<std::uint16_t>(pSum[channel] + pPixel[channel]);
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
