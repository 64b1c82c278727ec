#pragma once

#include "Common/KDNearestNeighbourSearch.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

class ColorMap;

/// Finds the entry of a palette that is nearest to a colour, by the weights 20, 30, 59 and 11 of alpha, red, green, blue.
/// Equal distances stay with the entry found last. Not for two threads at once.
class KDTreeColorMapper {
public:
    /// Builds the tree over the entries of `map`, which is not kept.
    void SetColorMap(const ColorMap& map);
    void Reset() noexcept { m_pSearch.reset(); }
    /// Fails with `NotInitializedException` before a map was set.
    std::uint32_t GetNearestColorIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    std::uint32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return GetNearestColorIndex(255, red, green, blue);
    }

private:
    std::shared_ptr<KDNearestNeighbourSearch> m_pSearch;
};

} // namespace ImagingFramework
