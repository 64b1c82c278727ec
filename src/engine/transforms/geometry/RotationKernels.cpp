#include "transforms/geometry/RotationKernels.h"

#include "transforms/geometry/RotationVector.h"
#include "transforms/resize/BilinearRows.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ImagingFramework {

namespace {

constexpr std::int64_t HalfPixel = 32768;

// --- Nearest

template <std::size_t Size> void CopyNearest(const RotationSource& source, const RotationRun& run) {
    std::int64_t x = run.X;
    std::int64_t y = run.Y;
    for (std::size_t i = 0; i < run.Count; ++i) {
        const std::uint8_t* const row = source.Pixels + static_cast<std::size_t>(y >> 16) * source.Stride;
        std::memcpy(run.Destination + i * Size, row + static_cast<std::size_t>(x >> 16) * Size, Size);
        x += run.StepX;
        y += run.StepY;
    }
}

RotationFill ChooseNearest(std::uint32_t bitsPerPixel) {
    switch (bitsPerPixel) {
    case 8:
        return &CopyNearest<1>;
    case 16:
        return &CopyNearest<2>;
    case 24:
        return &CopyNearest<3>;
    case 32:
        return &CopyNearest<4>;
    case 40:
        return &CopyNearest<5>;
    case 48:
        return &CopyNearest<6>;
    case 64:
        return &CopyNearest<8>;
    case 80:
        return &CopyNearest<10>;
    default:
        throw UnsupportedPixelFormatException();
    }
}

// --- Bilinear

/// The four neighbours of a position: in the upper row, then in the lower one.
template <class Layout> using Neighbours = std::array<const typename Layout::Sample*, 4>;

template <class Layout>
void BlendNeighbours(const Neighbours<Layout>& pixels, std::uint32_t weightX, std::uint32_t weightY,
                     typename Layout::Sample* result) {
    using Sample = typename Layout::Sample;
    if constexpr (!Layout::Alpha) {
        for (int c = 0; c < Layout::Samples; ++c) {
            const std::uint32_t top = Blend(pixels[0][c], pixels[1][c], weightX);
            const std::uint32_t bottom = Blend(pixels[2][c], pixels[3][c], weightX);
            result[c] = static_cast<Sample>(Blend(top, bottom, weightY));
        }
    } else if ((weightX | weightY) == 0) {
        // Nothing is blended, and a transparent pixel keeps its colour.
        std::copy_n(pixels[0], Layout::Samples, result);
    } else {
        std::array<Sample, Layout::Samples> top;
        std::array<Sample, Layout::Samples> bottom;
        BlendPixelWithAlpha<Layout>(pixels[0], pixels[1], weightX, top.data());
        BlendPixelWithAlpha<Layout>(pixels[2], pixels[3], weightX, bottom.data());
        BlendPixelWithAlpha<Layout>(top.data(), bottom.data(), weightY, result);
    }
}

template <class Layout>
const typename Layout::Sample* PixelAt(const RotationSource& source, std::int64_t x, std::int64_t y) {
    constexpr std::size_t size = Layout::Samples * sizeof(typename Layout::Sample);
    return reinterpret_cast<const typename Layout::Sample*>(
        source.Pixels + static_cast<std::size_t>(y) * source.Stride + static_cast<std::size_t>(x) * size);
}

/// Calls `neighbours(x, y)` for the pixel of every position of the run, and blends what it gives.
template <class Layout, class GetNeighbours> void BlendRun(const RotationRun& run, const GetNeighbours& neighbours) {
    auto* destination = reinterpret_cast<typename Layout::Sample*>(run.Destination);
    std::int64_t x = run.X;
    std::int64_t y = run.Y;
    for (std::uint32_t i = 0; i < run.Count; ++i) {
        BlendNeighbours<Layout>(neighbours(x >> 16, y >> 16), static_cast<std::uint32_t>(x & 0xFFFF),
                                static_cast<std::uint32_t>(y & 0xFFFF), destination);
        destination += Layout::Samples;
        x += run.StepX;
        y += run.StepY;
    }
}

template <class Layout> void BlendInside(const RotationSource& source, const RotationRun& run) {
    BlendRun<Layout>(run, [&source](std::int64_t x, std::int64_t y) {
        const auto* const top = PixelAt<Layout>(source, x, y);
        const auto* const bottom = PixelAt<Layout>(source, x, y + 1);
        return Neighbours<Layout>{top, top + Layout::Samples, bottom, bottom + Layout::Samples};
    });
}

template <class Layout> void BlendEdge(const RotationSource& source, const RotationRun& run) {
    const auto pixel = [&source](std::int64_t x, std::int64_t y) {
        const bool isInside = x >= 0 && y >= 0 && x < source.Width && y < source.Height;
        return isInside ? PixelAt<Layout>(source, x, y)
                        : reinterpret_cast<const typename Layout::Sample*>(source.Background);
    };
    BlendRun<Layout>(run, [&pixel](std::int64_t x, std::int64_t y) {
        return Neighbours<Layout>{pixel(x, y), pixel(x + 1, y), pixel(x, y + 1), pixel(x + 1, y + 1)};
    });
}

/// The pixels that lanes can do, then the others.
template <class Layout> void BlendInsideVectors(const RotationSource& source, const RotationRun& run) {
    RotationRun rest = run;
    while (rest.Count != 0) {
        const std::uint32_t done = BlendRotatedBytes(source, rest, Layout::Samples, Layout::Alpha);
        rest = SkipPixels(rest, done, Layout::Samples);
        RotationRun plain = rest;
        plain.Count = std::min(rest.Count, PlainPixels);
        BlendInside<Layout>(source, plain);
        rest = SkipPixels(rest, plain.Count, Layout::Samples);
    }
}

template <class Layout> RotationKernel MakeKernel() {
    constexpr bool hasVectors = sizeof(typename Layout::Sample) == 1 &&
                                (Layout::Samples == 1 || Layout::Samples == 3 || Layout::Samples == 4);
    if constexpr (hasVectors) {
        return {&BlendInsideVectors<Layout>, &BlendEdge<Layout>, RotationMargin(Layout::Samples), 1, 0};
    } else {
        return {&BlendInside<Layout>, &BlendEdge<Layout>, 1, 1, 0};
    }
}

} // namespace

RotationKernel NearestRotation(PixelFormat format) {
    return {ChooseNearest(PixelFormatSize(format)), nullptr, 0, 0, HalfPixel};
}

RotationKernel BilinearRotation(PixelFormat format) {
    RotationKernel kernel{};
    DispatchLayout(format, [&](auto layout) { kernel = MakeKernel<decltype(layout)>(); });
    return kernel;
}

} // namespace ImagingFramework
