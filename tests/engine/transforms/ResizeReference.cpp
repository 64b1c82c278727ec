#include "ResizeReference.h"

#include "SamplePlane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace ImagingFramework::Testing {

namespace {

using Plane = SamplePlane;

double Ratio(Int source, Int target) {
    return static_cast<double>(source - 1) / (static_cast<double>(target - 1) + (target == 1 ? 0.5 : 0.0));
}

Int Fixed(double value) { return static_cast<Int>(std::floor(value * 65536.0 + 0.5)); }

// --- bilinear

Plane Bilinear(const Plane& source, Int width, Int height) {
    Plane result = source.Sized(width, height);
    const Int ratioX = Fixed(Ratio(source.Width, width));
    const Int ratioY = Fixed(Ratio(source.Height, height));
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            const Int x0 = std::min((x * ratioX) >> 16, source.Width - 1);
            const Int x1 = std::min(x0 + 1, source.Width - 1);
            const auto row = [&](Int at) {
                return source.Blend(source.At(x0, at), source.At(x1, at), (x * ratioX) & 0xFFFF);
            };
            const Int y0 = std::min((y * ratioY) >> 16, source.Height - 1);
            result.At(x, y) = source.Blend(row(y0), row(std::min(y0 + 1, source.Height - 1)), (y * ratioY) & 0xFFFF);
        }
    }
    return result;
}

// --- means of point samples

using Positions = std::vector<std::pair<Int, Int>>;

/// The mean of the listed pixels, colours weighted by alpha.
Pixel Mean(const Plane& source, const Positions& pixels) {
    Pixel sums{};
    Int weights = 0;
    for (const auto& [x, y] : pixels) {
        const Pixel& pixel = source.At(x, y);
        const Int weight = source.Alpha ? pixel[source.Colors()] : 1;
        weights += weight;
        for (std::size_t c = 0; c < source.Colors(); ++c) {
            sums[c] += pixel[c] * weight;
        }
    }
    for (std::size_t c = 0; c < source.Colors(); ++c) {
        sums[c] = weights == 0 ? 0 : sums[c] / weights;
    }
    if (source.Alpha) {
        sums[source.Colors()] = weights / static_cast<Int>(pixels.size());
    }
    return sums;
}

/// Every pixel is the mean of those in `columns(x)` and `rows(y)`.
template <class Indices>
Plane MeansOf(const Plane& source, Int width, Int height, const Indices& columns, const Indices& rows) {
    Plane result = source.Sized(width, height);
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            Positions pixels;
            for (const Int v : rows(y)) {
                for (const Int u : columns(x)) {
                    pixels.emplace_back(u, v);
                }
            }
            result.At(x, y) = Mean(source, pixels);
        }
    }
    return result;
}

/// The source positions along an axis for a position of the target.
using AxisIndices = std::function<std::vector<Int>(Int)>;

AxisIndices PointSamples(Int source, Int target, Int n) {
    return [=, step = Fixed(Ratio(source, target) / static_cast<double>(n))](Int position) {
        std::vector<Int> indices;
        for (Int k = position * n; k < position * n + n; ++k) {
            indices.push_back(std::min((k * step) >> 16, source - 1));
        }
        return indices;
    };
}

AxisIndices Window(Int source, Int target) {
    return [=, r = Ratio(source, target)](Int position) {
        const Int n = static_cast<Int>(std::clamp(std::ceil(r), 3.0, 9.0));
        std::vector<Int> indices;
        for (Int q = 0; q < n; ++q) {
            const double at = static_cast<double>(position) * r +
                              (static_cast<double>(q) - static_cast<double>(n - 1) / 2.0) * r / static_cast<double>(n);
            indices.push_back(std::clamp<Int>(static_cast<Int>(std::floor(at + 0.5)), 0, source - 1));
        }
        return indices;
    };
}

Plane Anisotropic(const Plane& source, Int width, Int height, Int n) {
    return MeansOf(source, width, height, PointSamples(source.Width, width, n), PointSamples(source.Height, height, n));
}

Plane Halved(const Plane& source) {
    const auto pair = [](Int size) {
        return AxisIndices([size](Int at) { return std::vector<Int>{2 * at, std::min(2 * at + 1, size - 1)}; });
    };
    return MeansOf(source, (source.Width + 1) / 2, (source.Height + 1) / 2, pair(source.Width), pair(source.Height));
}

