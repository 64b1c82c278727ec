#pragma once

#include "Common/BitmapData.h"
#include "Common/InternalEvents.h"
#include "colorconversion/ConversionTypes.h"

#include <algorithm>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

class ColorQuantizer;

/// What an adaptive palette is to be.
struct AdaptivePaletteParameters {
    std::uint32_t EntryCount = 256; ///< clamped to 2 to 256
    bool CreateWithAlpha = false;
    ColorQuantizationAlgorithm Algorithm = ColorQuantizationAlgorithm::Octree;
    bool UseAlphaThreshold = true; ///< pixels below the threshold share one transparent entry
    std::uint8_t AlphaThreshold = 255;
};

/// Makes a palette from the colours of a picture of any format that converts to `Format32bppArgb`.
class AdaptivePaletteCreator : public IInternalEventsHostImpl {
public:
    AdaptivePaletteCreator() = default;
    explicit AdaptivePaletteCreator(const AdaptivePaletteParameters& parameters) : m_parameters(parameters) {
        SetEntryCount(parameters.EntryCount);
    }

    void SetEntryCount(std::uint32_t count) { m_parameters.EntryCount = std::clamp(count, 2U, 256U); }
    void SetCreateWithAlpha(bool flag) { m_parameters.CreateWithAlpha = flag; }
    void SetQuantizationAlgorithm(ColorQuantizationAlgorithm algorithm) { m_parameters.Algorithm = algorithm; }
    void SetUseAlphaThreshold(bool flag) { m_parameters.UseAlphaThreshold = flag; }
    void SetAlphaThreshold(std::uint8_t threshold) { m_parameters.AlphaThreshold = threshold; }

    /// Makes `colorMap` the palette: at most as many entries as asked for, but for nine where fewer are asked for with
    /// alpha. With alpha and the threshold, entry 0 is transparent black and all others are opaque. One step of progress
    /// for each row.
    ///
    /// Fails with `ArgumentException` for an empty picture, a missing palette and an unknown algorithm, and with
    /// `ArgumentOutOfRangeException` for fewer than 8 entries with alpha.
    void GetPalette(const BitmapData& bitmapData, ColorMap& colorMap);

private:
    std::unique_ptr<ColorQuantizer> CreateQuantizer() const;
    /// Calls `addRow(pixels)` for each row as `Format32bppArgb`.
    template <class AddRow> void ForEachRow(const BitmapData& bitmapData, AddRow addRow);

    AdaptivePaletteParameters m_parameters;
};

} // namespace ImagingFramework
