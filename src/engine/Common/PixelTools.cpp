#include "Common/PixelTools.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace ImagingFramework {

namespace {

static_assert(std::endian::native == std::endian::little, "Samples stand in memory little end first.");

/// Reverses the first `Reversed` of the `Channels` channels of each pixel.
template <class Sample, std::size_t Channels, std::size_t Reversed>
void ReverseChannels(std::uint8_t* pPixel, std::size_t count) {
    for (; count != 0; --count, pPixel += sizeof(Sample) * Channels) {
        std::array<Sample, Reversed> samples;
        std::memcpy(samples.data(), pPixel, sizeof(samples));
        std::reverse(samples.begin(), samples.end());
        std::memcpy(pPixel, samples.data(), sizeof(samples));
    }
}

/// Complements the first `Inverted` bytes of each pixel of `Size` bytes.
template <std::size_t Size, std::size_t Inverted>
void InvertBytes(std::uint8_t* pPixel, std::size_t count) {
    for (; count != 0; --count, pPixel += Size) {
        for (std::size_t i = 0; i < Inverted; ++i) {
            pPixel[i] = static_cast<std::uint8_t>(~pPixel[i]);
        }
    }
}

} // namespace

void SwapChannelsInPixel(void* pPixels, std::size_t count, std::uint32_t bitsPerPixel) {
    if (!pPixels || count == 0) {
        return;
    }
    auto* const pBytes = static_cast<std::uint8_t*>(pPixels);
    switch (bitsPerPixel) {
    case 1:
    case 4:
    case 8:
    case 16:
        return;
    case 24:
        return ReverseChannels<std::uint8_t, 3, 3>(pBytes, count);
    case 32:
        return ReverseChannels<std::uint8_t, 4, 4>(pBytes, count);
    case 40:
        return ReverseChannels<std::uint8_t, 5, 4>(pBytes, count);
    case 48:
        return ReverseChannels<std::uint16_t, 3, 3>(pBytes, count);
    case 64:
        return ReverseChannels<std::uint16_t, 4, 4>(pBytes, count);
    case 80:
        return ReverseChannels<std::uint16_t, 5, 4>(pBytes, count);
    default:
        throw UnsupportedPixelFormatException();
    }
}

void InvertChannelsInPixel(void* pPixels, std::size_t count, PixelFormat format) {
    if (!pPixels || count == 0) {
        return;
    }
    auto* const pBytes = static_cast<std::uint8_t*>(pPixels);
    const std::uint32_t bits = PixelFormatSize(format);
    switch (bits) {
    case 8:
    case 24:
    case 32:
    case 48:
    case 64:
        // The complement of a 16-bit channel is that of its bytes, so all of these are one run of bytes.
        return InvertBytes<1, 1>(pBytes, count * (bits / 8));
    case 40:
        return InvertBytes<5, 4>(pBytes, count);
    case 80:
        return InvertBytes<10, 8>(pBytes, count);
    default:
        throw UnsupportedPixelFormatException();
    }
}

void ConvertColorToFormat(const Color& color, PixelFormat format, void* pResult) {
    if (!pResult) {
        throw ArgumentNullPointerException("pResult");
    }
    if (PixelFormatIsIndexed(format)) {
        std::memcpy(pResult, color.Channels.data(), 1);
        return;
    }
    const std::size_t channels = PixelFormatChannelCount(format);
    const std::size_t size = PixelFormatSize(format) / 8;
    if (PixelFormatIsExtended(format)) {
        std::memcpy(pResult, color.Channels.data(), size);
        return;
    }
    // Staged, because the packed formats have more channels than bytes.
    std::array<std::uint8_t, 5> pixel{};
    for (std::size_t i = 0; i < channels; ++i) {
        pixel[i] = static_cast<std::uint8_t>(color.Channels[i] >> 8);
    }
    std::memcpy(pResult, pixel.data(), std::min(channels, size));
}

} // namespace ImagingFramework
