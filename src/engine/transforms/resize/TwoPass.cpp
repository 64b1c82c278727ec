#include "transforms/resize/TwoPass.h"

#include "Common/Numeric.h"
#include "MemoryManagement/MemPtr.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

/// Bytes that a ring may take before the columns are cut into strips.
constexpr std::uint64_t RingLimit = std::uint64_t{8} << 20;
constexpr std::uint64_t MinimumStrip = 64;

/// One thread's share: some rows of the output, strip by strip.
class TwoPassRun {
public:
    TwoPassRun(const ResizeJob& job, const AxisWindows& windowsY, ITwoPassKernel& kernel, RowTeam::Member& member)
        : m_job(job), m_windows(windowsY), m_kernel(kernel), m_member(member),
          m_pixelSize(PixelFormatSize(job.Destination.GetPixelFormat()) / 8), m_blockRows(kernel.BlockRows()) {}

    bool Run(std::uint32_t firstRow, std::uint32_t endRow) {
        const std::uint32_t width = m_job.Destination.GetWidth();
        std::uint32_t tallest = 1;
        for (std::uint32_t y = firstRow; y < endRow; ++y) {
            tallest = std::max(tallest, m_windows.Count[y]);
        }
        m_slots = tallest + m_blockRows - 1;
        const std::uint64_t fitting = RingLimit / (std::uint64_t{m_slots} * m_pixelSize);
        const auto strip = static_cast<std::uint32_t>(std::min<std::uint64_t>(std::max(fitting, MinimumStrip), width));
        m_ring.AllocateSize(CheckedProduct(m_slots, std::uint64_t{strip} * m_pixelSize));
        m_rows.resize(tallest);
        m_sources.resize(m_blockRows);
        m_destinations.resize(m_blockRows);
        for (std::uint32_t first = 0; first < width;) {
            const std::uint32_t end = width - first > strip ? first + strip : width;
            if (!RunStrip(firstRow, endRow, first, end)) {
                return false;
            }
            first = end;
        }
        return true;
    }

private:
    std::uint8_t* Slot(std::uint64_t row) const { return m_ring.Get() + row % m_slots * m_stripBytes; }

    bool RunStrip(std::uint32_t firstRow, std::uint32_t endRow, std::uint32_t firstColumn, std::uint32_t endColumn) {
        m_stripBytes = std::size_t{endColumn - firstColumn} * m_pixelSize;
        // Only the last strip counts its rows; the others look for a stop alone.
        m_counted = endColumn == m_job.Destination.GetWidth() ? 1 : 0;
        std::uint64_t ready = m_windows.First[firstRow];
        for (std::uint32_t y = firstRow; y < endRow; ++y) {
            const std::uint64_t end = std::uint64_t{m_windows.First[y]} + m_windows.Count[y];
            // Rows that no window reads are passed over.
            ready = std::max<std::uint64_t>(ready, m_windows.First[y]);
            const std::uint64_t lastNeeded = std::uint64_t{m_windows.First[endRow - 1]} + m_windows.Count[endRow - 1];
            while (ready < end) {
                const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(m_blockRows, std::max(lastNeeded, end) - ready));
                if (!FilterBlock(ready, count, firstColumn, endColumn)) {
                    return false;
                }
                ready += count;
            }
            if (!m_member.BeginRow()) {
                return false;
            }
            for (std::uint32_t k = 0; k < m_windows.Count[y]; ++k) {
                m_rows[k] = Slot(std::uint64_t{m_windows.First[y]} + k);
            }
            m_kernel.FilterColumns(m_rows.data(), y,
                                   m_job.Destination.GetScanlineRef(y) + std::size_t{firstColumn} * m_pixelSize,
                                   endColumn - firstColumn);
            m_member.EndRows(m_counted);
        }
        return true;
    }

    bool FilterBlock(std::uint64_t first, std::uint32_t count, std::uint32_t firstColumn, std::uint32_t endColumn) {
        if (!m_member.BeginRow()) {
            return false;
        }
        for (std::uint32_t k = 0; k < count; ++k) {
            m_sources[k] = m_job.Source.GetScanlineRef(static_cast<std::uint32_t>(first + k));
            m_destinations[k] = Slot(first + k);
        }
        m_kernel.FilterRows(m_sources.data(), m_destinations.data(), count, firstColumn, endColumn);
        m_member.EndRows(count * m_counted);
        return true;
    }

    const ResizeJob& m_job;
    const AxisWindows& m_windows;
    ITwoPassKernel& m_kernel;
    RowTeam::Member& m_member;
    std::size_t m_pixelSize;
    std::uint32_t m_blockRows;
    std::uint64_t m_slots = 1;
    std::size_t m_stripBytes = 0;
    std::uint32_t m_counted = 1;
    MemPtr<std::uint8_t> m_ring;
    std::vector<const std::uint8_t*> m_rows;
    std::vector<const std::uint8_t*> m_sources;
    std::vector<std::uint8_t*> m_destinations;
};

} // namespace

void RunTwoPass(const ResizeJob& job, const AxisWindows& windowsY,
                const std::function<std::unique_ptr<ITwoPassKernel>()>& createKernel, bool mayRunParallel) {
    const std::uint32_t rows = job.Destination.GetHeight();
    job.Team.Prepare(std::uint64_t{job.Source.GetHeight()} + rows);
    const RowTeam::Body body = [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        const std::unique_ptr<ITwoPassKernel> kernel = createKernel();
        TwoPassRun(job, windowsY, *kernel, member).Run(first, end);
    };
    if (mayRunParallel) {
        // Neighbouring chunks filter the rows of their common windows twice, so chunks are not small.
        constexpr std::uint32_t minimumChunk = 32;
        job.Team.Run(rows, minimumChunk, body);
    } else {
        job.Team.RunAlone(rows, body);
    }
    job.Team.Finish();
}

} // namespace ImagingFramework
