#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Host {

struct Point {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    constexpr bool operator==(const Point&) const = default;
};

struct PointF {
    float X = 0;
    float Y = 0;
    constexpr bool operator==(const PointF&) const = default;
};

struct Size {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    constexpr bool operator==(const Size&) const = default;
    constexpr bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

/// A rectangle by its top left corner and its size; the right and bottom edges lie outside.
struct Rectangle {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    constexpr bool operator==(const Rectangle&) const = default;
    constexpr bool IsEmpty() const { return Width <= 0 || Height <= 0; }
};

struct RectangleF {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
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
