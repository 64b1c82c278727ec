#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Puts together an integer of a wireless bitmap: 7 bits a byte, the most significant ones first; the top bit says that
/// more follow. Zeros in front are accepted.
class WbmpInteger {
public:
    enum class State : std::uint32_t { Incomplete, Complete, Invalid };

    /// `Invalid` beyond 32 bits, and when the tenth byte is not the last one.
    State AddByte(std::uint8_t byte) noexcept;
    std::uint32_t GetValue() const noexcept { return m_uintValue; }

private:
    std::uint32_t m_uintValue = 0;
    std::uint32_t m_uintByteCount = 0;
};

} // namespace ImagingFramework
