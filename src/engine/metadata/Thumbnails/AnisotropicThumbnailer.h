#pragma once

#include "MemoryManagement/MemPtr.h"
#include "metadata/Thumbnails/ArgbSampler.h"
#include "metadata/Thumbnails/IThumbnailCreatorImpl.h"

#include <optional>
#include <vector>

namespace ImagingFramework {

/// The mean of n by n samples of the image for each pixel of the thumbnail; n is 2 or 3. Samples stand on a grid whose
/// corners are those of the image. Rows may come in any order.
class AnisotropicThumbnailer final : public IThumbnailCreatorImpl {
public:
    AnisotropicThumbnailer(std::uint32_t samplingFactor, std::uint32_t imageWidth, std::uint32_t imageHeight,
                           PixelFormat imageFormat, const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) override;

private:
    void AddRow(std::uint32_t thumbRow, const std::uint8_t* pSamples);
    void Finish();

    std::uint32_t m_uintSamplingFactor;
    std::vector<std::uint32_t> m_sampleRows; ///< source row of each sample, ascending
    MemPtr<std::uint16_t> m_sums;            ///< four channels of each pixel of the thumbnail
    std::uint32_t m_uintRowsSeen = 0;
    std::optional<ArgbSampler> m_sampler;
    std::optional<RowToArgb> m_converter; ///< for a thumbnail of the image's size
};

} // namespace ImagingFramework
