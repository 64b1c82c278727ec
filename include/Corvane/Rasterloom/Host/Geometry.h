#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Host {

/// A position in whole steps.
struct Point {
    std::int32_t X = 0; ///< to the right
    std::int32_t Y = 0; ///< downwards
    constexpr bool operator==(const Point&) const = default;
};

/// A position.
struct PointF {
    float X = 0; ///< to the right
    float Y = 0; ///< downwards
    constexpr bool operator==(const PointF&) const = default;
};

/// A size in whole steps.
struct Size {
    std::int32_t Width = 0; ///< of the horizontal side
    std::int32_t Height = 0; ///< of the vertical side
    constexpr bool operator==(const Size&) const = default;
    /// True for a size that is not positive.
    constexpr bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

/// A rectangle by its top left corner and its size; the right and bottom edges lie outside.
struct Rectangle {
    std::int32_t Left = 0; ///< of the left edge
    std::int32_t Top = 0; ///< of the upper edge
    std::int32_t Width = 0; ///< of the horizontal side
    std::int32_t Height = 0; ///< of the vertical side
    constexpr bool operator==(const Rectangle&) const = default;
    /// True for a size that is not positive.
    constexpr bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

/// The same with fractions.
struct RectangleF {
    float Left = 0; ///< of the left edge
    float Top = 0; ///< of the upper edge
    float Width = 0; ///< of the horizontal side
    float Height = 0; ///< of the vertical side
    /// All 0 unless given.
    constexpr RectangleF() = default;
    constexpr RectangleF(float left, float top, float width, float height)
        : Left(left), Top(top), Width(width), Height(height) {}
    /// Every rectangle of whole numbers is one of this kind (coordinates beyond 2^24 are rounded).
    constexpr RectangleF(const Rectangle& other) // NOLINT(google-explicit-constructor)
        : Left(static_cast<float>(other.Left)), Top(static_cast<float>(other.Top)),
          Width(static_cast<float>(other.Width)), Height(static_cast<float>(other.Height)) {}
    constexpr bool operator==(const RectangleF&) const = default;
    /// True for a size that is not positive, NaN included.
    constexpr bool IsEmpty() const { return !(Width > 0 && Height > 0); }
};

} // namespace Corvane::Rasterloom::Host
