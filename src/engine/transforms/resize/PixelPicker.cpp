#include "transforms/resize/PixelPicker.h"

#include "Common/IndexWalker.h"

#include <cstddef>
#include <cstring>

namespace ImagingFramework {

namespace {

/// The size of one load that holds a pixel of `size` bytes.
constexpr std::size_t LoadSize(std::size_t size) { return size <= 2 ? size : (size <= 4 ? 4 : (size <= 8 ? 8 : 16)); }

/// Copies pixels of `Size` bytes as units. Odd sizes are copied by one load and one store that reach into the next pixel,
/// which is then written over, as long as neither goes beyond the last pixels of all.
template <std::size_t Size>
void PickPixels(const std::uint8_t* source, std::uint8_t* destination, const std::vector<std::uint32_t>& columns) {
    constexpr std::size_t whole = LoadSize(Size);
    // Bytes may alias anything, so what the loops keep is local.
    const std::uint32_t* const from = columns.data();
    const std::size_t count = columns.size();
    std::size_t x = 0;
    if constexpr (whole != Size) {
        std::size_t end = count * Size < whole ? 0 : (count * Size - whole) / Size + 1;
        while (end > 0 && from[end - 1] * Size + whole > (from[count - 1] + std::size_t{1}) * Size) {
            --end;
        }
        for (; x < end; ++x) {
            std::memcpy(destination + x * Size, source + from[x] * Size, whole);
        }
    }
    for (; x < count; ++x) {
        std::memcpy(destination + x * Size, source + from[x] * Size, Size);
    }
}

template <std::uint32_t Bits>
void PickIndices(const std::uint8_t* source, std::uint8_t* destination, const std::vector<std::uint32_t>& columns) {
    constexpr std::uint32_t perByte = 8 / Bits;
    IndexWalker<Bits> walker;
    walker.SetPosition(destination, 0);
    for (const std::uint32_t column : columns) {
        const std::uint32_t shift = (perByte - 1 - column % perByte) * Bits;
        walker.SetIndex(static_cast<std::uint8_t>(source[column / perByte] >> shift));
        walker.NextPixel();
    }
}

} // namespace

PixelPicker ChoosePixelPicker(PixelFormat format) {
    switch (PixelFormatSize(format)) {
    case 1:
        return &PickIndices<1>;
    case 4:
        return &PickIndices<4>;
    case 8:
        return &PickPixels<1>;
    case 16:
        return &PickPixels<2>;
    case 24:
        return &PickPixels<3>;
    case 32:
        return &PickPixels<4>;
    case 40:
        return &PickPixels<5>;
    case 48:
        return &PickPixels<6>;
    case 64:
        return &PickPixels<8>;
    case 80:
        return &PickPixels<10>;
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace ImagingFramework
