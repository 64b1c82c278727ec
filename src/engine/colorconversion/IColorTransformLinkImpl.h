#pragma once

#include "Common/InternalEvents.h"
#include "colorconversion/IColorTransformLink.h"

#include <algorithm>

namespace ImagingFramework {

/// What a conversion kernel needs to know about a run.
struct LinkRun {
    std::uint32_t PixelCount = 0;
    std::uint16_t Alpha = 65535;
    std::uint8_t BitsUsed = 16;
    std::uint16_t Offset = 0;
    std::uint8_t Scale = 16;
};

/// The fields of a link and the head of every run: report a step, which is where a stop request takes effect, then let
/// the provider do the run if there is one that is ready.
class IColorTransformLinkImpl : public IColorTransformLink, public IInternalEventsHostImpl {
public:
    PixelFormat GetSrcPixelFormat() const override { return m_srcFormat; }
    PixelFormat GetDstPixelFormat() const override { return m_dstFormat; }
    /// The base writes null.
    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override;
    void AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const override;
    void SetSrcBitsPerPixel(std::uint32_t count) override { m_uintSrcBits = std::clamp(count, 1U, 8U); }
    void SetDstBitsPerPixel(std::uint32_t count) override { m_uintDstBits = std::clamp(count, 1U, 8U); }
    void SetPixelCount(std::uint32_t count) override { m_run.PixelCount = count; }
    void SetSrcColorMap(const ColorMap* colorMap) override { m_pSrcColorMap = colorMap; }
    void SetDstColorMap(ColorMap* colorMap) override { m_pDstColorMap = colorMap; }
    void SetColorProvider(std::unique_ptr<CmsProvider> provider) override { m_pProvider = std::move(provider); }
    void SetDitheringType(DitheringType type) override { m_ditheringType = type; }
    void SetDitheringIntensity(std::uint32_t percent) override {
        m_uintDitheringIntensity = std::clamp(percent, 1U, 100U);
    }
    void SetAlpha(std::uint16_t alpha16) override { m_run.Alpha = alpha16; }
    void SetBitsUsedQuantizeTo8(std::uint8_t bits) override { m_run.BitsUsed = bits; }
    void SetOffsetQuantizeTo8(std::uint16_t offset) override { m_run.Offset = offset; }
    void SetScaleQuantizeTo8(std::uint8_t scale) override { m_run.Scale = scale; }
    std::uint8_t GetPaletteAlphaThreshold() const override { return 0; }
    void SetPaletteAlphaThreshold(std::uint8_t) override {}
    bool GetUsePaletteAlphaThreshold() const override { return false; }
    void SetUsePaletteAlphaThreshold(bool) override {}
    /// A provider that is not ready leaves the link's own formula in force.
    bool ApplyProviderTransform(const std::uint8_t* source, std::uint8_t* destination) override {
        return ApplyProviderTransform(source, m_srcFormat, destination, m_dstFormat);
    }
    bool ApplyProviderTransform(const std::uint8_t* source, PixelFormat sourceFormat, std::uint8_t* destination,
                                PixelFormat destinationFormat) override;
    bool IsPassThrough() const override { return false; }
    void SkipRun() override { UpdateEvents(1); }

protected:
    IColorTransformLinkImpl(PixelFormat srcFormat, PixelFormat dstFormat)
        : m_srcFormat(srcFormat), m_dstFormat(dstFormat) {}

    /// The head of a run; true when the run is finished.
    bool BeginRun(const std::uint8_t* source, std::uint8_t* destination);
    bool IsProviderReady() const { return m_pProvider && m_pProvider->IsReady(); }
    /// Allocates `pixelCount` pixels of `bits`, and never nothing.
    static void AllocScanline(MemPtr<std::uint8_t>* ppBuffer, std::uint32_t pixelCount, std::uint32_t bits,
                              std::uint32_t alignment);

    std::uint32_t m_uintSrcBits = 8;
    std::uint32_t m_uintDstBits = 8;
    PixelFormat m_srcFormat;
    PixelFormat m_dstFormat;
    LinkRun m_run;
    const ColorMap* m_pSrcColorMap = nullptr;
    ColorMap* m_pDstColorMap = nullptr;
    std::unique_ptr<CmsProvider> m_pProvider;
    DitheringType m_ditheringType = DitheringType::None;
    std::uint32_t m_uintDitheringIntensity = 100; ///< percent
};

} // namespace ImagingFramework
