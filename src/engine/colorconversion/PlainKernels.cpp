#include "colorconversion/VectorKernels.h"

#include <algorithm>

namespace ImagingFramework::PlainKernels {

void RepackPixels(const std::uint8_t* source, std::uint32_t sourceSize, std::uint8_t* destination,
                  std::uint32_t destinationSize, std::uint16_t fill, std::size_t count) {
    const std::uint32_t copied = std::min(sourceSize, destinationSize);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::uint32_t byte = 0; byte < copied; ++byte) {
            destination[byte] = source[byte];
        }
        for (std::uint32_t byte = copied; byte < destinationSize; ++byte) {
            destination[byte] = static_cast<std::uint8_t>(fill >> (8 * (byte - copied)));
        }
        source += sourceSize;
        destination += destinationSize;
    }
}

void WidenBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        destination[2 * i] = 0;
        destination[2 * i + 1] = source[i];
    }
}

void NarrowToHighBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        destination[i] = source[2 * i + 1];
    }
}

void GrayFromColor(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixelCount) {
    for (std::size_t i = 0; i < pixelCount; ++i) {
        destination[2 * i] = GrayOfBytes(source[4 * i], source[4 * i + 1], source[4 * i + 2]);
        destination[2 * i + 1] = source[4 * i + 3];
    }
}

} // namespace ImagingFramework::PlainKernels
