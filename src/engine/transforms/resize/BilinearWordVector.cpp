#include "transforms/resize/BilinearVector.h"

#include "Common/VectorTarget.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transforms/resize/BilinearWordVector.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace ImagingFramework::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if RASTERLOOM_PLAIN_TARGET

std::size_t BlendWords(const std::uint16_t*, const std::uint16_t*, std::uint16_t*, std::size_t, const std::uint16_t*,
                       std::uint32_t) {
    return 0;
}

#else

/// Blends samples with a weight for each, or one for all: a + floor((b - a) * w / 65536). Returns how many were done, all of
/// them or none.
std::size_t BlendWords(const std::uint16_t* HWY_RESTRICT first, const std::uint16_t* HWY_RESTRICT second,
                       std::uint16_t* HWY_RESTRICT row, std::size_t samples, const std::uint16_t* HWY_RESTRICT weights,
                       std::uint32_t weight) {
    const hn::ScalableTag<std::uint16_t> d;
    const std::size_t lanes = hn::Lanes(d);
    if (samples < lanes) {
        return 0;
    }
    const auto all = hn::Set(d, static_cast<std::uint16_t>(weight));
    const auto one = hn::Set(d, std::uint16_t{1});
    for (std::size_t i = 0; i < samples; i += lanes) {
        // The last vector ends with the row, and repeats some samples.
        const std::size_t at = std::min(i, samples - lanes);
        const auto a = hn::LoadU(d, first + at);
        const auto b = hn::LoadU(d, second + at);
        const auto w = weights != nullptr ? hn::LoadU(d, weights + at) : all;
        const auto difference = hn::Sub(hn::Max(a, b), hn::Min(a, b));
        const auto high = hn::MulHigh(difference, w);
        // Downwards the floor goes one further, unless the product has no fraction.
        const auto further = hn::Min(hn::Mul(difference, w), one);
        const auto up = hn::Add(a, high);
        const auto down = hn::Sub(hn::Sub(a, high), further);
        hn::StoreU(hn::IfThenElse(hn::Eq(hn::Max(a, b), b), up, down), d, row + at);
    }
    return samples;
}

#endif

} // namespace ImagingFramework::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ImagingFramework {

namespace {

/// Columns that are brought together before they are blended.
constexpr std::size_t ChunkPixels = 64;

HWY_EXPORT(BlendWords);

/// Copies pixels to one after the other, by loads and stores of 8 bytes where the row allows it.
template <std::size_t Samples>
void CollectPixels(const std::uint16_t* source, std::size_t rowSamples, const std::uint32_t* offsets, std::size_t count,
                   std::uint16_t* pixels) {
    constexpr std::size_t size = 2 * Samples;
    constexpr std::size_t whole = Samples == 3 ? 8 : size;
    std::size_t i = 0;
    for (; i < count && offsets[i] + whole / 2 <= rowSamples; ++i) {
        std::memcpy(pixels + i * Samples, source + offsets[i], whole);
    }
    for (; i < count; ++i) {
        std::memcpy(pixels + i * Samples, source + offsets[i], size);
    }
}

template <std::size_t Samples>
void BlendPixelColumns(const std::uint16_t* source, std::size_t rowSamples, std::uint16_t* row, const BilinearColumns& columns) {
    std::uint16_t first[Samples * ChunkPixels + 1];
    std::uint16_t second[Samples * ChunkPixels + 1];
    std::uint16_t weights[Samples * ChunkPixels];
    const std::size_t width = columns.First.size();
    for (std::size_t x = 0; x < width; x += ChunkPixels) {
        const std::size_t begin = width < ChunkPixels ? 0 : std::min(x, width - ChunkPixels);
        const std::size_t count = std::min(width, ChunkPixels);
        CollectPixels<Samples>(source, rowSamples, columns.First.data() + begin, count, first);
        CollectPixels<Samples>(source, rowSamples, columns.Second.data() + begin, count, second);
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t c = 0; c < Samples; ++c) {
                weights[i * Samples + c] = columns.Weight[begin + i];
            }
        }
        if (HWY_DYNAMIC_DISPATCH(BlendWords)(first, second, row + begin * Samples, count * Samples, weights, 0) == 0) {
            return BlendColumns<std::uint16_t, static_cast<int>(Samples)>(source, row + begin * Samples, columns, begin);
        }
    }
}

} // namespace

void BlendWordRows(const std::uint16_t* top, const std::uint16_t* bottom, std::uint16_t* row, std::size_t samples,
                   std::uint32_t weight) {
    // A whole unit does not fit 16 bits; it occurs between the levels of a pyramid.
    const std::size_t done =
        weight <= 0xFFFFU ? HWY_DYNAMIC_DISPATCH(BlendWords)(top, bottom, row, samples, nullptr, weight) : 0;
    BlendRows<std::uint16_t>(top + done, bottom + done, row + done, samples - done, weight);
}

void BlendWordColumns(const std::uint16_t* source, std::size_t rowSamples, std::uint16_t* row,
                      const BilinearColumns& columns, int samples) {
    switch (samples) {
    case 1:
        return BlendPixelColumns<1>(source, rowSamples, row, columns);
    case 3:
        return BlendPixelColumns<3>(source, rowSamples, row, columns);
    default:
        return BlendPixelColumns<4>(source, rowSamples, row, columns);
    }
}

} // namespace ImagingFramework
#endif
