#pragma once

#include "MemoryManagement/MemPtr.h"
#include "transforms/resize/BilinearVector.h"
#include "transforms/resize/Resamplers.h"

#include <utility>

namespace ImagingFramework {

/// What all rows of a bilinear loop share.
struct BilinearTables {
    BilinearTables(std::uint32_t sourceWidth, std::uint32_t sourceHeight, const ResizeJob& job, std::uint32_t samples)
        : RowSamples(std::size_t{sourceWidth} * samples), AxisY(sourceHeight, job.NewHeight), CropTop(job.CropTop), Width(job.Destination.GetWidth()),
          Columns(BilinearInitialize(FixedAxis(sourceWidth, job.NewWidth), job.CropLeft, Width, samples)) {
        if (PixelFormatSize(job.Source.GetPixelFormat()) == 8) {
            Columns.Groups = CreateByteGroups(Columns, RowSamples);
        }
    }

    std::size_t RowSamples; ///< of a source row
    FixedAxis AxisY;
    std::uint32_t CropTop;
    std::size_t Width;
    BilinearColumns Columns;
};

/// Three 8-bit colours with alpha.
template <class Layout>
constexpr bool IsAlphaBytes = Layout::Alpha && Layout::Samples == 4 && sizeof(typename Layout::Sample) == 1;

/// Makes bilinear rows, from the top or in any order. Every sample is blended along its row first, so the blended source
/// rows are kept until both of their neighbours are done with them.
template <class Layout> class BilinearSampler {
public:
    using Sample = typename Layout::Sample;

    explicit BilinearSampler(const BilinearTables& tables) : m_tables(tables) {
        for (CachedRow& row : m_rows) {
            row.Samples.AllocateCount(tables.Width * Layout::Samples);
        }
    }

    /// Destination row `y` of the output; `sourceRow(index)` gives a source row that is valid until the next call.
    template <class SourceRow> void SampleRow(std::uint32_t y, const SourceRow& sourceRow, Sample* row) {
        const std::uint64_t position = std::uint64_t{m_tables.CropTop} + y;
        const std::uint32_t first = m_tables.AxisY.Index(position);
        const std::uint32_t second = m_tables.AxisY.Next(first);
        const std::uint32_t weight = m_tables.AxisY.Fraction(position);
        const Sample* const top = BlendedRow(first, second, sourceRow);
        // A row without weight need not be there at all.
        const Sample* const bottom = weight == 0 ? top : BlendedRow(second, first, sourceRow);
        if constexpr (IsAlphaBytes<Layout>) {
            BlendAlphaByteRows(top, bottom, row, m_tables.Width, weight);
        } else if constexpr (Layout::Alpha) {
            BlendRowsWithAlpha<Layout>(top, bottom, row, m_tables.Width, weight);
        } else if constexpr (sizeof(Sample) == 1) {
            BlendByteRows(top, bottom, row, m_tables.Width * Layout::Samples, weight);
        } else {
            BlendWordRows(top, bottom, row, m_tables.Width * Layout::Samples, weight);
        }
    }

private:
    struct CachedRow {
        std::int64_t Index = -1;
        MemPtr<Sample> Samples;
    };

    template <class SourceRow>
    const Sample* BlendedRow(std::uint32_t index, std::uint32_t other, const SourceRow& sourceRow) {
        for (const CachedRow& row : m_rows) {
            if (row.Index == index) {
                return row.Samples.Get();
            }
        }
        CachedRow& row = m_rows[0].Index == other ? m_rows[1] : m_rows[0];
        row.Index = index;
        if constexpr (IsAlphaBytes<Layout>) {
            BlendAlphaByteColumns(sourceRow(index), m_tables.RowSamples, row.Samples.Get(), m_tables.Columns);
        } else if constexpr (Layout::Alpha) {
            BlendColumnsWithAlpha<Layout>(sourceRow(index), row.Samples.Get(), m_tables.Columns);
        } else if constexpr (sizeof(Sample) == 1) {
            BlendByteColumns(sourceRow(index), m_tables.RowSamples, row.Samples.Get(), m_tables.Columns, Layout::Samples);
        } else {
            BlendWordColumns(sourceRow(index), m_tables.RowSamples, row.Samples.Get(), m_tables.Columns, Layout::Samples);
        }
        return row.Samples.Get();
    }

    const BilinearTables& m_tables;
    CachedRow m_rows[2];
};

} // namespace ImagingFramework
