#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace Corvane::Rasterloom::Codecs {

/// A dividend and a divider, kept as they are: 1/2 does not equal 2/4.
class RASTERLOOM_API UnsignedRational {
public:
    /// 0/0 unless given.
    UnsignedRational() = default;
    UnsignedRational(std::uint32_t dividend, std::uint32_t divider)
        : m_uintDividend(dividend), m_uintDivider(divider) {}

    /// The upper number.
    std::uint32_t get_Dividend() const noexcept { return m_uintDividend; }
    void set_Dividend(std::uint32_t value) noexcept { m_uintDividend = value; }
    /// The lower number; may be 0.
    std::uint32_t get_Divider() const noexcept { return m_uintDivider; }
    void set_Divider(std::uint32_t value) noexcept { m_uintDivider = value; }

    /// The quotient, or the dividend where the divider is 0.
    operator double() const noexcept;
    bool operator==(const UnsignedRational&) const = default;
    /// Whether both numbers are equal.
    bool Equals(const UnsignedRational& other) const noexcept { return *this == other; }
    /// Equal values have equal hash codes.
    std::size_t GetHashCode() const noexcept;
    /// As "1/2".
    std::string ToString() const;

private:
    std::uint32_t m_uintDividend = 0;
    std::uint32_t m_uintDivider = 0;
};

} // namespace Corvane::Rasterloom::Codecs
