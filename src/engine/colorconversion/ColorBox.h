#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ImagingFramework {

/// A colour of the median cut: alpha, red, green, blue.
using ColorRecord = std::array<std::uint8_t, 4>;

/// A run of the records of a median cut, and the box that their channels span.
class ColorBox {
public:
    /// `records` are borrowed; `measured` is the part of them that the box is to span.
    ColorBox(std::span<ColorRecord> records, std::span<const ColorRecord> measured);
    explicit ColorBox(std::span<ColorRecord> records) : ColorBox(records, records) {}

    std::size_t GetPopulation() const noexcept { return m_records.size(); }
    std::span<const ColorRecord> GetRecords() const noexcept { return m_records; }
    /// Whether it is worth a cut: not for boxes that are all transparent, nor for a single colour.
    bool CanSplit() const noexcept;
    /// The sum of the squared spreads. It wraps beyond 32 bits, where a box is as wide as it can be on two axes.
    std::uint32_t GetScore() const noexcept;
    /// Cuts the box through the middle of its longest side, keeps the lower half and gives the upper one. The order of the
    /// records changes.
    ColorBox Split();

private:
    /// The sides of the box; colours weigh by alpha. Up to 255 * 256.
    std::array<std::uint32_t, 4> GetSpreads() const noexcept;

    std::span<ColorRecord> m_records;
    ColorRecord m_minimum{};
    ColorRecord m_maximum{};
};

} // namespace ImagingFramework
