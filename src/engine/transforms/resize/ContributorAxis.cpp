#include "transforms/resize/ContributorAxis.h"

#include "Common/Numeric.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ImagingFramework {

namespace {

float Hermite(float t) {
    const float a = std::fabs(t);
    return a < 1.0F ? (2.0F * a - 3.0F) * (t * t) + 1.0F : 0.0F;
}

float Box(float t) { return t > -0.5F && t <= 0.5F ? 1.0F : 0.0F; }

float Triangle(float t) {
    const float a = std::fabs(t);
    return a < 1.0F ? 1.0F - a : 0.0F;
}

float Bell(float t) {
    const float a = std::fabs(t);
    if (a < 0.5F) {
        return 0.75F - t * t;
    }
    if (a < 1.5F) {
        const float distance = a - 1.5F;
        return 0.5F * (distance * distance);
    }
    return 0.0F;
}

float Spline(float t) {
    const float a = std::fabs(t);
    const float square = a * a;
    if (a < 1.0F) {
        return 0.5F * (square * a) - square + 0.6666666865348816F;
    }
    if (a < 2.0F) {
        const float distance = 2.0F - a;
        return 0.1666666716337204F * (distance * distance * distance);
    }
    return 0.0F;
}

/// B = C = 1/3 in single precision; the coefficients are what that gives in double precision.
float Mitchell(float t) {
    const float a = std::fabs(t);
    const float square = a * a;
    const float cube = square * a;
    if (a < 1.0F) {
        return static_cast<float>((6.999999850988388 * cube - 11.999999821186066 * square + 5.333333313465118) / 6.0);
    }
    if (a < 2.0F) {
        return static_cast<float>((-2.3333334028720856 * cube + 12.000000357627869 * square - 20.000000596046448 * a +
                                   10.666666984558105) /
                                  6.0);
    }
    return 0.0F;
}

using KernelFunction = float (*)(float);

KernelFunction ChooseKernel(InterpolationMode mode) {
    switch (mode) {
    case InterpolationMode::HermiteFilter:
        return &Hermite;
    case InterpolationMode::BoxFilter:
        return &Box;
    case InterpolationMode::TriangleFilter:
        return &Triangle;
    case InterpolationMode::BellFilter:
        return &Bell;
    case InterpolationMode::SplineFilter:
        return &Spline;
    case InterpolationMode::MitchellFilter:
        return &Mitchell;
    default:
        throw ArgumentException("InterpolationMode", "Unsupported interpolation mode has been specified.");
    }
}

/// The contributions to one position: weights of neighbouring pixels from `First` on, edge repeats added up.
struct Contributor {
    std::int64_t First = 0;
    std::vector<std::int32_t> Weights;
    std::int64_t Total = 0;
    bool Empty = true;
};

class ContributorSource {
public:
    ContributorSource(InterpolationMode mode, std::uint32_t sourceSize, std::uint32_t newSize)
        : m_kernel(ChooseKernel(mode)), m_sourceSize(static_cast<float>(sourceSize)),
          m_newSize(static_cast<float>(newSize)), m_last(std::int64_t{sourceSize} - 1),
          m_compression(std::min(1.0F, m_newSize / m_sourceSize)), m_width(3.0F / m_compression) {}

    Contributor At(std::uint64_t position) const {
        const float center = static_cast<float>(position) * m_sourceSize / m_newSize;
        const auto left = static_cast<std::int64_t>(std::floor(center - m_width));
        const auto right = static_cast<std::int64_t>(std::ceil(center + m_width));
        Contributor contributor;
        for (std::int64_t j = left; j <= right; ++j) {
            const float t = (center - static_cast<float>(j)) * m_compression;
            const float scaled = m_kernel(t) * m_compression * 65536.0F;
            const std::int32_t weight = Round(scaled);
            if (weight != 0) {
                Add(contributor, std::clamp<std::int64_t>(j, 0, m_last), weight);
            }
        }
        if (contributor.Empty) {
            const double nearest = std::floor(static_cast<double>(center) + 0.5);
            contributor.First = std::clamp(static_cast<std::int64_t>(nearest), std::int64_t{0}, m_last);
            contributor.Weights.assign(1, 0);
        }
        return contributor;
    }

private:
    static void Add(Contributor& contributor, std::int64_t index, std::int32_t weight) {
        if (contributor.Empty) {
            contributor.First = index;
            contributor.Empty = false;
        }
        const auto slot = static_cast<std::size_t>(index - contributor.First);
        if (contributor.Weights.size() <= slot) {
            contributor.Weights.resize(slot + 1);
        }
        contributor.Weights[slot] += weight;
        contributor.Total += weight;
    }

    KernelFunction m_kernel;
    float m_sourceSize;
    float m_newSize;
    std::int64_t m_last;
    float m_compression;
    float m_width;
};

} // namespace

TapAxis<std::int32_t> CreateContributorAxis(InterpolationMode mode, std::uint32_t sourceSize, std::uint32_t newSize,
                                            std::uint32_t cropStart, std::uint32_t count) {
    const ContributorSource source(mode, sourceSize, newSize);
    std::vector<Contributor> contributors(count);
    std::size_t taps = 1;
    for (std::uint32_t i = count; i-- > 0;) {
        Contributor& contributor = contributors[i] = source.At(std::uint64_t{cropStart} + i);
        // Windows must not step back; one that begins behind its successor is widened by zeros.
        if (i + 1 < count && contributors[i + 1].First < contributor.First) {
            const auto gap = static_cast<std::size_t>(contributor.First - contributors[i + 1].First);
            if (!contributor.Empty) {
                contributor.Weights.insert(contributor.Weights.begin(), gap, 0);
            }
            contributor.First = contributors[i + 1].First;
        }
        taps = std::max(taps, contributor.Weights.size());
    }
    TapAxis<std::int32_t> axis(count, taps);
    for (std::uint32_t i = 0; i < count; ++i) {
        const Contributor& contributor = contributors[i];
        axis.Windows.First[i] = static_cast<std::uint32_t>(contributor.First);
        axis.Windows.Count[i] = static_cast<std::uint32_t>(contributor.Weights.size());
        std::copy(contributor.Weights.begin(), contributor.Weights.end(), axis.WeightsOf(i));
        axis.Copies[i] = contributor.Empty ? 1 : 0;
        axis.Totals[i] = static_cast<std::int32_t>(contributor.Total);
    }
    return axis;
}

} // namespace ImagingFramework
