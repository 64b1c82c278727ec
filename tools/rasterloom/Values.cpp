#include "Values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace Tool {

namespace {

template <class Number> bool ParseWhole(std::string_view text, Number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool ParseSide(std::string_view text, std::int32_t& side) { return text.empty() || (ParseWhole(text, side) && side > 0); }

} // namespace

std::optional<RequestedSize> RequestedSize::Parse(const std::string& text) {
    RequestedSize size;
    if (!text.empty() && text.back() == '%') {
        const std::string_view number(text.data(), text.size() - 1);
        const bool valid = ParseWhole(number, size.Percent) && size.Percent > 0 && size.Percent <= 10000;
        return valid ? std::optional(size) : std::nullopt;
    }
    const auto cross = text.find('x');
    const bool valid = cross != std::string::npos && text.size() > 1 && ParseSide(text.substr(0, cross), size.Width) &&
                       ParseSide(text.substr(cross + 1), size.Height);
    return valid ? std::optional(size) : std::nullopt;
}

RequestedSize RequestedSize::For(std::int32_t width, std::int32_t height) const {
    if (Percent <= 0) {
        return *this;
    }
    const auto scaled = [this](std::int32_t side) {
        return static_cast<std::int32_t>(std::max(1.0, std::round(side * Percent / 100.0)));
    };
    return {scaled(width), scaled(height), 0};
}

} // namespace Tool
