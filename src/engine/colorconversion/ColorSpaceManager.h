#pragma once

#include "Common/BitmapData.h"
#include "Common/IPixelFormatSupport.h"
#include "Common/InternalEvents.h"
#include "colorconversion/AlphaBlend.h"
#include "colorconversion/ColorTransformChain.h"
#include "colorconversion/ConversionTypes.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ImagingFramework {

/// Drives all conversion between pixel formats: of a whole raster, of a stream of scanlines, of a single colour. It
/// picks the route, prepares the palette of an indexed destination, composes over a background where that is asked for,
/// and lets a colour management provider do the colour space step where there are profiles on both sides.
///
/// Profile names are files in UTF-8. A manager serves many conversions in sequence, and one thread at a time.
class ColorSpaceManager : public IInternalEventsHostImpl, public IPixelFormatSupportImpl {
public:
    /// A colour as 16-bit channels in memory order, alpha last.
    using Channels = std::array<std::uint16_t, 5>;

    using ProfileHandle = std::shared_ptr<const ProfileFile>;

    ColorSpaceManager() = default;

    /// Converts `source`. With a null `destination` a new raster is made and stored on success only; a raster that is
    /// given is made anew, and is not to be used after a failure. `source` may be the raster that `destination` holds.
    /// Fails with `ArgumentException` ("objSrcBitmapData") for an empty source, `PaletteException` without a palette
    /// that is needed, `UnsupportedPixelFormatException` where no route leads to `destinationFormat`, and as the events
    /// stop it.
    void TransformBitmapData(const BitmapData& source, PixelFormat destinationFormat,
                             std::unique_ptr<BitmapData>& destination);

    /// Prepares `TransformScanline`. An indexed destination needs a custom colour map; adaptive palettes need a whole
    /// raster. Fails with `ArgumentException` where a palette is missing and for no pixels.
    void InitializePerScanlineHandling(std::uint32_t pixelCount, PixelFormat sourceFormat,
                                       const ColorMap* sourceColorMap, const std::string* profileName,
                                       PixelFormat destinationFormat);
    /// Fails with `NotInitializedException` before the initialisation.
    void TransformScanline(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline);
    /// Both steps in one.
    void TransformScanline(std::uint32_t pixelCount, const std::uint8_t* pSrcScanline, const ColorMap* sourceColorMap,
                           PixelFormat sourceFormat, const std::string* profileName, std::uint8_t* pDestScanline,
                           PixelFormat destinationFormat);
    /// Converts one colour between RGB, gray and CMYK; alpha goes over unchanged, channels that are not used are zero.
    void TransformColor(const Channels& channels, ColorSpace sourceColorSpace, const std::string* profileName,
                        Channels& result, ColorSpace destinationColorSpace);
    /// The links from one format to another, by the settings of this object, for its current pixel count and maps.
    void CreateTransformChain(PixelFormat sourceFormat, PixelFormat destinationFormat,
                              std::unique_ptr<ColorTransformChain>* ppTransformChain);

    /// Makes `colorMap` a predefined palette, all alpha 255. Fails with `ArgumentException` ("enColorMapType") for
    /// `Adaptive`, `Custom` and unknown types.
    static void FillPalette(ColorMap& colorMap, ColorMapType type, bool withAlpha);
    /// The working format: with alpha, of the space and depth of `format`; indexed formats count as 8-bit RGB. This and
    /// the next two fail with `UnsupportedPixelFormatException` for any other format.
    static PixelFormat GetInteractionPixelFormat(PixelFormat format);
    /// The 16-bit twin of an 8-bit working format.
    static PixelFormat GetExtendedPixelFormat(PixelFormat format);
    /// The 8-bit twin of a 16-bit working format.
    static PixelFormat GetSimplePixelFormat(PixelFormat format);
    /// Turns a raster without alpha into the format with alpha and fills the alpha with `alpha` (of 65535; 8-bit
    /// formats take the high byte). A raster with alpha stays as it is.
    static void KeepAlpha(std::unique_ptr<BitmapData>& bitmapData, std::uint16_t alpha);