double Share(Int target, Int small, Int large) {
    if (target <= small) {
        return 0.0;
    }
    return large == small ? 1.0 : static_cast<double>(target - small) / static_cast<double>(large - small);
}

Plane Trilinear(const Plane& source, Int width, Int height) {
    if (width >= source.Width && height >= source.Height) {
        return Bilinear(source, width, height);
    }
    const double reduction = std::max(static_cast<double>(source.Width) / static_cast<double>(width),
                                      static_cast<double>(source.Height) / static_cast<double>(height));
    Plane large;
    Plane small = source;
    for (double factor = 1.0; factor < reduction; factor *= 2.0) {
        large = small;
        small = Halved(large);
    }
    const double share = Share(width, small.Width, large.Width) + Share(height, small.Height, large.Height);
    const Int weight = static_cast<Int>(std::clamp(share * 0.5 * 65536.0, 0.0, 65536.0));
    Plane result = Bilinear(large, width, height);
    const Plane other = Bilinear(small, width, height);
    for (std::size_t i = 0; i < result.Pixels.size(); ++i) {
        result.Pixels[i] = result.Blend(result.Pixels[i], other.Pixels[i], 65536 - weight);
    }
    return result;
}

// --- filters, one axis at a time

/// What one position of the target takes; nothing means the nearest pixel as it is.
template <class Weight> struct Taps {
    Int Nearest = 0;
    std::vector<std::pair<Int, Weight>> List;
    Weight Total = 0;
};

/// `tapsOf(x)` gives the taps of a column, `quotient(sum, divisor)` the sample.
template <class Weight, class Quotient>
Plane FilterRows(const Plane& source, Int width, const std::function<Taps<Weight>(Int)>& tapsOf, const Quotient& quotient) {
    Plane result = source.Sized(width, source.Height);
    for (Int x = 0; x < width; ++x) {
        const Taps<Weight> taps = tapsOf(x);
        for (Int y = 0; y < source.Height; ++y) {
            if (taps.List.empty()) {
                result.At(x, y) = source.At(taps.Nearest, y);
                continue;
            }
            std::array<Weight, 5> sums{};
            Weight alpha = 0;
            for (const auto& [index, tap] : taps.List) {
                const Pixel& pixel = source.At(index, y);
                const Weight weight = source.Alpha ? tap * static_cast<Weight>(pixel[source.Colors()]) : tap;
                alpha += weight;
                for (std::size_t c = 0; c < source.Colors(); ++c) {
                    sums[c] += weight * static_cast<Weight>(pixel[c]);
                }
            }
            for (std::size_t c = 0; c < source.Colors(); ++c) {
                result.At(x, y)[c] = quotient(sums[c], source.Alpha ? alpha : taps.Total);
            }
            if (source.Alpha) {
                result.At(x, y)[source.Colors()] = quotient(alpha, taps.Total);
            }
        }
    }
    return result;
}

double Lanczos(double x) {
    if (x == 0.0) {
        return 1.0;
    }
    if (x <= -3.0 || x >= 3.0) {
        return 0.0;
    }
    const double a = 2.0 * std::numbers::pi * x;
    return std::sin(a) / a * std::sin(a / 3.0) / (a / 3.0);
}

Plane LanczosRows(const Plane& source, Int width) {
    const double r = Ratio(source.Width, width);
    const Int limit = source.Width / 2;
    const Int half = r >= 1.0 ? std::min<Int>(1 + static_cast<Int>(3.0 * r), limit) : std::min<Int>(4, limit);
    const Int taps = 2 * half - 1;
    const double s = 0.5 / std::max(r, 1.0);
    const auto tapsOf = [&](Int x) {
        const double p = static_cast<double>(x) * r;
        const Int nearest = static_cast<Int>(p + 0.5);
        const Int first = nearest - taps / 2;
        Taps<double> result{std::min(nearest, source.Width - 1), {}, 1.0};
        double sum = 0.0;
        for (Int t = 0; t < taps; ++t) {
            result.List.emplace_back(first + t,
                                     Lanczos((static_cast<double>(first) - p) * s + static_cast<double>(t) * s));
            sum += result.List.back().second;
        }
        const auto removed =
            std::erase_if(result.List, [&](const auto& tap) { return tap.first < 0 || tap.first >= source.Width; });
        double inside = 0.0;
        for (auto& tap : result.List) {
            inside += tap.second /= sum;
        }
        for (auto& tap : result.List) {
            tap.second = removed != 0 ? tap.second / inside : tap.second;
        }
        return result;
    };
    return FilterRows<double>(source, width, tapsOf, [&](double sum, double divisor) -> Int {
        const double value = divisor > 1e-11 ? sum / divisor : 0.0;
        return std::clamp<Int>(static_cast<Int>(std::clamp(value + 0.5, -1.0, 1e6)), 0, source.Maximum());
    });
}

