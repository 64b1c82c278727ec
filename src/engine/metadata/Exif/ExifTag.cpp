#include "metadata/Exif/ExifTag.h"

#include "ErrorHandling/Exceptions.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace ImagingFramework {

std::uint32_t ExifDataTypeSize(ExifDataType type) {
    switch (type) {
    case ExifDataType::Byte:
    case ExifDataType::Ascii:
    case ExifDataType::Undefined:
        return 1;
    case ExifDataType::Short:
        return 2;
    case ExifDataType::Long:
    case ExifDataType::SignedLong:
        return 4;
    case ExifDataType::Rational:
    case ExifDataType::SignedRational:
        return 8;
    }
    throw ArgumentException("type");
}

namespace {

template <class T>
ExifTag Single(ExifDataType type, T value) {
    ExifTag tag{type, std::vector<std::uint8_t>(sizeof value)};
    std::memcpy(tag.Data.data(), &value, sizeof value);
    return tag;
}

template <class Number>
double Quotient(Number dividend, Number divider) {
    return divider == 0 ? static_cast<double>(dividend) : static_cast<double>(dividend) / static_cast<double>(divider);
}

} // namespace

ExifTag ExifTag::FromShort(std::uint16_t value) { return Single(ExifDataType::Short, value); }
ExifTag ExifTag::FromLong(std::uint32_t value) { return Single(ExifDataType::Long, value); }
ExifTag ExifTag::FromRational(UnsignedRational value) { return Single(ExifDataType::Rational, value); }

UnsignedRational ExifTag::ToRational(double value) noexcept {
    constexpr double highest = std::numeric_limits<std::uint32_t>::max();
    constexpr std::uint32_t decimals = 10000;
    if (!(value >= 0 && value <= highest)) {
        return {0, 1};
    }
    const double scaled = std::floor(value * decimals + 0.5);
    if (value == std::floor(value) || scaled > highest) {
        return {static_cast<std::uint32_t>(value), 1};
    }
    return {static_cast<std::uint32_t>(scaled), decimals};
}

template <class T>
T ExifTag::GetValue(std::uint32_t index) const {
    if (index >= GetCount() || sizeof(T) != ExifDataTypeSize(Type)) {
        throw ArgumentOutOfRangeException("index");
    }
    T value;
    std::memcpy(&value, Data.data() + std::size_t{index} * sizeof(T), sizeof(T));
    return value;
}

template std::uint8_t ExifTag::GetValue(std::uint32_t) const;
template std::uint16_t ExifTag::GetValue(std::uint32_t) const;
template std::uint32_t ExifTag::GetValue(std::uint32_t) const;
template std::int32_t ExifTag::GetValue(std::uint32_t) const;
template Rational ExifTag::GetValue(std::uint32_t) const;
template UnsignedRational ExifTag::GetValue(std::uint32_t) const;

std::optional<std::uint32_t> ExifTag::GetNumber(std::uint32_t index) const {
    if (index >= GetCount()) {
        return std::nullopt;
    }
    switch (Type) {
    case ExifDataType::Short:
        return GetValue<std::uint16_t>(index);
    case ExifDataType::Long:
        return GetValue<std::uint32_t>(index);
    default:
        return std::nullopt;
    }
}

std::optional<double> ExifTag::GetReal(std::uint32_t index) const {
    if (index >= GetCount()) {
        return std::nullopt;
    }
    switch (Type) {
    case ExifDataType::Rational: {
        const auto value = GetValue<UnsignedRational>(index);
        return Quotient(value.Dividend, value.Divider);
    }
    case ExifDataType::SignedRational: {
        const auto value = GetValue<Rational>(index);
        return Quotient(value.Dividend, value.Divider);
    }
    case ExifDataType::SignedLong:
        return GetValue<std::int32_t>(index);
    default:
        return GetNumber(index);
    }
}

} // namespace ImagingFramework