    void SetColorManagementEngine(ColorManagementEngine engine) { m_engine = engine; }
    ColorManagementEngine GetColorManagementEngine() const { return m_engine; }
    void SetColorTransformIntent(ColorTransformIntent intent) { m_intent = intent; }
    ColorTransformIntent GetColorTransformIntent() const { return m_intent; }
    /// These three forget the old name first. Null is accepted; a profile of another colour space fails with
    /// `CmUnappropriateProfileException`.
    void SetRgbColorProfile(const std::string* pProfileName);
    void SetGrayColorProfile(const std::string* pProfileName);
    void SetCmykColorProfile(const std::string* pProfileName);
    void SetTargetColorProfile(const std::string* pProfileName);
    /// The same with files that converted rasters may share. Null is accepted.
    void SetRgbColorProfileFile(ProfileHandle profile);
    void SetGrayColorProfileFile(ProfileHandle profile);
    void SetCmykColorProfileFile(ProfileHandle profile);
    void SetTargetColorProfileFile(ProfileHandle profile);
    /// How 16 bits are narrowed to 8; checked when a chain is built.
    void SetBitsUsedQuantizeTo8(std::uint8_t bits) { m_bitsUsed = bits; }
    std::uint8_t GetBitsUsedQuantizeTo8() const { return m_bitsUsed; }
    void SetOffsetQuantizeTo8(std::uint16_t offset) { m_offset = offset; }
    std::uint16_t GetOffsetQuantizeTo8() const { return m_offset; }
    void SetScaleQuantizeTo8(std::uint8_t scale) { m_scale = scale; }
    std::uint8_t GetScaleQuantizeTo8() const { return m_scale; }
    void SetPaletteAlphaThreshold(std::uint8_t threshold) { m_paletteAlphaThreshold = threshold; }
    std::uint8_t GetPaletteAlphaThreshold() const { return m_paletteAlphaThreshold; }
    void SetUsePaletteAlphaThreshold(bool flag) { m_bUsePaletteAlphaThreshold = flag; }
    bool GetUsePaletteAlphaThreshold() const { return m_bUsePaletteAlphaThreshold; }
    void SetColorQuantizationAlgorithm(ColorQuantizationAlgorithm algorithm) { m_algorithm = algorithm; }
    ColorQuantizationAlgorithm GetColorQuantizationAlgorithm() const { return m_algorithm; }
    /// 0 stands for as many as the destination format has.
    void SetColorMapEntryCount(std::uint32_t count) { m_uintColorMapEntryCount = count; }
    std::uint32_t GetColorMapEntryCount() const { return m_uintColorMapEntryCount; }
    void SetColorMapType(ColorMapType type) { m_colorMapType = type; }
    ColorMapType GetColorMapType() const { return m_colorMapType; }
    void SetCustomColorMap(const ColorMap& map) { m_customColorMap = map; }
    ColorMap& GetCustomColorMapRef() { return m_customColorMap; }
    void SetDitheringType(DitheringType type) { m_ditheringType = type; }
    DitheringType GetDitheringType() const { return m_ditheringType; }
    /// 0 to 1; anything else fails with `ArgumentOutOfRangeException` and changes nothing.
    void SetDitheringIntensity(double intensity);
    double GetDitheringIntensity() const { return m_ditheringIntensity; }
    void SetCreateColorMapWithAlpha(bool flag) { m_bCreateColorMapWithAlpha = flag; }
    bool GetCreateColorMapWithAlpha() const { return m_bCreateColorMapWithAlpha; }
    /// Composes sources with alpha over the background colour when the destination has no alpha.
    void SetBlendWithBackground(bool flag) { m_bBlendWithBackground = flag; }
    /// In the colour space of the source.
    void SetBackgroundColor(const Channels& channels) { m_backgroundColor = channels; }
    /// The alpha that sources without alpha get, 0 to 1; anything else fails as `SetDitheringIntensity` does.
    void SetConvertAlpha(double alpha);
    double GetConvertAlpha() const { return m_convertAlpha; }

protected:
    /// All that may be named as a source. `Format40bppAcmyk`, which is not listed, converts as well.
    bool IsFormatAccepted(PixelFormat) const override { return true; }

private:
    using ProfileName = std::optional<std::string>;

    /// What one raster conversion carries from step to step.
    struct RasterConversion;

    ChainLinkParameters LinkParameters(PixelFormat sourceFormat, PixelFormat destinationFormat) const;
    static void SetProfile(ProfileHandle& held, ProfileHandle profile, ColorSpace space);
    const ProfileHandle& DestinationProfile(PixelFormat destinationFormat) const;
    std::unique_ptr<CmsProvider> CreateProvider(PixelFormat sourceFormat, PixelFormat destinationFormat);

    void InitializeAlphaBlend(PixelFormat sourceFormat, PixelFormat destinationFormat, std::uint32_t pixelCount);
    const std::uint8_t* BlendScanline(const std::uint8_t* pSrcScanline);

    void BeginConversion(std::uint32_t pixelCount, PixelFormat sourceFormat, PixelFormat destinationFormat,
                         const ColorMap* pSourceColorMap, const std::string* pProfileName);
    void ConvertRaster(const BitmapData& source, BitmapData& destination);
    void PrepareColorMap(RasterConversion& conversion);
    void CreateAdaptiveColorMap(RasterConversion& conversion);
    void SelectColorMapEntries(RasterConversion& conversion, ColorMap& map, std::uint32_t count, bool withAlpha);
    void ConvertRows(RasterConversion& conversion);

    ColorManagementEngine m_engine = ColorManagementEngine::LittleCms;
    ColorTransformIntent m_intent = ColorTransformIntent::Perceptual;
    ProfileHandle m_rgbProfile;
    ProfileHandle m_grayProfile;
    ProfileHandle m_cmykProfile;
    ProfileHandle m_targetProfile;
    ProfileHandle m_resultProfile; ///< what the converted pixels are in; none unless colour managed
    std::uint8_t m_bitsUsed = 16;
    std::uint16_t m_offset = 0;
    std::uint8_t m_scale = 16;
    std::uint8_t m_paletteAlphaThreshold = 0;
    bool m_bUsePaletteAlphaThreshold = true;
    ColorQuantizationAlgorithm m_algorithm = ColorQuantizationAlgorithm::MedianCut;
    std::uint32_t m_uintColorMapEntryCount = 0;
    ColorMapType m_colorMapType = ColorMapType::Adaptive;
    ColorMap m_customColorMap;
    ColorMap m_sourceColorMap;
    ColorMap m_destinationColorMap;
    DitheringType m_ditheringType = DitheringType::FloydSteinberg;
    double m_ditheringIntensity = 1.0;
    bool m_bCreateColorMapWithAlpha = true;
    bool m_bBlendWithBackground = false;
    Channels m_backgroundColor{};
    double m_convertAlpha = 1.0;
    std::uint32_t m_uintPixelCount = 0;
    ProfileName m_sourceProfile;
    std::unique_ptr<ColorTransformChain> m_pChain;
    AlphaBlend m_blend;
    std::unique_ptr<ColorTransformChain> m_pExpandChain; ///< source to the input of the blend, where they differ
    MemPtr<std::uint8_t> m_expandScratch;                ///< one scanline in the input format of the blend
    MemPtr<std::uint8_t> m_blendScratch;                 ///< one scanline in the blended format
};

} // namespace ImagingFramework
