#include "Common/ColorMapper.h"

#include "ErrorHandling/Exceptions.h"

namespace ImagingFramework {

void ColorMapper::SetColorMap(const ColorMap& map) {
    Reset();
    m_pColorMap = &map;
}

void ColorMapper::RequireMap() const {
    if (m_pColorMap == nullptr) {
        throw NotInitializedException("ColorMapper");
    }
}

std::int32_t ColorMapper::GetNearestColorIndex(std::uint8_t, std::uint8_t, std::uint8_t) {
    RequireMap();
    return -1;
}

} // namespace ImagingFramework
