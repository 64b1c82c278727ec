#pragma once

#include "metadata/Exif/ExifTypes.h"
#include "metadata/MetaDataTypes.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace ImagingFramework {

/// A stored tag: the type of its values, and the values in the byte order of the host.
struct ExifTag {
    ExifDataType Type = ExifDataType::Undefined;
    std::vector<std::uint8_t> Data;

    static ExifTag FromShort(std::uint16_t value);
    static ExifTag FromLong(std::uint32_t value);
    static ExifTag FromRational(UnsignedRational value);
    /// Dots, or any other positive quantity, as a rational: whole numbers over 1, others to four decimals. What does
    /// not fit becomes 0/1.
    static UnsignedRational ToRational(double value) noexcept;

    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(Data.size() / ExifDataTypeSize(Type)); }
    /// The raw value at an index; T is as large as one value. Fails with `ArgumentOutOfRangeException` ("index").
    template <class T>
    T GetValue(std::uint32_t index) const;
    /// A short or long; nothing for other types and beyond the end.
    std::optional<std::uint32_t> GetNumber(std::uint32_t index = 0) const;
    /// Shorts, longs and rationals of both kinds; nothing for other types and beyond the end. The quotient of a
    /// rational, or its dividend where the divider is 0.
    std::optional<double> GetReal(std::uint32_t index = 0) const;

    bool operator==(const ExifTag&) const = default;
};

} // namespace ImagingFramework
