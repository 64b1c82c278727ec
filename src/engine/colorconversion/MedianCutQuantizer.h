#pragma once

#include "colorconversion/ColorBox.h"
#include "colorconversion/ColorQuantizer.h"
#include "colorconversion/UniformRandom.h"

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Cuts the box of all colours, with or without alpha, into as many boxes as there are entries; each entry is the mean of a
/// box. While fewer than half of the boxes are there, the fullest one is cut, then the longest.
///
/// Of more than 65536 colours a uniform sample of 65537 is kept and stands for all. Which ones depends on the seed alone.
class MedianCutQuantizer final : public ColorQuantizer {
public:
    explicit MedianCutQuantizer(std::uint64_t seed = 1) : m_uintSeed(seed), m_random(seed) {}

    void Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) override;
    void AddColor(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    void AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    /// Fails with `Exception`: the median cut tells no indices.
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;

protected:
    void FillPalette() override;

private:
    void AddRecord(const ColorRecord& record);
    ColorBox* ChooseBox(std::vector<ColorBox>& boxes) const;
    std::vector<ColorBox> CutBoxes(std::span<ColorRecord> records) const;
    void SetEntry(std::uint32_t index, const ColorBox& box);

    std::uint64_t m_uintSeed;
    UniformRandom m_random;
    std::uint64_t m_uintColorCount = 0;
    std::vector<ColorRecord> m_records; ///< all colours, or the sample
};

} // namespace ImagingFramework
