#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Tool {

/// A size of the command line: "800x600", "800x", "x600" (the other side follows) or "50%".
struct RequestedSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    double Percent = 0;

    /// Nothing for a text that is no size.
    static std::optional<RequestedSize> Parse(const std::string& text);
    /// The size for a picture of the given one.
    RequestedSize For(std::int32_t width, std::int32_t height) const;
    /// The size of a picture of the given one, reduced to fit into this one as a box; a side of 0 is free.
    RequestedSize Within(std::int32_t width, std::int32_t height) const;
};

/// "LEFT,TOP,WIDTH,HEIGHT" in pixels; left and top may be negative.
struct RequestedBox {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;

    static std::optional<RequestedBox> Parse(const std::string& text);
};

/// A finite number.
std::optional<double> ParseNumber(const std::string& text);
/// A colour as "#RRGGBB" or "#AARRGGBB", as 0xAARRGGBB.
std::optional<std::uint32_t> ParseColor(const std::string& text);

} // namespace Tool
