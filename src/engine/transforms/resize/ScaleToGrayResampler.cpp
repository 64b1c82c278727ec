#include "transforms/resize/BilinearSampler.h"

#include <array>
#include <cmath>
#include <vector>

namespace ImagingFramework {

namespace {

/// The colours of a palette in its own format, one for every value an index can have.
template <int Samples> class PaletteColors {
public:
    explicit PaletteColors(const BitmapData& source)
        : m_source(source), m_bits(PixelFormatSize(source.GetPixelFormat())) {
        const ColorMap& map = *source.GetColorMapRef();
        for (std::uint32_t index = 0; index < m_colors.size(); ++index) {
            const std::uint32_t entry = index < map.GetEntryCount() ? index : 0;
            std::copy_n(map.GetEntriesRef() + std::size_t{entry} * Samples, Samples, m_colors[index].begin());
        }
    }

    const std::array<std::uint8_t, Samples>& At(const std::uint8_t* row, std::uint32_t x) const {
        const std::uint32_t perByte = 8 / m_bits;
        const std::uint32_t shift = (perByte - 1 - x % perByte) * m_bits;
        return m_colors[(std::uint32_t{row[x / perByte]} >> shift) & ((1U << m_bits) - 1U)];
    }

    /// A whole source row in colour.
    void Resolve(std::uint32_t y, std::uint8_t* colors) const {
        const std::uint8_t* const row = m_source.GetScanlineRef(y);
        for (std::uint32_t x = 0; x < m_source.GetWidth(); ++x) {
            const auto& color = At(row, x);
            colors = std::copy(color.begin(), color.end(), colors);
        }
    }

private:
    const BitmapData& m_source;
    std::uint32_t m_bits;
    std::array<std::array<std::uint8_t, Samples>, 256> m_colors{};
};

/// The samples that one axis of the averaging window takes: `Count` source indices for each destination position.
struct WindowAxis {
    WindowAxis(std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t cropStart, std::uint32_t size) {
        const double ratio = AxisRatio(sourceSize, newSize);
        Count = static_cast<std::uint32_t>(std::clamp(std::ceil(ratio), 3.0, 9.0));
        Indices.resize(std::size_t{size} * Count);
        const double centre = (Count - 1) / 2.0;
        for (std::size_t i = 0; i < Indices.size(); ++i) {
            const double position = (static_cast<double>(cropStart) + static_cast<double>(i / Count)) * ratio +
                                    (static_cast<double>(i % Count) - centre) * ratio / Count;
            const double rounded = std::floor(position + 0.5);
            Indices[i] = static_cast<std::uint32_t>(std::clamp(rounded, 0.0, static_cast<double>(sourceSize - 1)));
        }
    }

    std::uint32_t Count = 0;
    std::vector<std::uint32_t> Indices;
};

template <int Samples> void Average(const ResizeJob& job) {
    const PaletteColors<Samples> palette(job.Source);
    const std::uint32_t rows = job.Destination.GetHeight();
    const std::uint32_t width = job.Destination.GetWidth();
    const WindowAxis axisX(job.Source.GetWidth(), job.NewWidth, job.CropLeft, width);
    const WindowAxis axisY(job.Source.GetHeight(), job.NewHeight, job.CropTop, rows);
    const std::uint32_t count = axisX.Count * axisY.Count;
    job.Team.RunAlone(rows, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        std::vector<std::uint32_t> sums(std::size_t{width} * Samples);
        for (std::uint32_t y = first; y < end; ++y) {
            std::fill(sums.begin(), sums.end(), 0U);
            for (std::uint32_t v = 0; v < axisY.Count; ++v) {
                const std::uint8_t* const source = job.Source.GetScanlineRef(axisY.Indices[std::size_t{y} * axisY.Count + v]);
                for (std::size_t i = 0; i < axisX.Indices.size(); ++i) {
                    const auto& color = palette.At(source, axisX.Indices[i]);
                    for (std::size_t c = 0; c < Samples; ++c) {
                        sums[i / axisX.Count * Samples + c] += color[c];
                    }
                }
            }
            std::uint8_t* const row = job.Destination.GetScanlineRef(y);
            for (std::size_t i = 0; i < sums.size(); ++i) {
                row[i] = static_cast<std::uint8_t>(sums[i] / count);
            }
            member.EndRow();
        }
    });
}

/// Blends all samples alike, alpha among them.
template <int Samples> void Enlarge(const ResizeJob& job) {
    const PaletteColors<Samples> palette(job.Source);
    const BilinearTables tables(job.Source.GetWidth(), job.Source.GetHeight(), job, Samples);
    job.Team.RunAlone(job.Destination.GetHeight(), [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        BilinearSampler<PixelLayout<std::uint8_t, Samples, false>> sampler(tables);
        std::vector<std::uint8_t> colors(std::size_t{job.Source.GetWidth()} * Samples);
        const auto sourceRow = [&](std::uint32_t index) {
            palette.Resolve(index, colors.data());
            return static_cast<const std::uint8_t*>(colors.data());
        };
        for (std::uint32_t y = first; y < end; ++y) {
            sampler.SampleRow(y, sourceRow, job.Destination.GetScanlineRef(y));
            member.EndRow();
        }
    });
}

template <int Samples> void Resample(const ResizeJob& job) {
    const bool reduces = AxisRatio(job.Source.GetWidth(), job.NewWidth) > 1.0 ||
                         AxisRatio(job.Source.GetHeight(), job.NewHeight) > 1.0;
    job.Team.Prepare(job.Destination.GetHeight());
    if (reduces) {
        Average<Samples>(job);
    } else {
        Enlarge<Samples>(job);
    }
}

} // namespace

void DoIndexedScaleToGray(const ResizeJob& job) {
    if (PixelFormatSize(job.Destination.GetPixelFormat()) == 32) {
        Resample<4>(job);
    } else {
        Resample<3>(job);
    }
}

} // namespace ImagingFramework
