#include "transforms/CropTransform.h"

#include "transforms/BitRun.h"
#include "transforms/FormatSets.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

/// Where a crop meets the source along one axis: so many pixels of background, then so many of the source.
struct AxisOverlap {
    AxisOverlap(std::int64_t cropStart, std::int64_t cropSize, std::int64_t sourceSize)
        : Before(static_cast<std::uint32_t>(std::clamp<std::int64_t>(-cropStart, 0, cropSize))),
          First(static_cast<std::uint32_t>(std::clamp<std::int64_t>(cropStart, 0, sourceSize))),
          Count(static_cast<std::uint32_t>(
              std::max<std::int64_t>(std::min(cropStart + cropSize, sourceSize) - First, 0))) {}

    bool Contains(std::uint32_t position) const { return position >= Before && position - Before < Count; }

    std::uint32_t Before;
    std::uint32_t First;
    std::uint32_t Count;
};

} // namespace

void CropTransform::SetCropWidth(std::uint32_t value) {
    if (value == 0) {
        throw ArgumentOutOfRangeException("width");
    }
    m_uintCropWidth = value;
}

void CropTransform::SetCropHeight(std::uint32_t value) {
    if (value == 0) {
        throw ArgumentOutOfRangeException("height");
    }
    m_uintCropHeight = value;
}

void CropTransform::SetCropRectangle(const RegionRect& rectangle) {
    if (rectangle.Left > rectangle.Right || rectangle.Top > rectangle.Bottom) {
        throw ArgumentException("rectangle");
    }
    m_intCropX = rectangle.Left;
    m_intCropY = rectangle.Top;
    // The whole range of corners is 2^32 wide, which is no size.
    SetCropWidth(static_cast<std::uint32_t>(rectangle.Right) - static_cast<std::uint32_t>(rectangle.Left) + 1U);
    SetCropHeight(static_cast<std::uint32_t>(rectangle.Bottom) - static_cast<std::uint32_t>(rectangle.Top) + 1U);
}

bool CropTransform::IsFormatAccepted(PixelFormat format) const { return IsAnyFormat(format); }

void CropTransform::AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                    std::unique_ptr<BitmapData>& destinationSlot) {
    RequireWholeImage(pSource, pRegion, "source rectangle");
    Transform::AttachToBitmaps(pSource, pRegion, destinationSlot);
}

std::uint8_t CropTransform::FindBackgroundIndex() const {
    // A search writes to the map that it searches, and the source is only read: the destination has a copy.
    ColorMap* const map = m_pDestination->GetColorMapRef();
    if (map == nullptr || map->IsEmpty()) {
        return 0;
    }
    const auto byte = [this](std::size_t channel) { return static_cast<std::uint8_t>(m_backgroundColor[channel] >> 8); };
    return static_cast<std::uint8_t>(map->FindNearestEntryIndex(byte(3), byte(2), byte(1), byte(0)));
}

std::vector<std::uint8_t> CropTransform::MakeBackgroundRow() const {
    std::vector<std::uint8_t> row(m_pDestination->GetRowSize());
    if (PixelFormatIsIndexed(m_enSourceFormat)) {
        const std::uint8_t index = FindBackgroundIndex();
        switch (PixelFormatSize(m_enSourceFormat)) {
        case 1:
            std::ranges::fill(row, static_cast<std::uint8_t>(index > 0 ? 0xFF : 0));
            break;
        case 4:
            std::ranges::fill(row, static_cast<std::uint8_t>((index & 0x0F) * 0x11));
            break;
        default:
            std::ranges::fill(row, index);
            break;
        }
        return row;
    }
    const PixelBytes pixel = FitColorToFormat(m_backgroundColor, m_enSourceFormat);
    const std::size_t size = PixelFormatSize(m_enSourceFormat) / 8;
    for (std::size_t i = 0; i < row.size(); i += size) {
        std::memcpy(row.data() + i, pixel.data(), size);
    }
    return row;
}

void CropTransform::ApplyTransformInternal() {
    CheckBitmaps();
    if (m_uintCropWidth == 0 || m_uintCropHeight == 0) {
        throw ArgumentOutOfRangeException(m_uintCropWidth == 0 ? "width" : "height");
    }
    InitializeDestination(true, m_uintCropWidth, m_uintCropHeight, m_enSourceFormat);
    PrepareProgress(m_uintCropHeight);
    const AxisOverlap columns(m_intCropX, m_uintCropWidth, m_pSource->GetWidth());
    const AxisOverlap rows(m_intCropY, m_uintCropHeight, m_pSource->GetHeight());
    const std::uint64_t bits = PixelFormatSize(m_enSourceFormat);
    const std::uint64_t before = columns.Before * bits;
    const std::uint64_t inside = columns.Count * bits;
    const std::uint64_t after = m_uintCropWidth * bits - before - inside;
    const bool needsBackground = inside != m_uintCropWidth * bits || rows.Count != m_uintCropHeight;
    const std::vector<std::uint8_t> background = needsBackground ? MakeBackgroundRow() : std::vector<std::uint8_t>();
    for (std::uint32_t y = 0; y < m_uintCropHeight; ++y) {
        std::uint8_t* const row = m_pDestination->GetScanlineRef(y);
        if (rows.Contains(y)) {
            const std::uint8_t* const source = m_pSource->GetScanlineRef(rows.First + (y - rows.Before));
            CopyBits(background.data(), 0, row, 0, before);
            CopyBits(source, columns.First * bits, row, before, inside);
            // Pixels of whole bytes repeat at any of them, and so do the indices of a byte.
            CopyBits(background.data(), 0, row, before + inside, after);
        } else {
            CopyBits(background.data(), 0, row, 0, m_uintCropWidth * bits);
        }
        UpdateEvents(1);
    }
}

} // namespace ImagingFramework
