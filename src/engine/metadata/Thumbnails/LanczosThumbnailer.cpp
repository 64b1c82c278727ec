#include "metadata/Thumbnails/LanczosThumbnailer.h"

#include "Common/Numeric.h"

#include <algorithm>
#include <bit>
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
    const ITwoPassKernel& kernel = ColumnsFrom(0, m_uintColumnsAtOnce).Kernel();
    m_uintKernelRows = kernel.BlockRows();
    // Rows that are filtered together never belong to two blocks of the kernel.
    m_uintBlockRows = static_cast<std::uint32_t>(
        std::bit_floor(std::clamp<std::uint64_t>(BlockLimit / m_sourceBytes, 1, m_uintKernelRows)));
    m_block.AllocateSize(m_uintBlockRows * m_sourceBytes);
    m_chunkBytes = kernel.BlockBytes(m_uintColumnsAtOnce);
    m_blockBytes = CheckedProduct(m_chunkBytes, (m_uintThumbWidth - 1) / m_uintColumnsAtOnce + 1);
    // A block goes in while the last rows before it may still be needed.
    const std::uint64_t rows = std::uint64_t{SincResampleHelper::TapCount(m_uintImageHeight, m_uintThumbHeight)};
    m_ringBlocks = (rows + m_uintKernelRows - 2) / m_uintKernelRows + 1;
    // One more takes rows that come by themselves.
    m_ring.AllocateSize(CheckedProduct(m_ringBlocks + 1, m_blockBytes) + ITwoPassKernel::BlockAlignment);
    m_output.resize(m_uintThumbWidth * pixelSize);
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
        const std::uint32_t newestBlock = (m_uintFiltered - 1) / m_uintKernelRows;
        if (m_uintPending == 0 && newestBlock - rowIndex / m_uintKernelRows < m_ringBlocks) {
            StoreRow(0, rowData);
            FilterRows(rowIndex, 1);
        }
        return;
    }
    const std::uint32_t place = rowIndex - m_uintFiltered;
    StoreRow(place, rowData);
    m_uintPending = std::max(m_uintPending, place + 1);
    if ((m_uintFiltered + m_uintPending) % m_uintBlockRows == 0 || m_uintFiltered + m_uintPending == m_uintImageHeight) {
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
    std::vector<const std::uint8_t*> sources(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        sources[i] = m_block.Get() + i * m_sourceBytes;
    }
    const std::uint32_t place = firstRow % m_uintKernelRows;
    // Whole blocks, and what the image has of its last one, are filtered where they stay.
    const bool whole = place == 0 && (count == m_uintKernelRows || firstRow + count == m_uintImageHeight);
    // In the spare block a row takes the place that it has in its own one.
    sources.insert(sources.begin(), whole ? 0 : place, m_block.Get());
    const auto rows = static_cast<std::uint32_t>(sources.size());
    for (std::uint32_t first = 0; first < m_uintThumbWidth;) {
        const std::uint32_t columns = std::min(m_uintColumnsAtOnce, m_uintThumbWidth - first);
        ITwoPassKernel& kernel = ColumnsFrom(first, columns).Kernel();
        std::uint8_t* const block = ChunkOf(firstRow / m_uintKernelRows, first);
        std::uint8_t* const spare = SpareChunk();
        kernel.FilterRows(sources.data(), rows, 0, columns, whole ? block : spare);
        for (std::uint32_t row = place; !whole && row < rows; ++row) {
            kernel.CopyRow(spare, block, row, columns);
        }
        first += columns;
    }
}

template <class Sample>
SincStretch& LanczosThumbnailer<Sample>::ColumnsFrom(std::uint32_t first, std::uint32_t count) {
    if (m_pColumns == nullptr || m_uintColumnsFirst != first) {
        m_pColumns.reset();
        m_pColumns = std::make_unique<SincStretch>(SincStretch::Pass::Rows, m_uintImageWidth, m_uintThumbWidth, first,
                                                   count, m_uintSamples, sizeof(Sample));
        m_uintColumnsFirst = first;
    }
    return *m_pColumns;
}

template <class Sample> SincStretch& LanczosThumbnailer<Sample>::RowsOfNextThumbRow() {
    // Once for each row that is made, not for each that comes in: a tall image has many weights a row.
    if (m_pRows == nullptr) {
        m_pRows = std::make_unique<SincStretch>(SincStretch::Pass::Columns, m_uintImageHeight, m_uintThumbHeight,
                                                m_uintNextThumbRow, 1, m_uintSamples, sizeof(Sample));
    }
    return *m_pRows;
}

template <class Sample> void LanczosThumbnailer<Sample>::ProduceRows() {
    std::vector<const std::uint8_t*> blocks;
    while (m_uintNextThumbRow < m_uintThumbHeight) {
        const SincStretch& weights = RowsOfNextThumbRow();
        const std::uint64_t first = weights.Axis().Windows.First[0];
        const std::uint32_t count = weights.Axis().Windows.Count[0];
        if (first + count > m_uintFiltered) {
            return;
        }
        const auto firstBlock = static_cast<std::uint32_t>(first / m_uintKernelRows);
        blocks.resize((first + count - 1) / m_uintKernelRows - firstBlock + 1);
        for (std::uint32_t column = 0; column < m_uintThumbWidth;) {
            const std::uint32_t columns = std::min(m_uintColumnsAtOnce, m_uintThumbWidth - column);
            for (std::uint32_t i = 0; i < blocks.size(); ++i) {
                blocks[i] = ChunkOf(firstBlock + i, column);
            }
            std::uint8_t* const output = m_output.data() + column * m_uintSamples * sizeof(Sample);
            weights.Kernel().FilterColumns(blocks.data(), 0, output, columns);
            column += columns;
        }
        m_outputConverter.Convert(m_output.data(), m_pThumbBitmapData->GetScanlineRef(m_uintNextThumbRow));
        ++m_uintNextThumbRow;
        m_pRows.reset();
    }
}

template class LanczosThumbnailer<std::uint8_t>;
template class LanczosThumbnailer<std::uint16_t>;

} // namespace ImagingFramework
