#pragma once

#include "Common/BitmapData.h"
#include "Common/InternalEvents.h"
#include "colorconversion/ConversionTypes.h"

#include <algorithm>
#include <cstdint>

namespace ImagingFramework {

/// What an adaptive palette is to be.
struct AdaptivePaletteParameters {
    std::uint32_t EntryCount = 256; ///< clamped to 2 to 256
    bool CreateWithAlpha = false;
    ColorQuantizationAlgorithm Algorithm = ColorQuantizationAlgorithm::Octree;
    bool UseAlphaThreshold = true; ///< pixels below the threshold share one transparent entry
    std::uint8_t AlphaThreshold = 255;
};

/// Makes a palette from the colours of a picture.
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

    /// Fills `colorMap`. One step of progress for each row.
    void GetPalette(const BitmapData& bitmapData, ColorMap& colorMap);

private:
    AdaptivePaletteParameters m_parameters;
};

} // namespace ImagingFramework
