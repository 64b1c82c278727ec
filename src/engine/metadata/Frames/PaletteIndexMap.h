#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// Turns indices beyond the entries of a palette into 0, in lines of packed indices.
class PaletteIndexMap {
public:
    /// Changes nothing.
    PaletteIndexMap() = default;
    /// For indices of 1, 4 or 8 bits.
    PaletteIndexMap(std::uint32_t bits, std::uint32_t entryCount);

    bool IsNeeded() const noexcept { return m_bNeeded; }
    /// `size` in bytes; the lines may be the same.
    void Apply(const std::uint8_t* pSource, std::uint8_t* pTarget, std::size_t size) const noexcept;

private:
    bool m_bNeeded = false;
    std::array<std::uint8_t, 256> m_table{}; ///< from a byte of packed indices to another
};

} // namespace ImagingFramework
