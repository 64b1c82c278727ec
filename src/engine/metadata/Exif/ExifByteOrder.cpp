#include "metadata/Exif/ExifByteOrder.h"

#include <algorithm>
#include <bit>

namespace ImagingFramework {

namespace {

/// Bytes that turn around together when the order changes: a rational is two numbers.
std::size_t WordSize(ExifDataType type) noexcept {
    switch (type) {
    case ExifDataType::Short:
        return 2;
    case ExifDataType::Long:
    case ExifDataType::Rational:
    case ExifDataType::SignedLong:
    case ExifDataType::SignedRational:
        return 4;
    default:
        return 1;
    }
}

} // namespace

std::uint16_t ExifByteOrder::ReadWord(const std::uint8_t* pSource) const noexcept {
    const int low = pSource[m_bLittleEndian ? 0 : 1];
    const int high = pSource[m_bLittleEndian ? 1 : 0];
    return static_cast<std::uint16_t>(high << 8 | low);
}

std::uint32_t ExifByteOrder::ReadDword(const std::uint8_t* pSource) const noexcept {
    const std::uint32_t first = ReadWord(pSource);
    const std::uint32_t second = ReadWord(pSource + 2);
    return m_bLittleEndian ? second << 16 | first : first << 16 | second;
}

void ExifByteOrder::WriteWord(std::uint8_t* pTarget, std::uint16_t value) const noexcept {
    pTarget[m_bLittleEndian ? 0 : 1] = static_cast<std::uint8_t>(value);
    pTarget[m_bLittleEndian ? 1 : 0] = static_cast<std::uint8_t>(value >> 8);
}

void ExifByteOrder::WriteDword(std::uint8_t* pTarget, std::uint32_t value) const noexcept {
    const auto low = static_cast<std::uint16_t>(value);
    const auto high = static_cast<std::uint16_t>(value >> 16);
    WriteWord(pTarget, m_bLittleEndian ? low : high);
    WriteWord(pTarget + 2, m_bLittleEndian ? high : low);
}

void ExifByteOrder::CopyValues(ExifDataType type, const std::uint8_t* pSource, std::size_t size,
                               std::uint8_t* pTarget) const noexcept {
    const std::size_t word = WordSize(type);
    if (word == 1 || m_bLittleEndian == (std::endian::native == std::endian::little)) {
        std::copy_n(pSource, size, pTarget);
        return;
    }
    for (std::size_t i = 0; i < size; i += word) {
        std::reverse_copy(pSource + i, pSource + i + word, pTarget + i);
    }
}

} // namespace ImagingFramework
