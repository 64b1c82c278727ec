#include "Common/IndexWalker.h"
#include "transforms/resize/AxisMap.h"
#include "transforms/resize/Resamplers.h"

#include <cstring>
#include <vector>

namespace ImagingFramework {

namespace {

/// The size of one load that holds a pixel of `size` bytes.
constexpr std::size_t LoadSize(std::size_t size) { return size <= 2 ? size : (size <= 4 ? 4 : (size <= 8 ? 8 : 16)); }

/// Copies pixels of `Size` bytes as units. Odd sizes are copied by one load and one store that reach into the next pixel,
/// which is then written over, as long as both stay inside their rows.
template <std::size_t Size>
void PickPixels(const std::uint8_t* source, [[maybe_unused]] std::size_t sourceSize, std::uint8_t* destination,
                const std::vector<std::uint32_t>& columns) {
    constexpr std::size_t whole = LoadSize(Size);
    // Bytes may alias anything, so what the loops keep is local.
    const std::uint32_t* const from = columns.data();
    const std::size_t count = columns.size();
    std::size_t x = 0;
    if constexpr (whole != Size) {
        std::size_t end = count * Size < whole ? 0 : (count * Size - whole) / Size + 1;
        while (end > 0 && from[end - 1] * Size + whole > sourceSize) {
            --end;
        }
        for (; x < end; ++x) {
            std::memcpy(destination + x * Size, source + from[x] * Size, whole);
        }
    }
    for (; x < count; ++x) {
        std::memcpy(destination + x * Size, source + from[x] * Size, Size);
    }
}

template <std::uint32_t Bits>
void PickIndices(const std::uint8_t* source, std::size_t, std::uint8_t* destination, const std::vector<std::uint32_t>& columns) {
    constexpr std::uint32_t perByte = 8 / Bits;
    IndexWalker<Bits> walker;
    walker.SetPosition(destination, 0);
    for (const std::uint32_t column : columns) {
        const std::uint32_t shift = (perByte - 1 - column % perByte) * Bits;
        walker.SetIndex(static_cast<std::uint8_t>(source[column / perByte] >> shift));
        walker.NextPixel();
    }
}

using RowPicker = void (*)(const std::uint8_t*, std::size_t, std::uint8_t*, const std::vector<std::uint32_t>&);

RowPicker ChoosePicker(std::uint32_t bitsPerPixel) {
    switch (bitsPerPixel) {
    case 1:
        return &PickIndices<1>;
    case 4:
        return &PickIndices<4>;
    case 8:
        return &PickPixels<1>;
    case 16:
        return &PickPixels<2>;
    case 24:
        return &PickPixels<3>;
    case 32:
        return &PickPixels<4>;
    case 40:
        return &PickPixels<5>;
    case 48:
        return &PickPixels<6>;
    case 64:
        return &PickPixels<8>;
    case 80:
        return &PickPixels<10>;
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

void ResampleNearest(const ResizeJob& job) {
    const FixedAxis axisX(job.Source.GetWidth(), job.NewWidth);
    const FixedAxis axisY(job.Source.GetHeight(), job.NewHeight);
    std::vector<std::uint32_t> columns(job.Destination.GetWidth());
    for (std::size_t x = 0; x < columns.size(); ++x) {
        columns[x] = axisX.Index(job.CropLeft + x);
    }
    const RowPicker pick = ChoosePicker(PixelFormatSize(job.Source.GetPixelFormat()));
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
                pick(job.Source.GetScanlineRef(sourceRow), job.Source.GetRowSize(), row, columns);
            }
            lastSourceRow = sourceRow;
            member.EndRow();
        }
    });
}

} // namespace ImagingFramework
