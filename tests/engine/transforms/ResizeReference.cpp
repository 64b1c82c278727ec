#include "ResizeReference.h"

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

using Int = std::int64_t;

/// Samples of a whole raster as integers.
struct Plane {
    Int Width = 0;
    Int Height = 0;
    Int Samples = 0;
    bool Alpha = false;
    Int Maximum = 255;
    std::vector<Int> Values;

    Plane Sized(Int width, Int height) const {
        Plane plane = *this;
        plane.Width = width;
        plane.Height = height;
        plane.Values.assign(static_cast<std::size_t>(width * height * Samples), 0);
        return plane;
    }
    Int& At(Int x, Int y, Int c) { return Values[static_cast<std::size_t>((y * Width + x) * Samples + c)]; }
    Int At(Int x, Int y, Int c) const { return Values[static_cast<std::size_t>((y * Width + x) * Samples + c)]; }
    Int Colors() const { return Alpha ? Samples - 1 : Samples; }
    Plane Transposed() const {
        Plane plane = Sized(Height, Width);
        for (Int y = 0; y < Height; ++y) {
            for (Int x = 0; x < Width; ++x) {
                for (Int c = 0; c < Samples; ++c) {
                    plane.At(y, x, c) = At(x, y, c);
                }
            }
        }
        return plane;
    }
};

Plane ReadPlane(const BitmapData& raster) {
    const PixelFormat format = raster.GetPixelFormat();
    Plane plane;
    const bool wide = PixelFormatIsExtended(format);
    plane.Samples = PixelFormatSize(format) / (wide ? 16 : 8);
    plane.Alpha = PixelFormatHasAlpha(format) && !HasFlag(format, PixelFormatFlag::Premultiplied);
    plane.Maximum = wide ? 65535 : 255;
    plane = plane.Sized(raster.GetWidth(), raster.GetHeight());
    for (Int y = 0; y < plane.Height; ++y) {
        const std::uint8_t* const row = raster.GetScanlineRef(static_cast<std::uint32_t>(y));
        for (Int i = 0; i < plane.Width * plane.Samples; ++i) {
            std::uint16_t value = row[wide ? 2 * i : i];
            if (wide) {
                value = static_cast<std::uint16_t>(value | (row[2 * i + 1] << 8));
            }
            plane.Values[static_cast<std::size_t>(y * plane.Width * plane.Samples + i)] = value;
        }
    }
    return plane;
}

BitmapData WritePlane(const Plane& plane, PixelFormat format) {
    BitmapData raster(static_cast<std::uint32_t>(plane.Width), static_cast<std::uint32_t>(plane.Height), format);
    for (Int y = 0; y < plane.Height; ++y) {
        std::uint8_t* const row = raster.GetScanlineRef(static_cast<std::uint32_t>(y));
        for (Int i = 0; i < plane.Width * plane.Samples; ++i) {
            const Int value = plane.Values[static_cast<std::size_t>(y * plane.Width * plane.Samples + i)];
            if (plane.Maximum == 255) {
                row[i] = static_cast<std::uint8_t>(value);
            } else {
                row[2 * i] = static_cast<std::uint8_t>(value & 255);
                row[2 * i + 1] = static_cast<std::uint8_t>(value >> 8);
            }
        }
    }
    return raster;
}

double Ratio(Int source, Int target) {
    return static_cast<double>(source - 1) / (static_cast<double>(target - 1) + (target == 1 ? 0.5 : 0.0));
}

Int Fixed(double value) { return static_cast<Int>(std::floor(value * 65536.0 + 0.5)); }

// --- bilinear

