#include "colorconversion/MedianCutQuantizer.h"

#include <algorithm>
#include <new>
#include <utility>

namespace ImagingFramework {

namespace {

/// More colours than this are sampled; the sample has one more.
constexpr std::size_t FullCount = 65536;

} // namespace

void MedianCutQuantizer::Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) {
    ColorQuantizer::Open(bits, withAlpha, maxColors);
    m_random = UniformRandom(m_uintSeed);
    m_uintColorCount = 0;
    m_records.clear();
}

void MedianCutQuantizer::AddColor(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    AddRecord({m_bWithAlpha ? alpha : std::uint8_t{255}, red, green, blue});
}

void MedianCutQuantizer::AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    AddRecord({255, red, green, blue});
}

void MedianCutQuantizer::AddRecord(const ColorRecord& record) {
    ++m_uintColorCount;
    if (m_uintColorCount > FullCount + 1) {
        // The shuffle of all colours goes on, of which the sample is the head: what it moves behind the head is never
        // moved back, and so need not be kept.
        const std::uint64_t position = m_random.Below(m_uintColorCount);
        if (position <= FullCount) {
            m_records[position] = record;
        }
        return;
    }
    try {
        m_records.push_back(record);
    } catch (const std::bad_alloc&) {
        throw MemoryException();
    }
    if (m_uintColorCount == FullCount + 1) {
        for (std::size_t i = 1; i <= FullCount; ++i) {
            std::swap(m_records[i], m_records[m_random.Below(i + 1)]);
        }
    }
}

/// The box that is cut next: the fullest one that can be split while fewer than half of the boxes are there, else the one of
/// the largest score. Of equals the first.
ColorBox* MedianCutQuantizer::ChooseBox(std::vector<ColorBox>& boxes) const {
    if (boxes.size() * 2 < m_uintMaximumEntryCount) {
        ColorBox* fullest = nullptr;
        for (ColorBox& box : boxes) {
            if (box.CanSplit() && (fullest == nullptr || box.GetPopulation() > fullest->GetPopulation())) {
                fullest = &box;
            }
        }
        if (fullest != nullptr) {
            return fullest;
        }
    }
    return &*std::ranges::max_element(boxes, {}, &ColorBox::GetScore);
}

std::vector<ColorBox> MedianCutQuantizer::CutBoxes(std::span<ColorRecord> records) const {
    std::vector<ColorBox> boxes;
    boxes.reserve(m_uintMaximumEntryCount);
    // The last record does not count for the extent of the first box.
    boxes.emplace_back(records, records.first(records.size() - 1));
    while (boxes.size() < m_uintMaximumEntryCount) {
        ColorBox* const box = ChooseBox(boxes);
        if (!box->CanSplit()) {
            break;
        }
        boxes.push_back(box->Split());
    }
    return boxes;
}

void MedianCutQuantizer::FillPalette() {
    m_uintFilledEntryCount = 0;
    if (m_records.empty()) {
        m_palette.Create(0, GetPaletteFormat());
        return;
    }
    std::vector<ColorRecord> records;
    try {
        records = m_records;
    } catch (const std::bad_alloc&) {
        throw MemoryException();
    }
    const std::vector<ColorBox> boxes = CutBoxes(records);
    m_palette.Create(static_cast<std::uint32_t>(boxes.size()), GetPaletteFormat());
    for (const ColorBox& box : boxes) {
        SetEntry(m_uintFilledEntryCount++, box);
    }
}

void MedianCutQuantizer::SetEntry(std::uint32_t index, const ColorBox& box) {
    std::array<std::uint64_t, 4> sums{};
    for (const ColorRecord& record : box.GetRecords()) {
        for (std::size_t channel = 0; channel < sums.size(); ++channel) {
            sums[channel] += record[channel];
        }
    }
    const std::uint64_t count = box.GetPopulation();
    const std::uint8_t entry[4] = {Mean(sums[3], count), Mean(sums[2], count), Mean(sums[1], count),
                                   Mean(sums[0], count)};
    m_palette.SetEntryArgb(index, entry);
}

std::int32_t MedianCutQuantizer::GetNearestColorIndex(std::uint8_t, std::uint8_t, std::uint8_t) {
    throw Exception("Method not implemented");
}

} // namespace ImagingFramework
