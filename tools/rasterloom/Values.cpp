#include "Values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace Tool {

namespace {

template <class Number>
bool ParseWhole(std::string_view text, Number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool ParseSide(std::string_view text, std::int32_t& side) {
    return text.empty() || (ParseWhole(text, side) && side > 0);
}

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

RequestedSize RequestedSize::Within(std::int32_t width, std::int32_t height) const {
    double scale = 1;
    if (Width > 0) {
        scale = std::min(scale, static_cast<double>(Width) / width);
    }
    if (Height > 0) {
        scale = std::min(scale, static_cast<double>(Height) / height);
    }
    return RequestedSize{0, 0, scale * 100}.For(width, height);
}

std::optional<RequestedBox> RequestedBox::Parse(const std::string& text) {
    RequestedBox box;
    std::int32_t* const values[] = {&box.Left, &box.Top, &box.Width, &box.Height};
    std::string_view rest = text;
    for (std::int32_t* const value : values) {
        const bool last = value == &box.Height;
        const auto comma = rest.find(',');
        if ((comma == std::string_view::npos) != last || !ParseWhole(rest.substr(0, comma), *value)) {
            return std::nullopt;
        }
        rest.remove_prefix(last ? rest.size() : comma + 1);
    }
    return box.Width > 0 && box.Height > 0 ? std::optional(box) : std::nullopt;
}

std::optional<double> ParseNumber(const std::string& text) {
    double value = 0;
    return ParseWhole(text, value) && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<std::uint32_t> ParseColor(const std::string& text) {
    constexpr std::size_t opaque = 7;
    constexpr std::size_t withAlpha = 9;
    if ((text.size() != opaque && text.size() != withAlpha) || text.front() != '#') {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return text.size() == opaque ? value | 0xFF000000U : value;
}

} // namespace Tool
