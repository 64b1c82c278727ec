#pragma once

#include "Common/ColorMap.h"
#include "colorconversion/ColorSpaceManager.h"
#include "transforms/Transform.h"

#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Transforms {

/// The fields of a `PixelFormatConverter`.
struct PixelFormatConverter::Settings {
    PixelFormat m_enDestination = PixelFormat::Format24bppRgb;
    ColorManagementEngine m_enEngine = ColorManagementEngine::None;
    ColorTransformationIntent m_enIntent = ColorTransformationIntent::Perceptual;
    std::shared_ptr<ColorProfile> m_pRgbProfile;
    std::shared_ptr<ColorProfile> m_pGrayScaleProfile;
    std::shared_ptr<ColorProfile> m_pCmykProfile;
    std::shared_ptr<ColorProfile> m_pTargetProfile;
    ColorPaletteType m_enPaletteType = ColorPaletteType::Adaptive;
    ImagingFramework::ColorMap m_customPalette;
    std::int32_t m_intPaletteEntryCount = 0;
    bool m_bAdaptivePaletteWithAlpha = false;
    std::uint8_t m_paletteAlphaThreshold = 255;
    bool m_bPaletteAlphaThresholdUsed = true;
    ColorQuantizationAlgorithm m_enAlgorithm = ColorQuantizationAlgorithm::MedianCut;
    DitheringType m_enDithering = DitheringType::FloydSteinberg;
    float m_fDitheringIntensity = 1.0F;
    float m_fOpacity = 1.0F;
    Color m_backgroundColor = Color::FromRgb(255, 255, 255);
    bool m_bBackgroundEnabled = false;
    std::int32_t m_intBitsUsed = 16;
    std::int32_t m_intOffset = 0;
    std::int32_t m_intScale = 16;
    /// Has the profiles from the moment that they are set, and gets all else before each run.
    ImagingFramework::ColorSpaceManager m_manager;
};

} // namespace Corvane::Rasterloom::Transforms
