#pragma once

#include <cstdint>

namespace ImagingFramework {

class ColorMap;

/// Finds the entry of a palette that is nearest to a colour. Not for two threads at once.
class ColorMapper {
public:
    virtual ~ColorMapper() = default;
    /// Resets, then notes `map`, which must outlive the searches. Entries that change later need another call.
    virtual void SetColorMap(const ColorMap& map);
    /// Forgets the map.
    virtual void Reset() noexcept { m_pColorMap = nullptr; }
    /// The base finds nothing and returns -1. Fails with `NotInitializedException` ("ColorMapper") without a map.
    virtual std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

protected:
    void RequireMap() const;

    const ColorMap* m_pColorMap = nullptr;
};

} // namespace ImagingFramework
