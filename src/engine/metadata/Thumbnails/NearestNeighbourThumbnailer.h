#pragma once

#include "metadata/Thumbnails/IThumbnailCreatorImpl.h"
#include "metadata/Thumbnails/RowToArgb.h"

#include <vector>

namespace ImagingFramework {

/// The first source row and column that reach a target row and column give the pixel.
class NearestNeighbourThumbnailer final : public IThumbnailCreatorImpl {
public:
    NearestNeighbourThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight, PixelFormat imageFormat,
                                const ColorMap* pImageColorMap, BitmapData* pThumbBitmapData);

    void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) override;

private:
    std::vector<std::int32_t> m_rowTargets;    ///< per source row, -1 for one that is not used
    std::vector<std::int32_t> m_columnTargets; ///< the same per source column
    RowToArgb m_converter;
};

} // namespace ImagingFramework