float Kernel(InterpolationMode mode, float t) {
    const float a = std::fabs(t);
    switch (mode) {
    case InterpolationMode::HermiteFilter:
        return a < 1 ? (2 * a - 3) * (t * t) + 1 : 0;
    case InterpolationMode::BoxFilter:
        return t > -0.5F && t <= 0.5F ? 1.0F : 0.0F;
    case InterpolationMode::TriangleFilter:
        return a < 1 ? 1 - a : 0;
    case InterpolationMode::BellFilter:
        return a < 0.5F ? 0.75F - t * t : a < 1.5F ? 0.5F * ((a - 1.5F) * (a - 1.5F)) : 0;
    case InterpolationMode::SplineFilter:
        return a < 1   ? 0.5F * (a * a * a) - a * a + 0.6666666865348816F
               : a < 2 ? 0.1666666716337204F * ((2 - a) * (2 - a) * (2 - a))
                       : 0;
    default:
        return a < 1   ? static_cast<float>((6.999999850988388 * (a * a * a) - 11.999999821186066 * (a * a) +
                                             5.333333313465118) / 6)
               : a < 2 ? static_cast<float>((-2.3333334028720856 * (a * a * a) + 12.000000357627869 * (a * a) -
                                             20.000000596046448 * a + 10.666666984558105) / 6)
                       : 0;
    }
}

Plane ContributorRows(const Plane& source, Int width, InterpolationMode mode) {
    const float sizes[] = {static_cast<float>(source.Width), static_cast<float>(width)};
    const float f = std::min(1.0F, sizes[1] / sizes[0]);
    const float reach = 3.0F / f;
    const auto tapsOf = [&](Int x) {
        const float center = static_cast<float>(x) * sizes[0] / sizes[1];
        const auto clamped = [&source](Int index) { return std::clamp<Int>(index, 0, source.Width - 1); };
        Taps<Int> result{clamped(static_cast<Int>(std::floor(center + 0.5F))), {}, 0};
        for (Int j = static_cast<Int>(std::floor(center - reach)); j <= static_cast<Int>(std::ceil(center + reach)); ++j) {
            const float scaled = Kernel(mode, (center - static_cast<float>(j)) * f) * f * 65536.0F;
            const Int w = static_cast<Int>(std::floor(static_cast<double>(scaled) + 0.5));
            if (w != 0) {
                result.List.emplace_back(clamped(j), w);
                result.Total += w;
            }
        }
        return result;
    };
    return FilterRows<Int>(source, width, tapsOf, [&](Int sum, Int divisor) {
        return std::clamp<Int>(divisor != 0 ? sum / divisor : 0, 0, source.Maximum());
    });
}

// --- palettes

/// The colours of a palette raster, alpha a sample like the others.
Plane ResolvePalette(const BitmapData& source) {
    const ColorMap& map = *source.GetColorMapRef();
    const Int bits = PixelFormatSize(source.GetPixelFormat());
    Plane plane;
    plane.Samples = map.GetEntrySize();
    plane = plane.Sized(source.GetWidth(), source.GetHeight());
    for (Int y = 0; y < plane.Height; ++y) {
        const std::uint8_t* const row = source.GetScanlineRef(static_cast<std::uint32_t>(y));
        for (Int x = 0; x < plane.Width; ++x) {
            Int index = 0;
            for (Int bit = x * bits; bit < (x + 1) * bits; ++bit) {
                index = index * 2 + ((row[bit / 8] >> (7 - bit % 8)) & 1);
            }
            index = index < map.GetEntryCount() ? index : 0;
            std::copy_n(map.GetEntriesRef() + static_cast<std::size_t>(index) * plane.Samples, plane.Samples,
                        plane.At(x, y).begin());
        }
    }
    return plane;
}

