#pragma once

#include "ErrorHandling/Exceptions.h"

#include <cstdint>

namespace ImagingFramework {

/// Steps through one row of packed palette indices, the pixel in the top bits of a byte first. A position is a byte and a
/// bit offset that must be a multiple of the index width below 8, else `SetPosition` fails with `ArgumentException`.
template <std::uint32_t Bits> class IndexWalker {
    static_assert(Bits == 1 || Bits == 4 || Bits == 8);

public:
    void SetPosition(std::uint8_t* pAddress, std::uint32_t bitOffset) {
        if (bitOffset >= 8 || bitOffset % Bits != 0) {
            throw ArgumentException("bitOffset");
        }
        m_pByte = pAddress;
        m_shift = 8 - Bits - bitOffset;
    }

    std::uint8_t GetIndex() const { return static_cast<std::uint8_t>((*m_pByte >> m_shift) & Mask); }

    void SetIndex(std::uint8_t index) {
        const auto kept = static_cast<std::uint32_t>(*m_pByte) & ~(Mask << m_shift);
        *m_pByte = static_cast<std::uint8_t>(kept | ((index & Mask) << m_shift));
    }

    void NextPixel() {
        if (m_shift == 0) {
            ++m_pByte;
            m_shift = 8 - Bits;
        } else {
            m_shift -= Bits;
        }
    }

private:
    static constexpr std::uint32_t Mask = (1U << Bits) - 1;

    std::uint8_t* m_pByte = nullptr;
    std::uint32_t m_shift = 8 - Bits;
};

using Index8bppWalker = IndexWalker<8>;
using Index4bppWalker = IndexWalker<4>;
using Index1bppWalker = IndexWalker<1>;

} // namespace ImagingFramework
