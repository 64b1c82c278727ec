#pragma once

#include "metadata/Thumbnails/ArgbSampler.h"
#include "metadata/Thumbnails/IThumbnailCreatorImpl.h"

#include <vector>

namespace ImagingFramework {

/// The first source row and column that reach a target row and column give the pixel. Rows may come in any order.
class NearestNeighbourThumbnailer final : public IThumbnailCreatorImpl {
public:
    NearestNeighbourThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight, PixelFormat imageFormat,
                                const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) override;

private:
    std::vector<std::uint32_t> m_rows; ///< source row of each row, ascending
    ArgbSampler m_sampler;
};

} // namespace ImagingFramework
