#include "Common/Numeric.h"
#include "transforms/resize/BilinearSampler.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ImagingFramework {

namespace {

/// One raster of the pyramid; level 0 is the source itself.
template <class Sample> struct Level {
    const std::uint8_t* Pixels = nullptr;
    std::size_t Stride = 0;
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
    MemPtr<Sample> Memory;

    const Sample* Row(std::uint32_t y) const { return reinterpret_cast<const Sample*>(Pixels + Stride * y); }
};

template <class Layout>
void HalveRow(const typename Layout::Sample* top, const typename Layout::Sample* bottom, std::uint32_t sourceWidth,
              typename Layout::Sample* row) {
    using Sample = typename Layout::Sample;
    using Sum = std::conditional_t<sizeof(Sample) == 1, std::uint32_t, std::uint64_t>;
    for (std::size_t x = 0; x < sourceWidth; x += 2) {
        const std::size_t left = x * Layout::Samples;
        const std::size_t right = std::min<std::size_t>(x + 1, sourceWidth - 1) * Layout::Samples;
        const std::array<const Sample*, 4> block{top + left, top + right, bottom + left, bottom + right};
        std::array<Sum, Layout::Samples> sums{};
        for (const Sample* const pixel : block) {
            const Sum weight = Layout::Alpha ? Sum{pixel[Layout::Samples - 1]} : Sum{1};
            for (int c = 0; c < Layout::Colors; ++c) {
                sums[static_cast<std::size_t>(c)] += pixel[c] * weight;
            }
            if constexpr (Layout::Alpha) {
                sums[Layout::Samples - 1] += weight;
            }
        }
        if constexpr (Layout::Alpha) {
            const Sum total = sums[Layout::Samples - 1];
            const SharedDivisor<Sum> divisor(total != 0 ? total : 1); // all sums are 0 then
            for (int c = 0; c < Layout::Colors; ++c) {
                row[c] = static_cast<Sample>(divisor.Divide(sums[static_cast<std::size_t>(c)]));
            }
            row[Layout::Samples - 1] = static_cast<Sample>(total >> 2);
        } else {
            for (int c = 0; c < Layout::Samples; ++c) {
                row[c] = static_cast<Sample>(sums[static_cast<std::size_t>(c)] >> 2);
            }
        }
        row += Layout::Samples;
    }
}

/// Levels until the factor of halving reaches the stronger of the two reductions.
std::uint32_t CountLevels(const ResizeJob& job) {
    const double reduction = std::max(static_cast<double>(job.Source.GetWidth()) / job.NewWidth,
                                      static_cast<double>(job.Source.GetHeight()) / job.NewHeight);
    std::uint32_t levels = 0;
    for (double factor = 1.0; factor < reduction; factor *= 2.0) {
        ++levels;
    }
    return levels;
}

std::uint32_t Half(std::uint32_t size) { return size / 2 + size % 2; }

template <class Layout> class Pyramid {
public:
    using Sample = typename Layout::Sample;

    explicit Pyramid(const BitmapData& source) {
        m_small.Pixels = source.GetPixelsRef();
        m_small.Stride = source.GetStride();
        m_small.Width = source.GetWidth();
        m_small.Height = source.GetHeight();
    }

    /// Keeps the last two levels alone.
    void Build(RowTeam& team, std::uint32_t levels) {
        std::uint64_t steps = 0;
        std::uint32_t height = m_small.Height;
        for (std::uint32_t level = 0; level < levels; ++level) {
            steps += height = Half(height);
        }
        team.Prepare(steps);
        for (std::uint32_t level = 0; level < levels; ++level) {
            m_large = std::move(m_small);
            m_small = Halved(m_large, team);
        }
    }

    const Level<Sample>& Large() const { return m_large; }
    const Level<Sample>& Small() const { return m_small; }

private:
    static Level<Sample> Halved(const Level<Sample>& from, RowTeam& team) {
        Level<Sample> level;
        level.Width = Half(from.Width);
        level.Height = Half(from.Height);
        level.Stride = std::size_t{level.Width} * Layout::Samples * sizeof(Sample);
        level.Memory.AllocateSize(CheckedProduct(level.Stride, level.Height));
        level.Pixels = reinterpret_cast<const std::uint8_t*>(level.Memory.Get());
        team.RunAlone(level.Height, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
            for (std::uint32_t y = first; y < end; ++y) {
                const std::uint32_t bottom = std::min(2 * y + 1, from.Height - 1);
                Sample* const row = level.Memory.Get() + std::size_t{y} * level.Width * Layout::Samples;
                HalveRow<Layout>(from.Row(2 * y), from.Row(bottom), from.Width, row);
                member.EndRow();
            }
        });
        return level;
    }