Plane Bilinear(const Plane& source, Int width, Int height, bool weighted) {
    Plane result = source.Sized(width, height);
    const Int ratioX = Fixed(Ratio(source.Width, width));
    const Int ratioY = Fixed(Ratio(source.Height, height));
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            const Int x0 = std::min((x * ratioX) >> 16, source.Width - 1);
            const Int y0 = std::min((y * ratioY) >> 16, source.Height - 1);
            const Int x1 = std::min(x0 + 1, source.Width - 1);
            const Int y1 = std::min(y0 + 1, source.Height - 1);
            const Int fx = (x * ratioX) & 0xFFFF;
            const Int fy = (y * ratioY) & 0xFFFF;
            const Int wx = 65536 - fx;
            const Int wy = 65536 - fy;
            if (!weighted) {
                for (Int c = 0; c < source.Samples; ++c) {
                    const Int top = (source.At(x0, y0, c) * wx + source.At(x1, y0, c) * fx) >> 16;
                    const Int bottom = (source.At(x0, y1, c) * wx + source.At(x1, y1, c) * fx) >> 16;
                    result.At(x, y, c) = (top * wy + bottom * fy) >> 16;
                }
                continue;
            }
            const Int a = source.Colors();
            const Int alphaTop = source.At(x0, y0, a) * wx + source.At(x1, y0, a) * fx;
            const Int alphaBottom = source.At(x0, y1, a) * wx + source.At(x1, y1, a) * fx;
            const Int top = alphaTop >> 16;
            const Int bottom = alphaBottom >> 16;
            const Int alpha = (top * wy + bottom * fy) >> 16;
            result.At(x, y, a) = alpha;
            if (alpha == 0) {
                continue;
            }
            for (Int c = 0; c < a; ++c) {
                Int sum = 0;
                if (alphaTop != 0) {
                    sum += (source.At(x0, y0, c) * source.At(x0, y0, a) * wx +
                            source.At(x1, y0, c) * source.At(x1, y0, a) * fx) / alphaTop * top * wy;
                }
                if (alphaBottom != 0) {
                    sum += (source.At(x0, y1, c) * source.At(x0, y1, a) * wx +
                            source.At(x1, y1, c) * source.At(x1, y1, a) * fx) / alphaBottom * bottom * fy;
                }
                result.At(x, y, c) = sum / (top * wy + bottom * fy);
            }
        }
    }
    return result;
}

// --- means of point samples

/// The mean of the listed pixels, colours weighted by alpha.
void Mean(const Plane& source, const std::vector<std::pair<Int, Int>>& pixels, Plane& result, Int x, Int y) {
    const Int count = static_cast<Int>(pixels.size());
    Int alpha = 0;
    for (const auto& [px, py] : pixels) {
        alpha += source.Alpha ? source.At(px, py, source.Colors()) : 1;
    }
    for (Int c = 0; c < source.Colors(); ++c) {
        Int sum = 0;
        for (const auto& [px, py] : pixels) {
            sum += source.At(px, py, c) * (source.Alpha ? source.At(px, py, source.Colors()) : 1);
        }
        result.At(x, y, c) = alpha == 0 ? 0 : sum / alpha;
    }
    if (source.Alpha) {
        result.At(x, y, source.Colors()) = alpha / count;
    }
}

Plane Anisotropic(const Plane& source, Int width, Int height, Int n) {
    Plane result = source.Sized(width, height);
    const Int stepX = Fixed(Ratio(source.Width, width) / static_cast<double>(n));
    const Int stepY = Fixed(Ratio(source.Height, height) / static_cast<double>(n));
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            std::vector<std::pair<Int, Int>> pixels;
            for (Int v = y * n; v < y * n + n; ++v) {
                for (Int u = x * n; u < x * n + n; ++u) {
                    pixels.emplace_back(std::min((u * stepX) >> 16, source.Width - 1),
                                        std::min((v * stepY) >> 16, source.Height - 1));
                }
            }
            Mean(source, pixels, result, x, y);
        }
    }
    return result;
}

Plane Halved(const Plane& source) {
    Plane result = source.Sized((source.Width + 1) / 2, (source.Height + 1) / 2);
    for (Int y = 0; y < result.Height; ++y) {
        for (Int x = 0; x < result.Width; ++x) {
            const Int x1 = std::min(2 * x + 1, source.Width - 1);
            const Int y1 = std::min(2 * y + 1, source.Height - 1);
            Mean(source, {{2 * x, 2 * y}, {x1, 2 * y}, {2 * x, y1}, {x1, y1}}, result, x, y);
        }
    }
    return result;
}

