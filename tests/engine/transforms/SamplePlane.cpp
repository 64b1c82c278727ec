#include "SamplePlane.h"

namespace ImagingFramework::Testing {

SamplePlane SamplePlane::Sized(Int width, Int height) const {
    SamplePlane plane{width, height, Samples, Alpha, Wide, {}};
    plane.Pixels.resize(static_cast<std::size_t>(width * height));
    return plane;
}

SamplePlane SamplePlane::Transposed() const {
    SamplePlane plane = Sized(Height, Width);
    for (Int y = 0; y < Height; ++y) {
        for (Int x = 0; x < Width; ++x) {
            plane.At(y, x) = At(x, y);
        }
    }
    return plane;
}

Pixel SamplePlane::Blend(const Pixel& a, const Pixel& b, Int weight) const {
    const Int wa = (65536 - weight) * (Alpha ? a[Colors()] : 1);
    const Int wb = weight * (Alpha ? b[Colors()] : 1);
    Pixel pixel{};
    if (Alpha && (wa + wb) >> 16 == 0) {
        return pixel;
    }
    for (std::size_t c = 0; c < Colors(); ++c) {
        pixel[c] = (a[c] * wa + b[c] * wb) / (wa + wb);
    }
    if (Alpha) {
        pixel[Colors()] = (wa + wb) >> 16;
    }
    return pixel;
}

namespace {

/// Calls `visit(sample, bytes)` for every sample of a plane and its place in a raster.
template <class Plane, class Visit> void VisitSamples(Plane& plane, const BitmapData& raster, const Visit& visit) {
    const std::size_t size = plane.Wide ? 2 : 1;
    for (Int y = 0; y < plane.Height; ++y) {
        std::uint8_t* bytes = raster.GetScanlineRef(static_cast<std::uint32_t>(y));
        for (Int x = 0; x < plane.Width; ++x) {
            for (std::size_t c = 0; c < plane.Samples; ++c, bytes += size) {
                visit(plane.At(x, y)[c], bytes);
            }
        }
    }
}

} // namespace

SamplePlane ReadPlane(const BitmapData& raster) {
    const PixelFormat format = raster.GetPixelFormat();
    SamplePlane plane;
    plane.Wide = PixelFormatIsExtended(format);
    plane.Samples = PixelFormatSize(format) / (plane.Wide ? 16 : 8);
    plane.Alpha = PixelFormatHasAlpha(format) && !HasFlag(format, PixelFormatFlag::Premultiplied);
    plane = plane.Sized(raster.GetWidth(), raster.GetHeight());
    VisitSamples(plane, raster, [&plane](Int& sample, const std::uint8_t* bytes) {
        sample = plane.Wide ? bytes[0] | bytes[1] << 8 : bytes[0];
    });
    return plane;
}

BitmapData WritePlane(const SamplePlane& plane, PixelFormat format) {
    BitmapData raster(static_cast<std::uint32_t>(plane.Width), static_cast<std::uint32_t>(plane.Height), format);
    VisitSamples(plane, raster, [&plane](Int sample, std::uint8_t* bytes) {
        bytes[0] = static_cast<std::uint8_t>(sample);
        if (plane.Wide) {
            bytes[1] = static_cast<std::uint8_t>(sample >> 8);
        }
    });
    return raster;
}

} // namespace ImagingFramework::Testing
