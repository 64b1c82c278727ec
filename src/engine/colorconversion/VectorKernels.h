#pragma once

#include <cstddef>
#include <cstdint>

// Loops that pay for being written with vectors. Each picks its instruction set at run time and equals its plain twin
// in `PlainKernels` bit for bit. Source and destination do not overlap.

namespace ImagingFramework::VectorKernels {

/// Copies `count` pixels of `sourceSize` bytes to pixels of `destinationSize` bytes: the leading bytes, then `fill`
/// (little end first) in what a larger destination has more, which is at most two bytes. Sizes are 1 to 16.
void RepackPixels(const std::uint8_t* source, std::uint32_t sourceSize, std::uint8_t* destination,
                  std::uint32_t destinationSize, std::uint16_t fill, std::size_t count);

/// Bytes to 16-bit words, shifted left by 8.
void WidenBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);

/// The high bytes of 16-bit words.
void NarrowToHighBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);

/// Blue, green, red, alpha bytes to gray, alpha bytes, with the weights 30, 59 and 11 over 100.
void GrayFromColor(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixelCount);

} // namespace ImagingFramework::VectorKernels

namespace ImagingFramework::PlainKernels {

void RepackPixels(const std::uint8_t* source, std::uint32_t sourceSize, std::uint8_t* destination,
                  std::uint32_t destinationSize, std::uint16_t fill, std::size_t count);
void WidenBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);
void NarrowToHighBytes(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);
void GrayFromColor(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixelCount);

/// A weighted sum of bytes over 100. 5243 / 2^19 is so little above 1 / 100 that the floor is the same for every sum of
/// three bytes with these weights.
constexpr std::uint8_t GrayOfBytes(std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    return static_cast<std::uint8_t>(((30 * first + 59 * second + 11 * third) * 5243) >> 19);
}

} // namespace ImagingFramework::PlainKernels
