#include "transforms/resize/PixelPicker.h"

#include "Common/IndexWalker.h"

#include <cstddef>
#include <cstring>

namespace ImagingFramework {

namespace {

/// Copies pixels of `Size` bytes as units.
template <std::uint32_t Size>
void PickPixels(const std::uint8_t* source, std::uint8_t* destination, const std::vector<std::uint32_t>& columns) {
    for (const std::uint32_t column : columns) {
        std::memcpy(destination, source + std::size_t{column} * Size, Size);
        destination += Size;
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
