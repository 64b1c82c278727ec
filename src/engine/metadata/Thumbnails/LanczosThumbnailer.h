#pragma once

#include "metadata/Thumbnails/IThumbnailCreatorImpl.h"
#include "metadata/Thumbnails/RowToArgb.h"

#include <vector>

namespace ImagingFramework {

/// The taps of a three-lobe sinc filter along one side of the image.
class SincTaps {
public:
    SincTaps(std::uint32_t imageSize, std::uint32_t thumbSize);

    /// The largest number of taps of a position.
    std::uint32_t GetMaximumCount() const noexcept { return m_uintTaps; }
    /// Puts the weights of a thumbnail position into `weights`: those of the taps that lie inside the image, with a sum
    /// of 1. The result is the image position of the first one.
    std::uint32_t GetWeights(std::uint32_t position, std::vector<double>& weights) const;

private:
    std::uint32_t m_uintImageSize;
    double m_ratio;
    std::uint32_t m_uintHalf;
    std::uint32_t m_uintTaps;
};

/// Filters while rows come: each is reduced horizontally into a ring of rows, and a row of the thumbnail goes out as
/// soon as the ring has all rows that it needs. Samples are rounded after each direction. Formats of whole channels are
/// filtered as they are and converted at the end; indexed and packed ones are converted first.
template <class Sample>
class LanczosThumbnailer final : public IThumbnailCreatorImpl {
public:
    LanczosThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight, PixelFormat imageFormat,
                       const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    /// Fails with `UnsupportedScanlinesOrderException` for a row that is neither the last one nor its neighbour.
    void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) override;

private:
    void CheckOrder(std::uint32_t rowIndex);
    void ReduceRow(const Sample* pSource, Sample* pDestination) const;
    void ProduceRows(std::uint32_t lastRow);
    void ProduceRow(std::uint32_t first);
    Sample* RingRow(std::uint32_t row) { return m_ring.data() + row % m_vertical.GetMaximumCount() * m_rowSamples; }

    bool m_bConvertFirst;
    RowToArgb m_inputConverter;
    RowToArgb m_outputConverter;
    std::uint32_t m_uintChannels;
    std::size_t m_rowSamples; ///< of a reduced row
    SincTaps m_vertical;
    std::vector<std::uint32_t> m_columnFirst;
    std::vector<std::uint32_t> m_columnCount;
    std::vector<double> m_columnWeights; ///< of all columns, one behind the other
    std::vector<Sample> m_ring;
    std::vector<Sample> m_output;
    std::vector<double> m_sums;
    std::vector<double> m_rowWeights;
    std::int64_t m_intLastRow = -1;
    std::uint32_t m_uintNextThumbRow = 0;
    std::uint32_t m_uintFirstWeighted = 0; ///< the first source row of the next thumbnail row
    bool m_bRowWeightsReady = false;       ///< `m_rowWeights` belong to the next thumbnail row
};

extern template class LanczosThumbnailer<std::uint8_t>;
extern template class LanczosThumbnailer<std::uint16_t>;

} // namespace ImagingFramework
