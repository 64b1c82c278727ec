#include "Common/KDTreeColorMapper.h"

#include "Common/ColorMap.h"

namespace ImagingFramework {

void KDTreeColorMapper::SetColorMap(const ColorMap& map) {
    std::vector<KDNearestNeighbourSearch::Point> points(map.GetEntryCount());
    for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
        std::uint8_t entry[4];
        map.GetEntryArgb(i, entry);
        points[i] = {entry[3], entry[2], entry[1], entry[0]};
    }
    m_pSearch = std::make_shared<KDNearestNeighbourSearch>(std::vector<std::uint32_t>{20, 30, 59, 11});
    m_pSearch->Build(std::move(points));
}

std::uint32_t KDTreeColorMapper::GetNearestColorIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green,
                                                      std::uint8_t blue) {
    if (!m_pSearch) {
        throw NotInitializedException("ColorMap");
    }
    return m_pSearch->Find({alpha, red, green, blue});
}

} // namespace ImagingFramework
