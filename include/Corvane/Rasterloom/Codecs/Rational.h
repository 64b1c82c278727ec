#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace Corvane::Rasterloom::Codecs {

/// A dividend and a divider, kept as they are: 1/2 does not equal 2/4.
class RASTERLOOM_API Rational {
public:
    /// 0/0 unless given.
    Rational() = default;
    Rational(std::int32_t dividend, std::int32_t divider) : m_intDividend(dividend), m_intDivider(divider) {}

    /// The upper number.
    std::int32_t get_Dividend() const noexcept { return m_intDividend; }
    void set_Dividend(std::int32_t value) noexcept { m_intDividend = value; }
    /// The lower number; may be 0.
    std::int32_t get_Divider() const noexcept { return m_intDivider; }
    void set_Divider(std::int32_t value) noexcept { m_intDivider = value; }

    /// The quotient, or the dividend where the divider is 0.
    operator double() const noexcept;
    bool operator==(const Rational&) const = default;
    /// Whether both numbers are equal.
    bool Equals(const Rational& other) const noexcept { return *this == other; }
    /// Equal values have equal hash codes.
    std::size_t GetHashCode() const noexcept;
    /// As "1/2".
    std::string ToString() const;

private:
    std::int32_t m_intDividend = 0;
    std::int32_t m_intDivider = 0;
};

} // namespace Corvane::Rasterloom::Codecs
