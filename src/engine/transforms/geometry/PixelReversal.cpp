#include "transforms/geometry/PixelReversal.h"

#include "Common/VectorTarget.h"
#include "transforms/BitRun.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/geometry/PixelReversal.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

std::size_t ReverseVectors(const std::uint8_t*, std::uint8_t*, std::size_t, std::size_t) { return 0; }

#else

/// As many whole pixels as 16 bytes hold change places at once. Returns how many pixels were done; the rest is the caller's.
std::size_t ReverseVectors(const std::uint8_t* HWY_RESTRICT source, std::uint8_t* HWY_RESTRICT destination,
                           std::size_t count, std::size_t size) {
    const hn::FixedTag<std::uint8_t, 16> d;
    const std::size_t group = 16 / size;
    const std::size_t groupBytes = group * size;
    HWY_ALIGN std::uint8_t indices[16];
    for (std::size_t i = 0; i < 16; ++i) {
        const std::size_t pixel = i / size;
        indices[i] = static_cast<std::uint8_t>(i < groupBytes ? (group - 1 - pixel) * size + i % size : i);
    }
    const auto shuffle = hn::Load(d, indices);
    // Where a group leaves some of the 16 bytes over, one pixel more must lie behind each load and each store.
    const std::size_t slack = groupBytes == 16 || count == 0 ? 0 : 1;
    ReversePixelsPlain(source + (count - slack) * size, destination, slack, size);
    std::size_t done = slack;
    for (; done + group + slack <= count; done += group) {
        const auto pixels = hn::LoadU(d, source + (count - done - group) * size);
        hn::StoreU(hn::TableLookupBytes(pixels, shuffle), d, destination + done * size);
    }
    return done;
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

HWY_EXPORT(ReverseVectors);

namespace {

template <std::size_t Size>
void ReverseSized(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        std::memcpy(destination + x * Size, source + (count - 1 - x) * Size, Size);
    }
}

/// Turns the pixels of `bits` bits round within each byte of `words`.
void ReverseWithinBytes(std::vector<std::uint64_t>& words, std::uint32_t bits) {
    const auto exchange = [](std::uint64_t word, int distance, std::uint64_t mask) {
        return ((word >> distance) & mask) | ((word & mask) << distance);
    };
    for (std::uint64_t& word : words) {
        word = exchange(word, 4, 0x0F0F0F0F0F0F0F0FU);
        if (bits == 1) {
            word = exchange(exchange(word, 2, 0x3333333333333333U), 1, 0x5555555555555555U);
        }
    }
}

} // namespace

void ReversePixelsPlain(const std::uint8_t* source, std::uint8_t* destination, std::size_t count, std::size_t size) {
    switch (size) {
    case 1:
        return ReverseSized<1>(source, destination, count);
    case 2:
        return ReverseSized<2>(source, destination, count);
    case 3:
        return ReverseSized<3>(source, destination, count);
    case 4:
        return ReverseSized<4>(source, destination, count);
    case 5:
        return ReverseSized<5>(source, destination, count);
    case 6:
        return ReverseSized<6>(source, destination, count);
    case 8:
        return ReverseSized<8>(source, destination, count);
    case 10:
        return ReverseSized<10>(source, destination, count);
    default:
        throw UnsupportedPixelFormatException();
    }
}

void ReversePixels(const std::uint8_t* source, std::uint8_t* destination, std::size_t count, std::size_t size) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(ReverseVectors)(source, destination, count, size);
    ReversePixelsPlain(source, destination + done * size, count - done, size);
}

PixelReversal::PixelReversal(PixelFormat format, std::uint32_t width)
    : m_uintWidth(width), m_uintBits(PixelFormatSize(format)) {
    if (m_uintBits < 8) {
        m_backwards.resize(static_cast<std::size_t>(CalculateStride64(width, m_uintBits, sizeof(std::uint64_t)) / 8));
    }
}

void PixelReversal::Reverse(const std::uint8_t* source, std::uint8_t* destination) {
    if (m_uintBits >= 8) {
        ReversePixels(source, destination, m_uintWidth, m_uintBits / 8);
        return;
    }
    const std::uint64_t bits = std::uint64_t{m_uintWidth} * m_uintBits;
    const std::uint64_t bytes = (bits + 7) / 8;
    auto* const backwards = reinterpret_cast<std::uint8_t*>(m_backwards.data());
    ReversePixels(source, backwards, bytes, 1);
    ReverseWithinBytes(m_backwards, m_uintBits);
    CopyBits(backwards, bytes * 8 - bits, destination, 0, bits);
}

} // namespace ImagingFramework
#endif
