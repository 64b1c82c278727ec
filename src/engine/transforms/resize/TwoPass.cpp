#include "transforms/resize/TwoPass.h"

#include "MemoryManagement/MemPtr.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

/// Bytes that a ring may take before the columns are cut into strips, and the columns that a strip has at least.
constexpr std::uint64_t RingLimit = std::uint64_t{1} << 20;
constexpr std::uint64_t MinimumStrip = 64;
static_assert(MinimumStrip % ITwoPassKernel::BlockColumns == 0);

/// One thread's share: some rows of the output, strip by strip.
class TwoPassRun {
public:
    TwoPassRun(const ResizeJob& job, const AxisWindows& windowsY, ITwoPassKernel& kernel, RowTeam::Member& member)
        : m_job(job), m_windows(windowsY), m_kernel(kernel), m_member(member),
          m_pixelSize(PixelFormatSize(job.Destination.GetPixelFormat()) / 8), m_blockRows(kernel.BlockRows()) {}

    bool Run(std::uint32_t firstRow, std::uint32_t endRow) {
        const std::uint32_t width = m_job.Destination.GetWidth();
        std::uint32_t most = 1;
        for (std::uint32_t y = firstRow; y < endRow; ++y) {
            most = std::max(most, BlockEnd(y) - FirstBlock(y));
        }
        m_slots = most;
        const std::uint64_t fitting = RingLimit / (m_slots * m_kernel.ColumnBytes()) & ~(MinimumStrip - 1);
        const auto strip = static_cast<std::uint32_t>(std::min<std::uint64_t>(std::max(fitting, MinimumStrip), width));
        m_blockBytes = m_kernel.BlockBytes(strip);
        m_ring.AllocateSize(CheckedProduct(m_slots, m_blockBytes) + ITwoPassKernel::BlockAlignment);
        m_blocks.resize(most);
        m_sources.resize(m_blockRows);
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
    std::uint32_t FirstBlock(std::uint32_t y) const { return m_windows.First[y] / m_blockRows; }
    std::uint32_t BlockEnd(std::uint32_t y) const {
        return (m_windows.First[y] + m_windows.Count[y] - 1) / m_blockRows + 1;
    }

    std::uint8_t* Slot(std::uint32_t block) const {
        return ITwoPassKernel::Align(m_ring.Get()) + std::size_t{block % m_slots} * m_blockBytes;
    }

    bool RunStrip(std::uint32_t firstRow, std::uint32_t endRow, std::uint32_t firstColumn, std::uint32_t endColumn) {
        // Only the last strip counts its rows; the others look for a stop alone.
        m_counted = endColumn == m_job.Destination.GetWidth() ? 1 : 0;
        std::uint32_t ready = 0;
        for (std::uint32_t y = firstRow; y < endRow; ++y) {
            // Blocks that no window reads are passed over.
            ready = std::max(ready, FirstBlock(y));
            for (; ready < BlockEnd(y); ++ready) {
                if (!FilterBlock(ready, firstColumn, endColumn)) {
                    return false;
                }
            }
            if (!m_member.BeginRow()) {
                return false;
            }
            for (std::uint32_t block = FirstBlock(y); block < BlockEnd(y); ++block) {
                m_blocks[block - FirstBlock(y)] = Slot(block);
            }
            m_kernel.FilterColumns(m_blocks.data(), y,
                                   m_job.Destination.GetScanlineRef(y) + std::size_t{firstColumn} * m_pixelSize,
                                   endColumn - firstColumn);
            m_member.EndRows(m_counted);
        }
        return true;
    }

    bool FilterBlock(std::uint32_t block, std::uint32_t firstColumn, std::uint32_t endColumn) {
        if (!m_member.BeginRow()) {
            return false;
        }
        const std::uint32_t first = block * m_blockRows;
        const std::uint32_t count = std::min(m_blockRows, m_job.Source.GetHeight() - first);
        for (std::uint32_t k = 0; k < count; ++k) {
            m_sources[k] = m_job.Source.GetScanlineRef(first + k);
        }
        m_kernel.FilterRows(m_sources.data(), count, firstColumn, endColumn, Slot(block));
        m_member.EndRows(count * m_counted);
        return true;
    }

    const ResizeJob& m_job;
    const AxisWindows& m_windows;
    ITwoPassKernel& m_kernel;
    RowTeam::Member& m_member;
    std::size_t m_pixelSize;
    std::uint32_t m_blockRows;
    std::uint32_t m_slots = 1;
    std::uint64_t m_blockBytes = 0;
    std::uint32_t m_counted = 1;
    MemPtr<std::uint8_t> m_ring;
    std::vector<const std::uint8_t*> m_blocks;
    std::vector<const std::uint8_t*> m_sources;
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
