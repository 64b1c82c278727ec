#include "metadata/Thumbnails/RowToArgb.h"

#include <cstring>

namespace ImagingFramework {

RowToArgb::RowToArgb(std::uint32_t width, PixelFormat format, const ColorMap* pColorMap)
    : m_uintWidth(width), m_format(format) {
    if (!IsPlain()) {
        m_manager.InitializePerScanlineHandling(width, format, pColorMap, nullptr, PixelFormat::Format32bppArgb);
        m_row.AllocateCount(std::size_t{width} * PixelSize);
    }
}

const std::uint8_t* RowToArgb::Convert(const std::uint8_t* pRow) {
    if (IsPlain()) {
        return pRow;
    }
    m_manager.TransformScanline(pRow, m_row.Get());
    return m_row.Get();
}

void RowToArgb::Convert(const std::uint8_t* pRow, std::uint8_t* pDestination) {
    if (IsPlain()) {
        std::memcpy(pDestination, pRow, std::size_t{m_uintWidth} * PixelSize);
    } else {
        m_manager.TransformScanline(pRow, pDestination);
    }
}

} // namespace ImagingFramework