    Level<Sample> m_large;
    Level<Sample> m_small;
};

/// How much of the large level one axis asks for.
double LargeShare(std::uint32_t newSize, std::uint32_t smallSize, std::uint32_t largeSize) {
    if (newSize <= smallSize) {
        return 0.0;
    }
    if (largeSize == smallSize) {
        return 1.0;
    }
    return static_cast<double>(newSize - smallSize) / static_cast<double>(largeSize - smallSize);
}

/// The 16.16 weight of the small level.
template <class Sample>
std::uint32_t SmallWeight(const ResizeJob& job, const Level<Sample>& large, const Level<Sample>& small) {
    const double share = LargeShare(job.NewWidth, small.Width, large.Width) +
                         LargeShare(job.NewHeight, small.Height, large.Height);
    return static_cast<std::uint32_t>(65536 - TruncateToInt32(std::clamp(share * 0.5 * 65536.0, 0.0, 65536.0)));
}

template <class Layout> void Resample(const ResizeJob& job) {
    using Sample = typename Layout::Sample;
    Pyramid<Layout> pyramid(job.Source);
    pyramid.Build(job.Team, CountLevels(job));
    const Level<Sample>& large = pyramid.Large();
    const Level<Sample>& small = pyramid.Small();
    const BilinearTables largeTables(large.Width, large.Height, job, Layout::Samples);
    const BilinearTables smallTables(small.Width, small.Height, job, Layout::Samples);
    const std::uint32_t weight = SmallWeight(job, large, small);
    const std::uint32_t rows = job.Destination.GetHeight();
    const std::size_t width = job.Destination.GetWidth();
    job.Team.Prepare(rows);
    job.Team.RunAlone(rows, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        BilinearSampler<Layout> largeSampler(largeTables);
        BilinearSampler<Layout> smallSampler(smallTables);
        std::vector<Sample> largeRow(width * Layout::Samples);
        std::vector<Sample> smallRow(width * Layout::Samples);
        for (std::uint32_t y = first; y < end; ++y) {
            largeSampler.SampleRow(y, [&](std::uint32_t index) { return large.Row(index); }, largeRow.data());
            smallSampler.SampleRow(y, [&](std::uint32_t index) { return small.Row(index); }, smallRow.data());
            auto* const row = reinterpret_cast<Sample*>(job.Destination.GetScanlineRef(y));
            if constexpr (IsAlphaBytes<Layout>) {
                BlendAlphaByteRows(largeRow.data(), smallRow.data(), row, width, weight);
            } else if constexpr (Layout::Alpha) {
                BlendRowsWithAlpha<Layout>(largeRow.data(), smallRow.data(), row, width, weight);
            } else if constexpr (sizeof(Sample) == 1) {
                BlendByteRows(largeRow.data(), smallRow.data(), row, width * Layout::Samples, weight);
            } else {
                BlendWordRows(largeRow.data(), smallRow.data(), row, width * Layout::Samples, weight);
            }
            member.EndRow();
        }
    });
}

} // namespace

void ResampleTrilinear(const ResizeJob& job) {
    if (job.NewWidth >= job.Source.GetWidth() && job.NewHeight >= job.Source.GetHeight()) {
        ResampleBilinear(job);
        return;
    }
    DispatchLayout(job.Source.GetPixelFormat(), [&](auto layout) { Resample<decltype(layout)>(job); });
}

} // namespace ImagingFramework
