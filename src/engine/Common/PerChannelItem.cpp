#include "Common/PerChannelItem.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

void CheckIndex(std::uint32_t index) {
    if (index >= PerChannelItem::ChannelSlots) {
        throw ArgumentOutOfRangeException("channel index");
    }
}

} // namespace

bool PerChannelItem::GetIsChannelSelected(std::uint32_t index) const {
    CheckIndex(index);
    return m_selected[index];
}

void PerChannelItem::SetIsChannelSelected(std::uint32_t index, bool selected) {
    CheckIndex(index);
    m_selected[index] = selected;
}

void PerChannelItem::SetRange(std::int32_t first, std::int32_t count, bool selected) noexcept {
    const std::int64_t end = std::min<std::int64_t>(std::int64_t{first} + count, ChannelSlots);
    for (std::int64_t channel = std::max(first, 0); channel < end; ++channel) {
        m_selected[static_cast<std::size_t>(channel)] = selected;
    }
}

void PerChannelItem::AddChannelsToSelection(std::int32_t first, std::int32_t count) noexcept {
    SetRange(first, count, true);
}

void PerChannelItem::SelectChannels(std::int32_t first, std::int32_t count) noexcept {
    if (first < 0 || count < 1) {
        return;
    }
    DeselectAllChannels();
    AddChannelsToSelection(first, count);
}

void PerChannelItem::SelectChannels(const bool* pFlags, std::uint32_t count) noexcept {
    if (pFlags != nullptr) {
        std::copy_n(pFlags, std::min(count, ChannelSlots), m_selected.begin());
    }
}

void PerChannelItem::RemoveChannelsFromSelection(std::int32_t first, std::int32_t count) noexcept {
    SetRange(first, count, false);
}

std::uint32_t PerChannelItem::CountWalked(PixelFormat format) const {
    return m_bIsAlphaProcessed ? PixelFormatChannelCount(format) : PixelFormatColorChannelCount(format);
}

std::uint32_t PerChannelItem::CountSelectedChannels(PixelFormat format) const {
    return static_cast<std::uint32_t>(std::count(m_selected.begin(), m_selected.begin() + CountWalked(format), true));
}

} // namespace ImagingFramework