double Share(Int target, Int small, Int large) {
    if (target <= small) {
        return 0.0;
    }
    return large == small ? 1.0 : static_cast<double>(target - small) / static_cast<double>(large - small);
}

Plane Trilinear(const Plane& source, Int width, Int height) {
    if (width >= source.Width && height >= source.Height) {
        return Bilinear(source, width, height, source.Alpha);
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
    const Plane a = Bilinear(large, width, height, source.Alpha);
    const Plane b = Bilinear(small, width, height, source.Alpha);
    Plane result = a;
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            const Int wa = weight * (source.Alpha ? a.At(x, y, a.Colors()) : 1);
            const Int wb = (65536 - weight) * (source.Alpha ? b.At(x, y, a.Colors()) : 1);
            const bool invisible = source.Alpha && (wa + wb) >> 16 == 0;
            for (Int c = 0; c < a.Colors(); ++c) {
                const Int sum = a.At(x, y, c) * wa + b.At(x, y, c) * wb;
                result.At(x, y, c) = invisible ? 0 : sum / (wa + wb);
            }
            if (source.Alpha) {
                result.At(x, y, a.Colors()) = (wa + wb) >> 16;
            }
        }
    }
    return result;
}

// --- Lanczos, one axis at a time

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

Int RoundClamped(double value, Int maximum) {
    return std::clamp<Int>(static_cast<Int>(std::clamp(value + 0.5, -1.0, 1e6)), 0, maximum);
}

Plane LanczosRows(const Plane& source, Int width) {
    Plane result = source.Sized(width, source.Height);
    const double r = Ratio(source.Width, width);
    const Int limit = source.Width / 2;
    const Int half = r >= 1.0 ? std::min<Int>(1 + static_cast<Int>(3.0 * r), limit) : std::min<Int>(4, limit);
    const Int taps = 2 * half - 1;
    const double s = 0.5 / std::max(r, 1.0);
    for (Int x = 0; x < width; ++x) {
        const double p = static_cast<double>(x) * r;
        const Int nearest = static_cast<Int>(p + 0.5);
        const Int first = nearest - taps / 2;
        std::vector<double> weights;
        double sum = 0.0;
        for (Int t = 0; t < taps; ++t) {
            weights.push_back(Lanczos((static_cast<double>(first) - p) * s + static_cast<double>(t) * s));
            sum += weights.back();
        }
        double inside = 0.0;
        bool edge = false;
        for (Int t = 0; t < taps; ++t) {
            weights[static_cast<std::size_t>(t)] /= sum;
            const bool within = first + t >= 0 && first + t < source.Width;
            inside += within ? weights[static_cast<std::size_t>(t)] : 0.0;
            edge = edge || !within;
        }
        for (Int y = 0; y < source.Height; ++y) {
            if (half == 0) {
                for (Int c = 0; c < source.Samples; ++c) {
                    result.At(x, y, c) = source.At(std::min(nearest, source.Width - 1), y, c);
                }
                continue;
            }
            std::array<double, 6> sums{};
            for (Int t = 0; t < taps; ++t) {
                if (first + t < 0 || first + t >= source.Width) {
                    continue;
                }
                double w = weights[static_cast<std::size_t>(t)];
                w = edge ? w / inside : w;
                if (source.Alpha) {
                    w = w * static_cast<double>(source.At(first + t, y, source.Colors()));
                }
                for (Int c = 0; c < source.Colors(); ++c) {
                    sums[static_cast<std::size_t>(c)] += w * static_cast<double>(source.At(first + t, y, c));
                }
                sums[5] += w;
            }
            for (Int c = 0; c < source.Colors(); ++c) {
                const double value = sums[static_cast<std::size_t>(c)];
                result.At(x, y, c) = !source.Alpha         ? RoundClamped(value, source.Maximum)
                                     : sums[5] > 1e-11 ? RoundClamped(value / sums[5], source.Maximum)
                                                         : 0;
            }
            if (source.Alpha) {
                result.At(x, y, source.Colors()) = RoundClamped(sums[5], source.Maximum);
            }
        }
    }
    return result;
}

