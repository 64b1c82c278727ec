#pragma once

#include "Common/PixelWalker.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Which channels an operation touches, by channel index 0 to 4; all of them at first, alpha not. A plain value.
class PerChannelItem {
public:
    static constexpr std::uint32_t ChannelSlots = 5;

    PerChannelItem() { SelectAllChannels(); }

    /// Fail with `ArgumentOutOfRangeException` ("channel index") for 5 and above.
    bool GetIsChannelSelected(std::uint32_t index) const;
    void SetIsChannelSelected(std::uint32_t index, bool selected);
    bool GetIsAlphaProcessed() const noexcept { return m_bIsAlphaProcessed; }
    void SetIsAlphaProcessed(bool processed) noexcept { m_bIsAlphaProcessed = processed; }
    void DeselectAllChannels() noexcept { m_selected.fill(false); }
    void SelectAllChannels() noexcept { m_selected.fill(true); }
    /// Channels beyond the last are ignored.
    void AddChannelsToSelection(std::int32_t first, std::int32_t count) noexcept;
    /// Deselects all, then adds; a negative first or a count below 1 changes nothing.
    void SelectChannels(std::int32_t first, std::int32_t count) noexcept;
    /// Copies at most five flags.
    void SelectChannels(const bool* pFlags, std::uint32_t count) noexcept;
    void RemoveChannelsFromSelection(std::int32_t first, std::int32_t count) noexcept;

    /// Makes the walker walk the selected channels.
    template <class Sample, class Index> void RestrictChannelsInWalker(PixelWalker<Sample, Index>& walker) const {
        try {
            walker.ChooseChannels(m_selected.data(), ChannelSlots);
        } catch (const ArgumentException&) {
            throw UnexpectedException("Wrong parameters has been specified in SelectChannels(...) call.");
        }
    }

    // These look at the channels walked for the format, which leave alpha out unless it is processed.
    bool HasSelectedChannels(PixelFormat format) const { return CountSelectedChannels(format) > 0; }
    bool AreAllChannelsSelected(PixelFormat format) const { return CountSelectedChannels(format) == CountWalked(format); }
    std::uint32_t CountSelectedChannels(PixelFormat format) const;

private:
    std::uint32_t CountWalked(PixelFormat format) const;
    void SetRange(std::int32_t first, std::int32_t count, bool selected) noexcept;

    std::array<bool, ChannelSlots> m_selected{};
    bool m_bIsAlphaProcessed = false;
};

} // namespace ImagingFramework
