#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Numbers of 15 bits by the sample generator of the C standard. Each user has one of its own, so a seed gives the same
/// sequence whatever other threads do.
class RandomNumbers {
public:
    static constexpr std::uint32_t Maximum = 32767;

    explicit RandomNumbers(std::uint32_t seed) : m_uintState(seed) {}
    /// 0 to `Maximum`.
    std::uint32_t Next() {
        m_uintState = m_uintState * 1103515245U + 12345U;
        return m_uintState >> 16 & Maximum;
    }

private:
    std::uint32_t m_uintState;
};

} // namespace ImagingFramework
