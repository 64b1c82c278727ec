#include "Common/KDTreeColorMapper.h"

#include "Common/ColorMap.h"

namespace ImagingFramework {

void KDTreeColorMapper::Reset() noexcept {
    ColorMapper::Reset();
    m_pSearch.reset();
}

void KDTreeColorMapper::SetColorMap(const ColorMap& map) {
    ColorMapper::SetColorMap(map);
    std::vector<Search::Point> points(map.GetEntryCount());
    for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
        std::uint8_t entry[4];
        map.GetEntryArgb(i, entry);
        points[i] = {entry[3], entry[2], entry[1], entry[0]};
    }
    m_pSearch = std::make_shared<Search>(
        std::vector<std::uint32_t>(ColorDistanceWeights.begin(), ColorDistanceWeights.end()));
    m_pSearch->Build(std::move(points));
}

std::int32_t KDTreeColorMapper::GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return static_cast<std::int32_t>(GetNearestColorIndex(255, red, green, blue));
}

std::uint32_t KDTreeColorMapper::GetNearestColorIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green,
                                                      std::uint8_t blue) {
    RequireMap();
    return m_pSearch->Find({alpha, red, green, blue});
}

} // namespace ImagingFramework
