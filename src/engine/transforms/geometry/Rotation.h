#pragma once

#include "Common/BitmapData.h"
#include "transforms/geometry/RotationKernels.h"
#include "transforms/geometry/RotationMap.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Fills the rows of a rotated raster, tile by tile, so that the part of the source under a tile stays in the cache.
class Rotation {
public:
    /// `pBackground` is one pixel; it is copied.
    Rotation(const BitmapData& source, BitmapData& destination, const RotationMap& map, const std::uint8_t* pBackground,
             bool bilinear);

    /// The end of the band of rows, as high as a tile, that begins at `first`.
    std::uint32_t NextBand(std::uint32_t first) const;
    void FillRows(std::uint32_t first, std::uint32_t end);

private:
    /// What becomes of a row: background outside of `Touched`, no look at edges within `Inside`.
    struct RowPlan {
        RotationMap::Position Start;
        PixelRange Touched;
        PixelRange Inside;
    };

    RowPlan PlanRow(std::uint32_t y) const;
    void FillPart(std::uint8_t* pRow, const RowPlan& plan, const PixelRange& part) const;
    void FillBackground(std::uint8_t* pRow, std::uint32_t first, std::uint32_t end) const;
    void Sample(RotationFill fill, std::uint8_t* pRow, const RowPlan& plan, std::uint32_t first,
                std::uint32_t end) const;

    BitmapData& m_destination;
    const RotationMap& m_map;
    RotationKernel m_kernel;
    std::size_t m_pixelSize;
    std::vector<std::uint8_t> m_background; ///< as many pixels as a tile is wide
    RotationSource m_source;
    std::vector<RowPlan> m_plans; ///< of the rows of a band
};

} // namespace ImagingFramework
