#pragma once

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/ColorManagementEngine.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/ColorTransformationIntent.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/PixelArray.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom {
class ColorPalette;
class ColorProfile;
} // namespace Corvane::Rasterloom

namespace Corvane::Rasterloom::Transforms {

/// Converts a bitmap to another pixel format; profiles, the palette of an indexed destination, dithering and the
/// treatment of alpha are properties. The bitmap raises `ColorSpace` as its change.
///
/// Colours go from the profile of the bitmap to the profile that is set for the destination's colour space, when an
/// engine is chosen and both are there; the bitmap then gets the latter as its own. In every other case they go by the
/// library's formulas, and the converted bitmap has no profile. Indexed formats count as RGB.
class RASTERLOOM_API PixelFormatConverter final : public BitmapTransform {
public:
    /// To `Format24bppRgb` until told otherwise.
    PixelFormatConverter();
    explicit PixelFormatConverter(PixelFormat destinationPixelFormat);
    ~PixelFormatConverter() override;

    /// What bitmaps become.
    PixelFormat get_DestinationPixelFormat();
    void set_DestinationPixelFormat(PixelFormat destinationPixelFormat);

    /// @name Colour management
    /// A conversion fails with `CMInappropriateProfileException` when the bitmap's own profile is of another colour
    /// space than its pixels, with `CMOpenProfileException` for a profile that cannot be read any more, with
    /// `CMTransformException` for profiles between which the engine finds no way, and with `CMAdobeModuleLoadException`
    /// under the engine `AdobeCmm`.
    /// @{
    /// Who converts between profiles; `None` at first.
    ColorManagementEngine get_ColorManagementEngine();
    void set_ColorManagementEngine(ColorManagementEngine colorManagementEngine);
    /// `Perceptual` at first.
    ColorTransformationIntent get_TransformationIntent();
    void set_TransformationIntent(ColorTransformationIntent transformationIntent);
    /// What RGB destinations are described by; null for none. A profile of another colour space fails
    /// with `CMInappropriateProfileException`, and then none is set. The converter shares the profile's file.
    std::shared_ptr<ColorProfile> get_RgbColorProfile();
    void set_RgbColorProfile(const std::shared_ptr<ColorProfile>& rgbColorProfile);
    /// The same for gray destinations.
    std::shared_ptr<ColorProfile> get_GrayScaleColorProfile();
    void set_GrayScaleColorProfile(const std::shared_ptr<ColorProfile>& grayScaleColorProfile);
    /// The same for CMYK destinations.
    std::shared_ptr<ColorProfile> get_CmykColorProfile();
    void set_CmykColorProfile(const std::shared_ptr<ColorProfile>& cmykColorProfile);
    /// A device to simulate (a proof): colours are first brought into its gamut. Of any colour space; null for none.
    std::shared_ptr<ColorProfile> get_TargetColorProfile();
    void set_TargetColorProfile(const std::shared_ptr<ColorProfile>& targetColorProfile);
    /// @}

    /// @name Palettes of indexed destinations
    /// @{
    /// Where the palette comes from; `Adaptive` at first. A 1-bit destination always gets black and white.
    ColorPaletteType get_PaletteType();
    void set_PaletteType(ColorPaletteType paletteType);
    /// For the type `Custom`; may hold more entries than the format, of which the most used are picked. A copy.
    std::unique_ptr<ColorPalette> get_CustomPalette();
    void set_CustomPalette(ColorPalette& customPalette);
    /// 0 stands for as many as the format has. A negative one fails with `Host::ArgumentOutOfRangeException` ("count").
    std::int32_t get_PaletteEntryCount();
    void set_PaletteEntryCount(std::int32_t count);
    /// Whether the entries of an adaptive palette have alpha; false at first.
    bool get_BuildAdaptivePaletteWithAlpha();
    void set_BuildAdaptivePaletteWithAlpha(bool value);
    /// Pixels below this alpha get the transparent entry, when there is one and the threshold is used.
    std::uint8_t get_PaletteAlphaThreshold();
    void set_PaletteAlphaThreshold(std::uint8_t value);
    /// Whether an adaptive palette with alpha has one transparent entry in place of entries of any alpha.
    bool get_PaletteAlphaThresholdUsed();
    void set_PaletteAlphaThresholdUsed(bool value);
    /// How an adaptive palette is found; `MedianCut` at first.
    ColorQuantizationAlgorithm get_ColorQuantizationAlgorithm();
    void set_ColorQuantizationAlgorithm(ColorQuantizationAlgorithm value);
    /// How the error of an indexed destination is spread.
    DitheringType get_Dithering();
    void set_Dithering(DitheringType dithering);
    /// 0 to 1; anything else fails with `Host::ArgumentOutOfRangeException` ("ditheringIntensity").
    float get_DitheringIntensity();
    void set_DitheringIntensity(float ditheringIntensity);
    /// @}

