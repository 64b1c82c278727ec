#pragma once

#include "Common/ColorMap.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Counts which entries of a palette a picture uses and picks the most used.
class EntrySelection {
public:
    /// `map` is borrowed and searched.
    explicit EntrySelection(ColorMap& map) : m_map(map), m_counts(map.GetEntryCount()) {}

    /// Counts the nearest entries of pixels of `Format32bppArgb`.
    void AddPixels(const std::uint8_t* pPixels, std::uint32_t count);
    /// The steps of `Sort`, and one for picking.
    std::uint32_t GetSortStepCount() const noexcept { return StepCount(m_counts.size()); }
    /// The indices, the most used first. `onStep` is called once for each step.
    template <class OnStep>
    std::vector<std::uint32_t> Sort(OnStep onStep) const;
    /// A palette of the entries at `indices`, in that order.
    ColorMap Pick(std::span<const std::uint32_t> indices, bool withAlpha) const;

private:
    struct Hits {
        std::uint64_t Count;
        std::uint32_t Index;
    };

    /// At least 256, so that progress does not depend on the size of a small map.
    static std::uint32_t StepCount(std::size_t entryCount) noexcept {
        return static_cast<std::uint32_t>(std::max<std::size_t>(entryCount, 256));
    }
    static void SortStep(std::vector<Hits>& hits, std::size_t position);

    ColorMap& m_map;
    std::vector<std::uint64_t> m_counts;
};

template <class OnStep>
std::vector<std::uint32_t> EntrySelection::Sort(OnStep onStep) const {
    std::vector<Hits> hits(m_counts.size());
    for (std::size_t i = 0; i < hits.size(); ++i) {
        hits[i] = {m_counts[i], static_cast<std::uint32_t>(i)};
    }
    const std::size_t steps = GetSortStepCount() - 1;
    for (std::size_t i = 0; i < steps; ++i) {
        SortStep(hits, i);
        onStep();
    }
    std::vector<std::uint32_t> indices;
    for (const Hits& entry : hits) {
        indices.push_back(entry.Index);
    }
    return indices;
}

} // namespace ImagingFramework
