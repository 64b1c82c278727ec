#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Where the pixels of a rotated raster come from, in 16.16 fixed point. The steps are rounded once, and every position is
/// counted from the centres in whole steps, so errors grow from the centre outwards and the centre itself is exact.
class RotationMap {
public:
    struct Position {
        std::int64_t X;
        std::int64_t Y;
    };

    /// `radians` is the inverse of the turn. Fails with `OverflowException` where the canvas exceeds 31 bits.
    RotationMap(std::uint32_t width, std::uint32_t height, double radians);

    /// The canvas that holds the whole source.
    std::uint32_t NewWidth() const noexcept { return m_newWidth; }
    std::uint32_t NewHeight() const noexcept { return m_newHeight; }
    /// What the source position grows by from one destination pixel to the next; down a column it is (-Y, X).
    Position Step() const noexcept { return m_step; }
    /// The source position of the first pixel of a destination row.
    Position RowStart(std::uint32_t y) const noexcept {
        return {m_start.X - m_step.Y * y, m_start.Y + m_step.X * y};
    }

private:
    std::uint32_t m_newWidth;
    std::uint32_t m_newHeight;
    Position m_step;
    Position m_start;
};

/// Neighbouring pixels of a row: from `First` up to and without `End`.
struct PixelRange {
    std::uint32_t First;
    std::uint32_t End;

    bool IsEmpty() const noexcept { return First >= End; }
};

/// The pixels 0 to `count` - 1 whose value `start` + pixel * `step` lies from `low` to `high`.
PixelRange FindRange(std::int64_t start, std::int64_t step, std::int64_t low, std::int64_t high, std::uint32_t count);

/// The common part; empty ranges may stand anywhere.
PixelRange Intersect(const PixelRange& left, const PixelRange& right);

} // namespace ImagingFramework