// --- contributor filters, one axis at a time

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
    Plane result = source.Sized(width, source.Height);
    const float sizes[] = {static_cast<float>(source.Width), static_cast<float>(width)};
    const float f = std::min(1.0F, sizes[1] / sizes[0]);
    const float reach = 3.0F / f;
    for (Int x = 0; x < width; ++x) {
        const float center = static_cast<float>(x) * sizes[0] / sizes[1];
        std::vector<std::pair<Int, Int>> contributions;
        Int total = 0;
        for (Int j = static_cast<Int>(std::floor(center - reach)); j <= static_cast<Int>(std::ceil(center + reach)); ++j) {
            const float scaled = Kernel(mode, (center - static_cast<float>(j)) * f) * f * 65536.0F;
            const Int w = static_cast<Int>(std::floor(static_cast<double>(scaled) + 0.5));
            if (w != 0) {
                contributions.emplace_back(std::clamp<Int>(j, 0, source.Width - 1), w);
                total += w;
            }
        }
        for (Int y = 0; y < source.Height; ++y) {
            Int weights = 0;
            std::array<Int, 6> sums{};
            for (const auto& [j, w] : contributions) {
                const Int weight = w * (source.Alpha ? source.At(j, y, source.Colors()) : 1);
                weights += weight;
                for (Int c = 0; c < source.Colors(); ++c) {
                    sums[static_cast<std::size_t>(c)] += weight * source.At(j, y, c);
                }
            }
            for (Int c = 0; c < source.Colors(); ++c) {
                const Int value = weights != 0 ? sums[static_cast<std::size_t>(c)] / weights : 0;
                result.At(x, y, c) = std::clamp<Int>(value, 0, source.Maximum);
            }
            if (source.Alpha) {
                result.At(x, y, source.Colors()) = std::clamp<Int>(weights / total, 0, source.Maximum);
            }
        }
    }
    return result;
}

// --- palettes

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
            for (Int c = 0; c < plane.Samples; ++c) {
                plane.At(x, y, c) = map.GetEntriesRef()[index * plane.Samples + c];
            }
        }
    }
    return plane;
}

std::vector<Int> Window(Int source, Int target, Int position) {
    const double r = Ratio(source, target);
    const Int n = static_cast<Int>(std::clamp(std::ceil(r), 3.0, 9.0));
    std::vector<Int> indices;
    for (Int q = 0; q < n; ++q) {
        const double at = static_cast<double>(position) * r +
                          (static_cast<double>(q) - static_cast<double>(n - 1) / 2.0) * r / static_cast<double>(n);
        indices.push_back(std::clamp<Int>(static_cast<Int>(std::floor(at + 0.5)), 0, source - 1));
    }
    return indices;
}

Plane ScaleToGray(const Plane& source, Int width, Int height) {
    if (Ratio(source.Width, width) <= 1.0 && Ratio(source.Height, height) <= 1.0) {
        return Bilinear(source, width, height, false);
    }
    Plane result = source.Sized(width, height);
    for (Int y = 0; y < height; ++y) {
        for (Int x = 0; x < width; ++x) {
            std::vector<std::pair<Int, Int>> pixels;
            for (const Int v : Window(source.Height, height, y)) {
                for (const Int u : Window(source.Width, width, x)) {
                    pixels.emplace_back(u, v);
                }
            }
            Mean(source, pixels, result, x, y);
        }
    }
    return result;
}

Plane Resized(const Plane& source, Int width, Int height, InterpolationMode mode) {
    switch (mode) {
    case InterpolationMode::Bilinear:
        return Bilinear(source, width, height, source.Alpha);
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
