#pragma once

#include <Corvane/Rasterloom/BitmapProvider.h>
#include <Corvane/Rasterloom/ColorManagementEngine.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/ColorTransformationIntent.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom {

class ColorPalette;
class ColorProfile;
namespace Transforms {
class PixelFormatConverter;
}

/// The conversions of a bitmap's pixel format in short form: `bitmap.get_ColorManagement()->Convert(format)`. The
/// properties are those of `Transforms::PixelFormatConverter`, are kept from call to call, and fail as they do there.
///
/// Each conversion runs with the bitmap's unit, time limit and progress, and fails with `BitmapEmptyException` on an
/// empty bitmap, else as the converter does.
class RASTERLOOM_API ColorManagementProvider final : public BitmapProvider {
public:
    /// Null fails with `Host::ArgumentNullException` ("bitmap").
    explicit ColorManagementProvider(std::shared_ptr<BitmapLink> link);
    ~ColorManagementProvider() override;

    /// To any pixel format, with the palette type of the last call of `ConvertToIndexed`, at first `Adaptive`.
    void Convert(PixelFormat format);
    /// To `Format1bppIndexed`, `Format4bppIndexed` or `Format8bppIndexed`; other numbers of bits fail with
    /// `Host::ArgumentOutOfRangeException` ("bpp"). The palette is needed for the type `Custom` alone. Sets
    /// `PaletteEntryCount` to 0, `Dithering` to `FloydSteinberg` and `DitheringIntensity` to 1 first, and leaves them
    /// so.
    void ConvertToIndexed(std::int32_t bpp, ColorPaletteType paletteType, ColorPalette* customPalette = nullptr);
    /// To RGB, CMYK or gray with 8 or, `extended`, 16 bits per channel. Another colour space fails with
    /// `UnsupportedPixelFormatException`.
    void ConvertToContinuous(ColorSpace colorSpace, bool hasAlpha, bool extended);

    /// @name Properties, as those of `Transforms::PixelFormatConverter`
    /// @{
    std::shared_ptr<ColorProfile> get_RgbColorProfile();
    void set_RgbColorProfile(const std::shared_ptr<ColorProfile>& rgbColorProfile);
    std::shared_ptr<ColorProfile> get_CmykColorProfile();
    void set_CmykColorProfile(const std::shared_ptr<ColorProfile>& cmykColorProfile);
    std::shared_ptr<ColorProfile> get_GrayScaleColorProfile();
    void set_GrayScaleColorProfile(const std::shared_ptr<ColorProfile>& grayScaleColorProfile);
    std::shared_ptr<ColorProfile> get_TargetColorProfile();
    void set_TargetColorProfile(const std::shared_ptr<ColorProfile>& targetColorProfile);
    ColorManagementEngine get_ColorManagementEngine();
    void set_ColorManagementEngine(ColorManagementEngine colorManagementEngine);
    ColorTransformationIntent get_TransformationIntent();
    void set_TransformationIntent(ColorTransformationIntent transformationIntent);
    DitheringType get_Dithering();
    void set_Dithering(DitheringType dithering);
    float get_DitheringIntensity();
    void set_DitheringIntensity(float ditheringIntensity);
    std::int32_t get_PaletteEntryCount();
    void set_PaletteEntryCount(std::int32_t count);
    bool get_BuildAdaptivePaletteWithAlpha();
    void set_BuildAdaptivePaletteWithAlpha(bool value);
    std::uint8_t get_PaletteAlphaThreshold();
    void set_PaletteAlphaThreshold(std::uint8_t value);
    bool get_PaletteAlphaThresholdUsed();
    void set_PaletteAlphaThresholdUsed(bool value);
    ColorQuantizationAlgorithm get_ColorQuantizationAlgorithm();
    void set_ColorQuantizationAlgorithm(ColorQuantizationAlgorithm value);
    std::int32_t get_QuantizationTo8bBitsUsed();
    void set_QuantizationTo8bBitsUsed(std::int32_t value);
    std::int32_t get_QuantizationTo8bOffset();
    void set_QuantizationTo8bOffset(std::int32_t value);
    std::int32_t get_QuantizationTo8bScale();
    void set_QuantizationTo8bScale(std::int32_t value);
    /// @}

    using BitmapProvider::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    /// Calls `body` with the converter, under the lock.
    template <class Body>
    auto With(Body body);
    void ConvertTo(Transforms::PixelFormatConverter& converter, PixelFormat format);

    /// Made with the first call that needs it: most bitmaps are never converted.
    std::unique_ptr<Transforms::PixelFormatConverter> m_pConverter;
};

} // namespace Corvane::Rasterloom