    /// The alpha that pixels without alpha get, 0 to 1; anything else fails with `Host::ArgumentOutOfRangeException`
    /// ("opacity").
    float get_Opacity();
    void set_Opacity(float opacity);
    /// What shows through a source with alpha when the destination has none. White at first.
    Color get_BackgroundColor();
    void set_BackgroundColor(const Color& backgroundColor);
    /// Whether the background shows through.
    bool get_BackgroundEnabled();
    void set_BackgroundEnabled(bool backgroundEnabled);

    /// @name How 16-bit samples narrow to 8
    /// `BitsUsed` (8 to 16) are meaningful; of them `Scale` (8 to `BitsUsed`) from `Offset` on are kept. Values that do
    /// not go together fail with `Host::ArgumentOutOfRangeException`, which names the one that was to be set; where one
    /// value after the other would pass through such a state, `SetQuantizationTo8b` sets all three. 16, 0 and 16 at
    /// first.
    /// @{
    /// 8 to 16.
    std::int32_t get_QuantizationTo8bBitsUsed();
    void set_QuantizationTo8bBitsUsed(std::int32_t quantizationTo8bBitsUsed);
    /// What is subtracted first: 0 to 2^`BitsUsed` - 2^`Scale`.
    std::int32_t get_QuantizationTo8bOffset();
    void set_QuantizationTo8bOffset(std::int32_t quantizationTo8bOffset);
    /// 8 to `BitsUsed`.
    std::int32_t get_QuantizationTo8bScale();
    void set_QuantizationTo8bScale(std::int32_t quantizationTo8bScale);
    /// All three at once.
    void SetQuantizationTo8b(std::int32_t bitsUsed, std::int32_t offset, std::int32_t scale);
    /// @}

    /// Converts samples `[x, y, channel]` of `format` to samples of the destination format. An indexed `format` needs
    /// the palette; the profile may be null. Fails as `Bitmap::Load` of an array and as a conversion does, and with
    /// `UnsupportedPixelFormatException` for an indexed destination and one whose channels are no whole samples.
    PixelArray ConvertArray(const PixelArray& values, PixelFormat format, const ColorPalette* palette = nullptr,
                            const std::shared_ptr<ColorProfile>& profile = nullptr);
    /// Converts one colour, with 16 bits per channel, to the colour space of the destination format. "No colour" fails
    /// with `Host::ArgumentNullException` ("color"), an indexed destination with `UnsupportedPixelFormatException`.
    Color ConvertColor(const Color& color, const std::shared_ptr<ColorProfile>& profile = nullptr);

protected:
    void ExportSettings() override;
    ImagingFramework::IInternalEventsHost& _GetEngineEventsHost() override;
    const ImagingFramework::IPixelFormatSupport& _GetEngineFormatSupport() const override;
    void _RunEngine(const ImagingFramework::BitmapData& source, const ImagingFramework::RegionRect* pRegion,
                    std::unique_ptr<ImagingFramework::BitmapData>& destination) override;

private:
    struct Settings;

    template <class Value> Value Read(Value Settings::*pField);
    template <class Value> void Write(Value Settings::*pField, Value value);
    template <class Apply>
    void SetProfile(std::shared_ptr<ColorProfile> Settings::*pField, const std::shared_ptr<ColorProfile>& profile,
                    Apply apply);
    void SetQuantization(const char* name, std::int32_t bitsUsed, std::int32_t offset, std::int32_t scale);
    void InitializeAlphaBlend();

    std::unique_ptr<Settings> m_pSettings;
};

} // namespace Corvane::Rasterloom::Transforms
