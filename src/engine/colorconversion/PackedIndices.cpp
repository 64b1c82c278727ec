#include "colorconversion/PackedIndices.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

/// Indices that fill their bytes: `Bits` is 1, 2 or 4.
template <std::uint32_t Bits>
void UnpackWhole(const std::uint8_t* source, std::size_t count, std::uint8_t* destination) {
    constexpr std::size_t perByte = 8 / Bits;
    constexpr std::uint32_t mask = (1U << Bits) - 1;
    const std::size_t whole = count / perByte;
    for (std::size_t i = 0; i < whole; ++i) {
        for (std::size_t k = 0; k < perByte; ++k) {
            destination[i * perByte + k] = static_cast<std::uint8_t>((source[i] >> (8 - Bits * (k + 1))) & mask);
        }
    }
    for (std::size_t i = whole * perByte; i < count; ++i) {
        destination[i] = static_cast<std::uint8_t>((source[whole] >> (8 - Bits * (i % perByte + 1))) & mask);
    }
}

/// The whole bytes; returns how many indices they took.
template <std::uint32_t Bits>
std::size_t PackWhole(const std::uint8_t* source, std::size_t count, std::uint8_t* destination) {
    constexpr std::size_t perByte = 8 / Bits;
    constexpr std::uint32_t mask = (1U << Bits) - 1;
    const std::size_t whole = count / perByte;
    for (std::size_t i = 0; i < whole; ++i) {
        std::uint32_t byte = 0;
        for (std::size_t k = 0; k < perByte; ++k) {
            byte = (byte << Bits) | (source[i * perByte + k] & mask);
        }
        destination[i] = static_cast<std::uint8_t>(byte);
    }
    return whole * perByte;
}

} // namespace

void UnpackIndices(const std::uint8_t* source, std::uint32_t bits, std::size_t count, std::uint8_t* destination) {
    switch (bits) {
    case 8:
        std::copy_n(source, count, destination);
        return;
    case 4:
        UnpackWhole<4>(source, count, destination);
        return;
    case 2:
        UnpackWhole<2>(source, count, destination);
        return;
    case 1:
        UnpackWhole<1>(source, count, destination);
        return;
    default:
        break;
    }
    std::uint32_t held = 0;
    std::uint32_t heldBits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (heldBits < bits) {
            held = (held << 8) | *source++;
            heldBits += 8;
        }
        heldBits -= bits;
        destination[i] = static_cast<std::uint8_t>((held >> heldBits) & ((1U << bits) - 1));
    }
}

void PackIndices(const std::uint8_t* source, std::uint32_t bits, std::size_t count, std::uint8_t* destination) {
    std::size_t done = 0;
    switch (bits) {
    case 8:
        std::copy_n(source, count, destination);
        return;
    case 4:
        done = PackWhole<4>(source, count, destination);
        break;
    case 1:
        done = PackWhole<1>(source, count, destination);
        break;
    default:
        break;
    }
    destination += done * bits / 8;
    std::uint32_t held = 0;
    std::uint32_t heldBits = 0;
    for (std::size_t i = done; i < count; ++i) {
        held = (held << bits) | (source[i] & ((1U << bits) - 1));
        heldBits += bits;
        if (heldBits >= 8) {
            heldBits -= 8;
            *destination++ = static_cast<std::uint8_t>(held >> heldBits);
        }
    }
    if (heldBits > 0) {
        const std::uint32_t kept = *destination & (0xFFU >> heldBits);
        *destination = static_cast<std::uint8_t>((held << (8 - heldBits)) | kept);
    }
}

} // namespace ImagingFramework
