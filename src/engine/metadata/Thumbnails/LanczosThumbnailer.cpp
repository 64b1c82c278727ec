#include "metadata/Thumbnails/LanczosThumbnailer.h"

#include "metadata/Thumbnails/ThumbnailRatio.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

namespace ImagingFramework {

// --- Weights

namespace {

double SincKernel(double x) {
    if (x == 0.0) {
        return 1.0;
    }
    if (x <= -3.0 || x >= 3.0) {
        return 0.0;
    }
    const double wave = 2.0 * std::numbers::pi * x;
    const double window = wave / 3.0;
    return std::sin(wave) / wave * std::sin(window) / window;
}

template <class Sample>
Sample RoundToSample(double sum) {
    constexpr double maximum = std::numeric_limits<Sample>::max();
    return static_cast<Sample>(std::clamp(sum + 0.5, 0.0, maximum));
}

bool NeedsConversionFirst(PixelFormat format) {
    return PixelFormatIsIndexed(format) || PixelFormatIsPacked16(format);
}

} // namespace

SincTaps::SincTaps(std::uint32_t imageSize, std::uint32_t thumbSize)
    : m_uintImageSize(imageSize), m_ratio(ThumbnailRatio(imageSize, thumbSize)) {
    const double limit = imageSize >> 1;
    m_uintHalf = static_cast<std::uint32_t>(std::min(1.0 + std::trunc(3.0 * m_ratio), limit));
    // A side of one pixel has no taps; the nearest pixel stands for the sum.
    m_uintTaps = m_uintHalf == 0 ? 1 : 2 * m_uintHalf - 1;
}

std::uint32_t SincTaps::GetWeights(std::uint32_t position, std::vector<double>& weights) const {
    const double p = position * m_ratio;
    const std::int64_t first = static_cast<std::int64_t>(p + 0.5) - (m_uintTaps >> 1);
    const std::int64_t begin = std::clamp<std::int64_t>(first, 0, std::int64_t{m_uintImageSize} - 1);
    const std::int64_t end = std::clamp<std::int64_t>(first + m_uintTaps, begin + 1, m_uintImageSize);
    if (m_uintHalf == 0) {
        weights.assign(1, 1.0);
        return static_cast<std::uint32_t>(begin);
    }
    weights.resize(static_cast<std::size_t>(end - begin));
    double sum = 0.0;
    for (std::int64_t j = begin; j < end; ++j) {
        const double weight = SincKernel((static_cast<double>(j) - p) * 0.5 / m_ratio);
        weights[static_cast<std::size_t>(j - begin)] = weight;
        sum += weight;
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return static_cast<std::uint32_t>(begin);
}

// --- Rows

template <class Sample>
LanczosThumbnailer<Sample>::LanczosThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight,
                                               PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                               BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_bConvertFirst(NeedsConversionFirst(imageFormat) || HasImageSize()),
      m_inputConverter(imageWidth, m_bConvertFirst ? imageFormat : PixelFormat::Format32bppArgb, pImageColorMap),
      m_outputConverter(m_uintThumbWidth, m_bConvertFirst ? PixelFormat::Format32bppArgb : imageFormat, nullptr),
      m_vertical(imageHeight, m_uintThumbHeight) {
    RequireReduction();
    if (m_bConvertFirst) {
        m_imageFormat = PixelFormat::Format32bppArgb;
    }
    m_uintChannels = PixelFormatSize(m_imageFormat) / 8 / sizeof(Sample);
    m_rowSamples = std::size_t{m_uintThumbWidth} * m_uintChannels;
    if (HasImageSize()) {
        return;
    }
    const SincTaps horizontal(imageWidth, m_uintThumbWidth);
    std::vector<double> weights;
    for (std::uint32_t x = 0; x < m_uintThumbWidth; ++x) {
        m_columnFirst.push_back(horizontal.GetWeights(x, weights));
        m_columnCount.push_back(static_cast<std::uint32_t>(weights.size()));
        m_columnWeights.insert(m_columnWeights.end(), weights.begin(), weights.end());
    }
    m_ring.resize(m_rowSamples * m_vertical.GetMaximumCount());
    m_output.resize(m_rowSamples);
    m_sums.resize(m_rowSamples);
}

template <class Sample>
void LanczosThumbnailer<Sample>::CheckOrder(std::uint32_t rowIndex) {
    const std::int64_t distance = std::int64_t{rowIndex} - m_intLastRow;
    if (distance > 1 || distance < -1) {
        throw UnsupportedScanlinesOrderException("Use for example Anisotropic interpolation mode");
    }
    m_intLastRow = rowIndex;
}

template <class Sample>
void LanczosThumbnailer<Sample>::SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) {
    if (rowIndex >= m_uintImageHeight) {
        return;
    }
    if (HasImageSize()) {
        m_inputConverter.Convert(rowData, m_pThumbBitmapData->GetScanlineRef(rowIndex));
        return;
    }
    CheckOrder(rowIndex);
    const std::uint8_t* const pRow = m_bConvertFirst ? m_inputConverter.Convert(rowData) : rowData;
    ReduceRow(reinterpret_cast<const Sample*>(pRow), RingRow(rowIndex));
    ProduceRows(rowIndex);
}

template <class Sample>
void LanczosThumbnailer<Sample>::ReduceRow(const Sample* pSource, Sample* pDestination) const {
    const double* pWeights = m_columnWeights.data();
    const std::uint32_t channels = m_uintChannels;
    for (std::uint32_t x = 0; x < m_uintThumbWidth; ++x) {
        const std::uint32_t count = m_columnCount[x];
        const Sample* const pFirst = pSource + std::size_t{m_columnFirst[x]} * channels;
        for (std::uint32_t channel = 0; channel < channels; ++channel) {
            double sum = 0.0;
            const Sample* pSample = pFirst + channel;
            for (std::uint32_t tap = 0; tap < count; ++tap, pSample += channels) {
                sum += *pSample * pWeights[tap];
            }
            *pDestination++ = RoundToSample<Sample>(sum);
        }
        pWeights += count;
    }
}

template <class Sample>
void LanczosThumbnailer<Sample>::ProduceRows(std::uint32_t lastRow) {
    while (m_uintNextThumbRow < m_uintThumbHeight) {
        // Once for each row that is made, not for each that comes in: a tall image has many weights a row.
        if (!m_bRowWeightsReady) {
            m_uintFirstWeighted = m_vertical.GetWeights(m_uintNextThumbRow, m_rowWeights);
            m_bRowWeightsReady = true;
        }
        if (m_uintFirstWeighted + m_rowWeights.size() > std::size_t{lastRow} + 1) {
            return;
        }
        ProduceRow(m_uintFirstWeighted);
        ++m_uintNextThumbRow;
        m_bRowWeightsReady = false;
    }
}

template <class Sample>
void LanczosThumbnailer<Sample>::ProduceRow(std::uint32_t first) {
    std::ranges::fill(m_sums, 0.0);
    for (std::size_t tap = 0; tap < m_rowWeights.size(); ++tap) {
        const Sample* const pRow = RingRow(first + static_cast<std::uint32_t>(tap));
        const double weight = m_rowWeights[tap];
        for (std::size_t i = 0; i < m_rowSamples; ++i) {
            m_sums[i] += pRow[i] * weight;
        }
    }
    std::ranges::transform(m_sums, m_output.begin(), RoundToSample<Sample>);
    m_outputConverter.Convert(reinterpret_cast<const std::uint8_t*>(m_output.data()),
                              m_pThumbBitmapData->GetScanlineRef(m_uintNextThumbRow));
}

template class LanczosThumbnailer<std::uint8_t>;
template class LanczosThumbnailer<std::uint16_t>;

} // namespace ImagingFramework
