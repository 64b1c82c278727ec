#include "transforms/RegionCopy.h"

#include <cstring>

namespace ImagingFramework {

namespace {

/// Copies `count` bits that begin `shift` bits (1 to 7) into the first byte; the bits behind the last one stay 0.
void CopyShiftedBits(const std::uint8_t* source, std::uint32_t shift, std::uint8_t* destination, std::uint64_t count) {
    const std::uint64_t sourceBytes = (shift + count + 7) / 8;
    const std::uint64_t bytes = (count + 7) / 8;
    for (std::uint64_t i = 0; i < bytes; ++i) {
        const std::uint32_t next = i + 1 < sourceBytes ? source[i + 1] : 0U;
        destination[i] = static_cast<std::uint8_t>((std::uint32_t{source[i]} << shift) | (next >> (8 - shift)));
    }
    if (count % 8 != 0) {
        destination[bytes - 1] &= static_cast<std::uint8_t>(0xFF00U >> (count % 8));
    }
}

} // namespace

void CopyRegion(const BitmapData& source, std::uint32_t left, std::uint32_t top, BitmapData& destination) {
    const std::uint64_t firstBit = std::uint64_t{left} * PixelFormatSize(source.GetPixelFormat());
    const std::uint64_t bits = std::uint64_t{destination.GetWidth()} * PixelFormatSize(source.GetPixelFormat());
    const auto shift = static_cast<std::uint32_t>(firstBit % 8);
    for (std::uint32_t y = 0; y < destination.GetHeight(); ++y) {
        const std::uint8_t* const from = source.GetScanlineRef(top + y) + firstBit / 8;
        if (shift == 0) {
            std::memcpy(destination.GetScanlineRef(y), from, (bits + 7) / 8);
        } else {
            CopyShiftedBits(from, shift, destination.GetScanlineRef(y), bits);
        }
    }
}

} // namespace ImagingFramework
