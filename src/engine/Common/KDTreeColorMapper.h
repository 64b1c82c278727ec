#pragma once

#include "Common/ColorMapper.h"
#include "Common/KDNearestNeighbourSearch.h"

#include <array>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// Weights of alpha, red, green and blue in the square distance between two colours.
inline constexpr std::array<std::uint32_t, 4> ColorDistanceWeights = {20, 30, 59, 11};

/// Finds the nearest entry with a k-d tree. Equal distances stay with the entry found last.
class KDTreeColorMapper : public ColorMapper {
public:
    using Search = KDNearestNeighbourSearch<4>;

    /// Builds the tree over the entries of `map`.
    void SetColorMap(const ColorMap& map) override;
    void Reset() noexcept override;
    /// Searches with alpha 255.
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    std::uint32_t GetNearestColorIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

    /// The tree; null without a map.
    const std::shared_ptr<Search>& GetSearch() const noexcept { return m_pSearch; }

private:
    std::shared_ptr<Search> m_pSearch;
};

} // namespace ImagingFramework
