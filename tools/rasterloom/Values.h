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
};

} // namespace Tool
