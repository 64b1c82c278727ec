#include "metadata/Thumbnails/LanczosThumbnailer.h"

#include "Common/Numeric.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ImagingFramework {

namespace {

/// Bytes of the rows that are filtered together.
constexpr std::uint64_t BlockLimit = std::uint64_t{2} << 20;
/// Weights of columns that are kept; those of wider images are made anew for each block of rows.
constexpr std::uint32_t WeightLimit = std::uint32_t{1} << 19;

bool NeedsConversionFirst(PixelFormat format) {
    return PixelFormatIsIndexed(format) || PixelFormatIsPacked16(format);
}

} // namespace

template <class Sample>
LanczosThumbnailer<Sample>::LanczosThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight,
                                               PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                               BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_bConvertFirst(NeedsConversionFirst(imageFormat) || HasImageSize()),
      m_inputConverter(imageWidth, m_bConvertFirst ? imageFormat : PixelFormat::Format32bppArgb, pImageColorMap),
      m_outputConverter(m_uintThumbWidth, m_bConvertFirst ? PixelFormat::Format32bppArgb : imageFormat, nullptr) {
    if (m_bConvertFirst) {
        m_imageFormat = PixelFormat::Format32bppArgb;
    }
    m_uintSamples = static_cast<std::uint32_t>(PixelFormatSize(m_imageFormat) / 8 / sizeof(Sample));
    if (!HasImageSize()) {
        AllocateRows();
    }
}

template <class Sample> void LanczosThumbnailer<Sample>::AllocateRows() {
    const std::size_t pixelSize = m_uintSamples * sizeof(Sample);
    const std::uint32_t columnTaps = SincResampleHelper::TapCount(m_uintImageWidth, m_uintThumbWidth);
    m_uintColumnsAtOnce = std::clamp(WeightLimit / columnTaps, 1U, m_uintThumbWidth);
    m_sourceBytes = m_uintImageWidth * pixelSize;
    m_reducedBytes = m_uintThumbWidth * pixelSize;
    const std::uint32_t bestBlock = ColumnsFrom(0, m_uintColumnsAtOnce).Kernel().BlockRows();
    m_uintBlockRows = static_cast<std::uint32_t>(
        std::clamp<std::uint64_t>(BlockLimit / m_sourceBytes, 1, std::min(bestBlock, m_uintImageHeight)));
    m_block.AllocateSize(m_uintBlockRows * m_sourceBytes);
    // A block goes in while the last rows before it may still be needed.
    m_ringRows = std::uint64_t{SincResampleHelper::TapCount(m_uintImageHeight, m_uintThumbHeight)} + m_uintBlockRows - 1;
    m_ring.AllocateSize(CheckedProduct(m_ringRows, m_reducedBytes));
    m_output.resize(m_reducedBytes);
}

template <class Sample> void LanczosThumbnailer<Sample>::CheckOrder(std::uint32_t rowIndex) {
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
    if (m_uintNextThumbRow == m_uintThumbHeight) {
        return;
    }
    if (rowIndex < m_uintFiltered) {
        // A row that comes again takes its own place as long as that is its own.
        if (m_uintPending == 0 && m_uintFiltered - rowIndex <= m_ringRows) {
            StoreRow(0, rowData);
            FilterRows(rowIndex, 1);
        }
        return;
    }
    const std::uint32_t place = rowIndex - m_uintFiltered;
    StoreRow(place, rowData);
    m_uintPending = std::max(m_uintPending, place + 1);
    if (m_uintPending == m_uintBlockRows || m_uintFiltered + m_uintPending == m_uintImageHeight) {
        FilterRows(m_uintFiltered, m_uintPending);
        m_uintFiltered += m_uintPending;
        m_uintPending = 0;
        ProduceRows();
    }
}

template <class Sample>
void LanczosThumbnailer<Sample>::StoreRow(std::uint32_t place, const std::uint8_t* rowData) {
    std::uint8_t* const row = m_block.Get() + place * m_sourceBytes;
    if (m_bConvertFirst) {
        m_inputConverter.Convert(rowData, row);
    } else {
        std::memcpy(row, rowData, m_sourceBytes);
    }
}

template <class Sample> void LanczosThumbnailer<Sample>::FilterRows(std::uint32_t firstRow, std::uint32_t count) {
    std::array<const std::uint8_t*, SincBlockRows> sources{};
    std::array<std::uint8_t*, SincBlockRows> destinations{};
    const std::size_t pixelSize = m_uintSamples * sizeof(Sample);
    for (std::uint32_t first = 0; first < m_uintThumbWidth;) {
        const std::uint32_t columns = std::min(m_uintColumnsAtOnce, m_uintThumbWidth - first);
        for (std::uint32_t i = 0; i < count; ++i) {
            sources[i] = m_block.Get() + i * m_sourceBytes;
            destinations[i] = RingRow(std::uint64_t{firstRow} + i) + first * pixelSize;
        }
        ColumnsFrom(first, columns).Kernel().FilterRows(sources.data(), destinations.data(), count, 0, columns);
        first += columns;
    }
}

template <class Sample>
SincStretch& LanczosThumbnailer<Sample>::ColumnsFrom(std::uint32_t first, std::uint32_t count) {
    if (m_pColumns == nullptr || m_uintColumnsFirst != first) {
        m_pColumns.reset();
        m_pColumns = std::make_unique<SincStretch>(m_uintImageWidth, m_uintThumbWidth, first, count, m_uintSamples,
                                                   sizeof(Sample));
        m_uintColumnsFirst = first;
    }
    return *m_pColumns;
}

template <class Sample> SincStretch& LanczosThumbnailer<Sample>::RowsOfNextThumbRow() {
    // Once for each row that is made, not for each that comes in: a tall image has many weights a row.
    if (m_pRows == nullptr) {
        m_pRows = std::make_unique<SincStretch>(m_uintImageHeight, m_uintThumbHeight, m_uintNextThumbRow, 1,
                                                m_uintSamples, sizeof(Sample));
    }
    return *m_pRows;
}

template <class Sample> void LanczosThumbnailer<Sample>::ProduceRows() {
    std::vector<const std::uint8_t*> rows;
    while (m_uintNextThumbRow < m_uintThumbHeight) {
        const SincStretch& weights = RowsOfNextThumbRow();
        const std::uint64_t first = weights.Axis().Windows.First[0];
        const std::uint32_t count = weights.Axis().Windows.Count[0];
        if (first + count > m_uintFiltered) {
            return;
        }
        rows.resize(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            rows[i] = RingRow(first + i);
        }
        weights.Kernel().FilterColumns(rows.data(), 0, m_output.data(), m_uintThumbWidth);
        m_outputConverter.Convert(m_output.data(), m_pThumbBitmapData->GetScanlineRef(m_uintNextThumbRow));
        ++m_uintNextThumbRow;
        m_pRows.reset();
    }
}

template class LanczosThumbnailer<std::uint8_t>;
template class LanczosThumbnailer<std::uint16_t>;

} // namespace ImagingFramework
