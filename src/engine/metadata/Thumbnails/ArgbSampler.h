#pragma once

#include "metadata/Thumbnails/RowToArgb.h"
#include "transforms/resize/PixelPicker.h"

#include <vector>

namespace ImagingFramework {

/// Takes some pixels out of rows of an image and converts those alone to `Format32bppArgb`.
class ArgbSampler {
public:
    ArgbSampler(std::vector<std::uint32_t> columns, PixelFormat format, const ColorMap* pColorMap);

    /// One pixel for each of the columns; valid until the next call.
    const std::uint8_t* Sample(const std::uint8_t* pRow);

private:
    std::vector<std::uint32_t> m_columns;
    PixelPicker m_pick;
    std::vector<std::uint8_t> m_picked;
    RowToArgb m_converter;
};

} // namespace ImagingFramework
