#include <Corvane/Rasterloom/Codecs/Rational.h>
#include <Corvane/Rasterloom/Codecs/UnsignedRational.h>

#include <functional>

namespace Corvane::Rasterloom::Codecs {

namespace {

template <class Number>
double Quotient(Number dividend, Number divider) {
    return divider == 0 ? static_cast<double>(dividend) : static_cast<double>(dividend) / static_cast<double>(divider);
}

template <class Number>
std::size_t Hash(Number dividend, Number divider) {
    const std::uint64_t both =
        (std::uint64_t{static_cast<std::uint32_t>(dividend)} << 32) | static_cast<std::uint32_t>(divider);
    return std::hash<std::uint64_t>()(both);
}

template <class Number>
std::string Text(Number dividend, Number divider) {
    return std::to_string(dividend) + "/" + std::to_string(divider);
}

} // namespace

Rational::operator double() const noexcept { return Quotient(m_intDividend, m_intDivider); }
std::size_t Rational::GetHashCode() const noexcept { return Hash(m_intDividend, m_intDivider); }
std::string Rational::ToString() const { return Text(m_intDividend, m_intDivider); }

UnsignedRational::operator double() const noexcept { return Quotient(m_uintDividend, m_uintDivider); }
std::size_t UnsignedRational::GetHashCode() const noexcept { return Hash(m_uintDividend, m_uintDivider); }
std::string UnsignedRational::ToString() const { return Text(m_uintDividend, m_uintDivider); }

} // namespace Corvane::Rasterloom::Codecs
