#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <typeindex>

namespace Corvane::Rasterloom::Codecs {

/// What values an EXIF key takes.
class RASTERLOOM_API ExifItemInfo {
public:
    /// The count of a key that takes any number of values.
    static constexpr std::uint32_t AnyCount = 0xFFFFFFFF;

    /// Made by `ExifDictionary::GetItemInfo`.
    ExifItemInfo(std::type_index type, std::uint32_t valueCount) : m_type(type), m_uintValueCount(valueCount) {}

    /// The alternative of `MetadataValue`: `std::string` for texts, `std::vector<std::uint8_t>` for bytes, which are
    /// one value each; `std::uint32_t`, `std::int32_t`, `UnsignedRational` or `Rational` for numbers;
    /// `std::shared_ptr<Bitmap>` for the thumbnail.
    std::type_index get_Type() const noexcept { return m_type; }
    /// Of a text the bytes with the NUL at its end, of bytes their number.
    std::uint32_t get_ValueCount() const noexcept { return m_uintValueCount; }

private:
    std::type_index m_type;
    std::uint32_t m_uintValueCount;
};

} // namespace Corvane::Rasterloom::Codecs
