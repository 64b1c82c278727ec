#pragma once

#include "Common/InterpolationMode.h"
#include "metadata/DataItem.h"

namespace ImagingFramework {

/// A value together with the item that it is of: the key and the carrier of every exchange with a `MetaData`. It is
/// read and assigned like the value it carries.
class ItemTag : public DataItem {
public:
    /// Frame index of the file as a whole.
    static constexpr std::int32_t WholeFile = -1;

    explicit ItemTag(MetaDataId id, std::int32_t frameIndex = 0) noexcept : m_id(id), m_intFrameIndex(frameIndex) {}

    using DataItem::operator=;

    MetaDataId GetMetaDataId() const noexcept { return m_id; }
    void SetMetaDataId(MetaDataId id) noexcept { m_id = id; }
    std::int32_t GetFrameIndex() const noexcept { return m_intFrameIndex; }
    void SetFrameIndex(std::int32_t index) noexcept { m_intFrameIndex = index; }
    /// Largest sides of a thumbnail in pixels; 0 on one side leaves that side free.
    std::uint32_t GetThumbnailWidth() const noexcept { return m_uintThumbnailWidth; }
    void SetThumbnailWidth(std::uint32_t width) noexcept { m_uintThumbnailWidth = width; }
    std::uint32_t GetThumbnailHeight() const noexcept { return m_uintThumbnailHeight; }
    void SetThumbnailHeight(std::uint32_t height) noexcept { m_uintThumbnailHeight = height; }
    InterpolationMode GetThumbnailInterpolation() const noexcept { return m_thumbnailInterpolation; }
    void SetThumbnailInterpolation(InterpolationMode mode) noexcept { m_thumbnailInterpolation = mode; }
    bool IsLastGifFrame() const noexcept { return m_bLastGifFrame; }
    void SetIsLastGifFrame(bool isLast) noexcept { m_bLastGifFrame = isLast; }
    std::uint32_t GetTiffExtraChannelIndex() const noexcept { return m_uintTiffExtraChannelIndex; }
    void SetTiffExtraChannelIndex(std::uint32_t index) noexcept { m_uintTiffExtraChannelIndex = index; }
    /// Resolutions are given as pixels per this unit.
    LinearUnit GetResolutionUnit() const noexcept { return m_resolutionUnit; }
    void SetResolutionUnit(LinearUnit unit) noexcept { m_resolutionUnit = unit; }

private:
    MetaDataId m_id;
    std::int32_t m_intFrameIndex;
    std::uint32_t m_uintThumbnailWidth = 100;
    std::uint32_t m_uintThumbnailHeight = 100;
    InterpolationMode m_thumbnailInterpolation = InterpolationMode::Anisotropic4;
    bool m_bLastGifFrame = false;
    std::uint32_t m_uintTiffExtraChannelIndex = 0;
    LinearUnit m_resolutionUnit = LinearUnit::Inch;
};

} // namespace ImagingFramework
