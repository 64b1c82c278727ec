#pragma once

#include "metadata/Exif/ExifTypes.h"

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// Numbers in the byte order of a block.
class ExifByteOrder {
public:
    explicit ExifByteOrder(bool littleEndian) noexcept : m_bLittleEndian(littleEndian) {}

    std::uint16_t ReadWord(const std::uint8_t* pSource) const noexcept;
    std::uint32_t ReadDword(const std::uint8_t* pSource) const noexcept;
    void WriteWord(std::uint8_t* pTarget, std::uint16_t value) const noexcept;
    void WriteDword(std::uint8_t* pTarget, std::uint32_t value) const noexcept;
    /// Copies values between this order and the host's, either way. `size` is whole values of the type.
    void CopyValues(ExifDataType type, const std::uint8_t* pSource, std::size_t size,
                    std::uint8_t* pTarget) const noexcept;

private:
    bool m_bLittleEndian;
};

} // namespace ImagingFramework
