#pragma once

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom {
class ColorPalette;
}

namespace Corvane::Rasterloom::Transforms {

/// Converts a bitmap to another pixel format; the palette of an indexed destination, dithering and the treatment of alpha
/// are properties. The bitmap raises `ColorSpace` as its change.
class RASTERLOOM_API PixelFormatConverter final : public BitmapTransform {
public:
    /// To `Format24bppRgb` until told otherwise.
    PixelFormatConverter();
    explicit PixelFormatConverter(PixelFormat destinationPixelFormat);
    ~PixelFormatConverter() override;

    PixelFormat get_DestinationPixelFormat();
    void set_DestinationPixelFormat(PixelFormat destinationPixelFormat);

    /// @name Palettes of indexed destinations
    /// @{
    /// `Adaptive` at first. A 1-bit destination always gets black and white.
    ColorPaletteType get_PaletteType();
    void set_PaletteType(ColorPaletteType paletteType);
    /// For the type `Custom`; may hold more entries than the format, of which the most used are picked. A copy.
    std::unique_ptr<ColorPalette> get_CustomPalette();
    void set_CustomPalette(ColorPalette& customPalette);
    /// 0 stands for as many as the format has. A negative one fails with `Host::ArgumentOutOfRangeException` ("count").
    std::int32_t get_PaletteEntryCount();
    void set_PaletteEntryCount(std::int32_t count);
    bool get_BuildAdaptivePaletteWithAlpha();
    void set_BuildAdaptivePaletteWithAlpha(bool value);
    /// Pixels below this alpha get the transparent entry, when there is one and the threshold is used.
    std::uint8_t get_PaletteAlphaThreshold();
    void set_PaletteAlphaThreshold(std::uint8_t value);
    bool get_PaletteAlphaThresholdUsed();
    void set_PaletteAlphaThresholdUsed(bool value);
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
    bool get_BackgroundEnabled();
    void set_BackgroundEnabled(bool backgroundEnabled);

    /// How 16-bit samples narrow to 8: `BitsUsed` (8 to 16) are meaningful, of them `Scale` (8 to `BitsUsed`) from `Offset`
    /// on are kept. Values that do not go together fail with `Host::ArgumentOutOfRangeException`.
    std::int32_t get_QuantizationTo8bBitsUsed();
    std::int32_t get_QuantizationTo8bOffset();
    std::int32_t get_QuantizationTo8bScale();
    void SetQuantizationTo8b(std::int32_t bitsUsed, std::int32_t offset, std::int32_t scale);

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

    std::unique_ptr<Settings> m_pSettings;
};

} // namespace Corvane::Rasterloom::Transforms
