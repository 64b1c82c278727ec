#include "transforms/resize/AxisMap.h"
#include "transforms/resize/PixelPicker.h"
#include "transforms/resize/Resamplers.h"

#include <cstring>
#include <vector>

namespace ImagingFramework {

void ResampleNearest(const ResizeJob& job) {
    const FixedAxis axisX(job.Source.GetWidth(), job.NewWidth);
    const FixedAxis axisY(job.Source.GetHeight(), job.NewHeight);
    std::vector<std::uint32_t> columns(job.Destination.GetWidth());
    for (std::size_t x = 0; x < columns.size(); ++x) {
        columns[x] = axisX.Index(job.CropLeft + x);
    }
    const PixelPicker pick = ChoosePixelPicker(job.Source.GetPixelFormat());
    const std::uint32_t rowSize = job.Destination.GetRowSize();
    const std::uint32_t rows = job.Destination.GetHeight();
    job.Team.Prepare(rows);
    job.Team.RunAlone(rows, [&](RowTeam::Member& member, std::uint32_t first, std::uint32_t end) {
        std::int64_t lastSourceRow = -1;
        for (std::uint32_t y = first; y < end; ++y) {
            const std::uint32_t sourceRow = axisY.Index(std::uint64_t{job.CropTop} + y);
            std::uint8_t* const row = job.Destination.GetScanlineRef(y);
            if (sourceRow == lastSourceRow) {
                std::memcpy(row, job.Destination.GetScanlineRef(y - 1), rowSize);
            } else {
                pick(job.Source.GetScanlineRef(sourceRow), row, columns);
            }
            lastSourceRow = sourceRow;
            member.EndRow();
        }
    });
}

} // namespace ImagingFramework
