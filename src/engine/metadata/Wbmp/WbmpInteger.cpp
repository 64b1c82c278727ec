#include "metadata/Wbmp/WbmpInteger.h"

namespace ImagingFramework {

WbmpInteger::State WbmpInteger::AddByte(std::uint8_t byte) noexcept {
    constexpr std::uint32_t maximumByteCount = 10;
    if (m_uintValue >> (32 - 7) != 0) {
        return State::Invalid;
    }
    m_uintValue = m_uintValue << 7 | (byte & 0x7FU);
    if ((byte & 0x80) == 0) {
        return State::Complete;
    }
    return ++m_uintByteCount < maximumByteCount ? State::Incomplete : State::Invalid;
}

} // namespace ImagingFramework
