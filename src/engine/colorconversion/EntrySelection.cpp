#include "colorconversion/EntrySelection.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ImagingFramework {

void EntrySelection::AddPixels(const std::uint8_t* pPixels, std::uint32_t count) {
    if (m_counts.size() > 256) {
        // Indices beyond a byte are asked for one by one.
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint8_t* const pixel = pPixels + 4 * i;
            ++m_counts[m_map.FindNearestEntryIndex(pixel[3], pixel[2], pixel[1], pixel[0])];
        }
        return;
    }
    std::array<std::uint8_t, 1024> indices;
    while (count > 0) {
        const std::uint32_t part = std::min<std::uint32_t>(count, indices.size());
        m_map.FindNearestEntries(pPixels, part, indices.data());
        for (std::uint32_t i = 0; i < part; ++i) {
            ++m_counts[indices[i]];
        }
        pPixels += std::size_t{part} * 4;
        count -= part;
    }
}

/// One round of a selection sort by exchange. It is not stable, and the order that it leaves equal counts in is the
/// order of the entries of the palette that comes out.
void EntrySelection::SortStep(std::vector<Hits>& hits, std::size_t position) {
    for (std::size_t j = position + 1; j < hits.size(); ++j) {
        if (hits[position].Count < hits[j].Count) {
            std::swap(hits[position], hits[j]);
        }
    }
}

ColorMap EntrySelection::Pick(std::span<const std::uint32_t> indices, bool withAlpha) const {
    ColorMap picked(static_cast<std::uint32_t>(indices.size()),
                    withAlpha ? PixelFormat::Format32bppArgb : m_map.GetPixelFormat());
    for (std::uint32_t i = 0; i < indices.size(); ++i) {
        std::uint8_t entry[4];
        m_map.GetEntryArgb(indices[i], entry);
        picked.SetEntryArgb(i, entry);
    }
    return picked;
}

} // namespace ImagingFramework
