#pragma once

#include "Common/PixelFormat.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Writes the pixels of a row from the last one to the first.
class PixelReversal {
public:
    /// `width` is above 0. Fails with `UnsupportedPixelFormatException` for a pixel size that no format has.
    PixelReversal(PixelFormat format, std::uint32_t width);
    /// The rows must not overlap.
    void Reverse(const std::uint8_t* source, std::uint8_t* destination);

private:
    std::uint32_t m_uintWidth;
    std::uint32_t m_uintBits;
    std::vector<std::uint64_t> m_backwards; ///< bytes of packed indices: the row with its unused bits in front
};

/// The loop of `PixelReversal` for pixels of `size` bytes; with vectors where the processor has them.
void ReversePixels(const std::uint8_t* source, std::uint8_t* destination, std::size_t count, std::size_t size);
/// The same pixel by pixel.
void ReversePixelsPlain(const std::uint8_t* source, std::uint8_t* destination, std::size_t count, std::size_t size);

} // namespace ImagingFramework
