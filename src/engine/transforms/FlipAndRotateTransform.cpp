#include "transforms/FlipAndRotateTransform.h"

#include "transforms/BitRun.h"
#include "transforms/FormatSets.h"
#include "transforms/geometry/PixelReversal.h"
#include "transforms/geometry/Transposition.h"

namespace ImagingFramework {

void FlipAndRotateTransform::SetMode(RotateFlipType mode) {
    if (mode > RotateFlipType::Rotate270FlipX) {
        throw ArgumentException("mode");
    }
    m_enMode = mode;
}

bool FlipAndRotateTransform::IsFormatAccepted(PixelFormat format) const { return IsAnyFormat(format); }

void FlipAndRotateTransform::AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                             std::unique_ptr<BitmapData>& destinationSlot) {
    RequireWholeImage(pSource, pRegion, "source rectangle");
    Transform::AttachToBitmaps(pSource, pRegion, destinationSlot);
}

void FlipAndRotateTransform::ApplyTransformInternal() {
    CheckBitmaps();
    // Each mode takes the columns and the rows of the source forwards or backwards; the odd ones make columns of its rows.
    switch (m_enMode) {
    case RotateFlipType::RotateNoneFlipNone:
        return CopyRows(false, false);
    case RotateFlipType::Rotate180FlipNone:
        return CopyRows(true, true);
    case RotateFlipType::RotateNoneFlipX:
        return CopyRows(true, false);
    case RotateFlipType::Rotate180FlipX:
        return CopyRows(false, true);
    case RotateFlipType::Rotate90FlipNone:
        return Transpose(false, true);
    case RotateFlipType::Rotate270FlipNone:
        return Transpose(true, false);
    case RotateFlipType::Rotate90FlipX:
        return Transpose(false, false);
    case RotateFlipType::Rotate270FlipX:
        return Transpose(true, true);
    }
    throw ArgumentException("mode");
}

void FlipAndRotateTransform::CopyRows(bool reverseColumns, bool reverseRows) {
    const std::uint32_t width = m_pSource->GetWidth();
    const std::uint32_t height = m_pSource->GetHeight();
    InitializeDestination(true, width, height, m_enSourceFormat);
    PrepareProgress(height);
    PixelReversal reversal(m_enSourceFormat, width);
    const std::uint64_t rowBits = std::uint64_t{width} * PixelFormatSize(m_enSourceFormat);
    for (std::uint32_t y = 0; y < height; ++y) {
        const std::uint8_t* const source = m_pSource->GetScanlineRef(reverseRows ? height - 1 - y : y);
        if (reverseColumns) {
            reversal.Reverse(source, m_pDestination->GetScanlineRef(y));
        } else {
            CopyBits(source, 0, m_pDestination->GetScanlineRef(y), 0, rowBits);
        }
        UpdateEvents(1);
    }
}

void FlipAndRotateTransform::Transpose(bool reverseColumns, bool reverseRows) {
    const std::uint32_t columns = m_pSource->GetWidth();
    InitializeDestination(true, m_pSource->GetHeight(), columns, m_enSourceFormat);
    PrepareProgress(columns);
    const Transposition transposition(*m_pSource, *m_pDestination, reverseColumns, reverseRows);
    for (std::uint32_t y = 0; y < columns;) {
        const std::uint32_t end = transposition.NextBand(y);
        transposition.FillRows(y, end);
        for (; y < end; ++y) {
            UpdateEvents(1);
        }
    }
}

} // namespace ImagingFramework