Plane ScaleToGray(const Plane& source, Int width, Int height) {
    if (Ratio(source.Width, width) <= 1.0 && Ratio(source.Height, height) <= 1.0) {
        return Bilinear(source, width, height);
    }
    return MeansOf(source, width, height, Window(source.Width, width), Window(source.Height, height));
}

Plane Resized(const Plane& source, Int width, Int height, InterpolationMode mode) {
    switch (mode) {
    case InterpolationMode::Bilinear:
        return Bilinear(source, width, height);
    case InterpolationMode::Trilinear:
        return Trilinear(source, width, height);
    case InterpolationMode::Anisotropic4:
        return Anisotropic(source, width, height, 2);
    case InterpolationMode::Anisotropic9:
        return Anisotropic(source, width, height, 3);
    case InterpolationMode::Lanczos3Filter:
        return LanczosRows(LanczosRows(source, width).Transposed(), height).Transposed();
    default:
        return ContributorRows(ContributorRows(source, width, mode).Transposed(), height, mode).Transposed();
    }
}

} // namespace

BitmapData ReferenceResize(const BitmapData& source, std::uint32_t width, std::uint32_t height,
                           InterpolationMode mode) {
    if (mode == InterpolationMode::ScaleToGray) {
        return WritePlane(ScaleToGray(ResolvePalette(source), width, height), source.GetColorMapRef()->GetPixelFormat());
    }
    return WritePlane(Resized(ReadPlane(source), width, height, mode), source.GetPixelFormat());
}

BitmapData NoiseRaster(std::uint32_t width, std::uint32_t height, PixelFormat format, std::uint32_t seed,
                       PixelFormat paletteFormat) {
    std::mt19937 random(seed);
    BitmapData raster(width, height, format);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t i = 0; i < raster.GetRowSize(); ++i) {
            raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(random());
        }
        if (!PixelFormatHasAlpha(format) || PixelFormatIsPacked16(format)) {
            continue;
        }
        const std::uint32_t pixelSize = PixelFormatSize(format) / 8;
        const std::uint32_t alphaSize = PixelFormatIsExtended(format) ? 2 : 1;
        for (std::uint32_t x = 0; x < width; ++x) {
            const auto choice = random() % 4;
            if (choice < 2) {
                std::memset(raster.GetScanlineRef(y) + (x + 1) * pixelSize - alphaSize, choice == 0 ? 0 : 255, alphaSize);
            }
        }
    }
    if (PixelFormatIsIndexed(format)) {
        ColorMap map(1U << std::min(PixelFormatSize(format), 7U), paletteFormat);
        for (std::uint32_t i = 0; i < map.GetEntryCount(); ++i) {
            std::uint8_t entry[4];
            for (std::uint8_t& sample : entry) {
                sample = static_cast<std::uint8_t>(random());
            }
            map.SetEntryArgb(i, entry);
        }
        raster.SetColorMap(map);
    }
    return raster;
}

::testing::AssertionResult SamePixels(const BitmapData& left, const BitmapData& right) {
    if (left.GetPixelFormat() != right.GetPixelFormat() || left.GetWidth() != right.GetWidth() ||
        left.GetHeight() != right.GetHeight()) {
        return ::testing::AssertionFailure() << "format or size differ";
    }
    const std::uint64_t bits = std::uint64_t{left.GetWidth()} * PixelFormatSize(left.GetPixelFormat());
    for (std::uint32_t y = 0; y < left.GetHeight(); ++y) {
        for (std::uint64_t i = 0; i < (bits + 7) / 8; ++i) {
            const std::uint32_t mask = (i + 1) * 8 > bits ? 0xFF00U >> (bits % 8) : 0xFFU;
            const std::uint32_t a = left.GetScanlineRef(y)[i] & mask & 0xFFU;
            const std::uint32_t b = right.GetScanlineRef(y)[i] & mask & 0xFFU;
            if (a != b) {
                return ::testing::AssertionFailure() << "row " << y << " byte " << i << ": " << a << " and " << b;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace ImagingFramework::Testing
