#pragma once

#include "metadata/Thumbnails/IThumbnailCreatorImpl.h"
#include "metadata/Thumbnails/RowToArgb.h"
#include "metadata/Thumbnails/SincStretch.h"

#include <memory>
#include <vector>

namespace ImagingFramework {

/// Filters while rows come: each is reduced horizontally into a ring of rows, and a row of the thumbnail goes out as
/// soon as the ring has all rows that it needs. The weights are those of `ResizeTransform`, and samples are rounded after
/// each direction as there; colour and alpha are filtered alike. Formats of whole channels are filtered as they are and
/// converted at the end; indexed and packed ones are converted first.
template <class Sample>
class LanczosThumbnailer final : public IThumbnailCreatorImpl {
public:
    LanczosThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight, PixelFormat imageFormat,
                       const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    /// Fails with `UnsupportedScanlinesOrderException` for a row that is neither the last one nor its neighbour.
    void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) override;

private:
    void CheckOrder(std::uint32_t rowIndex);
    void AllocateRows();
    void StoreRow(std::uint32_t rowIndex, const std::uint8_t* rowData);
    void FilterRows(std::uint32_t firstRow, std::uint32_t count);
    void ProduceRows();
    SincStretch& ColumnsFrom(std::uint32_t first, std::uint32_t count);
    SincStretch& RowsOfNextThumbRow();
    /// The columns from `column` on, which a chunk of weights begins with, of a block in the ring.
    std::uint8_t* ChunkOf(std::uint32_t block, std::uint32_t column) const {
        return ITwoPassKernel::Align(m_ring.Get()) + block % m_ringBlocks * m_blockBytes +
               column / m_uintColumnsAtOnce * m_chunkBytes;
    }
    std::uint8_t* SpareChunk() const { return ITwoPassKernel::Align(m_ring.Get()) + m_ringBlocks * m_blockBytes; }

    bool m_bConvertFirst;
    RowToArgb m_inputConverter;
    RowToArgb m_outputConverter;
    std::uint32_t m_uintSamples; ///< of a pixel as it is filtered
    std::size_t m_sourceBytes = 0; ///< of a row of the image as it is filtered
    /// Rows that wait to be filtered together.
    MemPtr<std::uint8_t> m_block;
    std::uint32_t m_uintBlockRows = 1;
    std::uint32_t m_uintKernelRows = 1; ///< of a block of the kernel
    std::uint32_t m_uintPending = 0;
    std::uint32_t m_uintFiltered = 0; ///< all rows below this one went into the ring
    MemPtr<std::uint8_t> m_ring;
    std::uint64_t m_ringBlocks = 1;
    std::uint64_t m_blockBytes = 0; ///< of a filtered block of all columns
    std::uint64_t m_chunkBytes = 0; ///< of the columns of it that are filtered at once
    std::unique_ptr<SincStretch> m_pColumns;
    std::uint32_t m_uintColumnsFirst = 0; ///< where `m_pColumns` begins
    std::uint32_t m_uintColumnsAtOnce = 0;
    std::unique_ptr<SincStretch> m_pRows; ///< the weights of the next row of the thumbnail, made when it is looked for
    std::uint32_t m_uintNextThumbRow = 0;
    std::vector<std::uint8_t> m_output;
    std::int64_t m_intLastRow = -1;
};

extern template class LanczosThumbnailer<std::uint8_t>;
extern template class LanczosThumbnailer<std::uint16_t>;

} // namespace ImagingFramework
