#pragma once

#include "Common/InternalEvents.h"
#include "colorconversion/IColorTransformLink.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// What a link of a chain is to be.
struct ChainLinkParameters {
    std::unique_ptr<CmsProvider> Provider;
    std::uint32_t PixelCount = 0;
    PixelFormat SourceFormat = PixelFormat::Format32bppArgb;
    PixelFormat DestinationFormat = PixelFormat::Format32bppArgb;
    const ColorMap* SourceColorMap = nullptr; ///< borrowed
    ColorMap* DestinationColorMap = nullptr;  ///< borrowed, and searched
    DitheringType Dithering = DitheringType::None;
    std::uint32_t DitheringIntensity = 100; ///< percent
    IInternalEvents* Events = nullptr;      ///< borrowed; gets one step for each run
    std::uint16_t Alpha = 255;              ///< of 65535
    std::uint8_t QuantizationTo8bBitsUsed = 16;
    std::uint16_t QuantizationTo8bOffset = 0;
    std::uint8_t QuantizationTo8bScale = 16;
    std::uint8_t PaletteAlphaThreshold = 0;
    bool UsePaletteAlphaThreshold = false;
};

/// An ordered list of links that together convert a scanline. One thread at a time.
class ColorTransformChain {
public:
    ColorTransformChain() = default;
    ColorTransformChain(const ColorTransformChain&) = delete;
    ColorTransformChain& operator=(const ColorTransformChain&) = delete;
    virtual ~ColorTransformChain() = default;

    /// A configured link for the request; null when none matches. Fails with `ArgumentNullPointerException` ("ppLink")
    /// and, for quantization values that do not fit each other, with `ArgumentOutOfRangeException`.
    static void CreateNewLink(std::unique_ptr<IColorTransformLink>* ppLink, ChainLinkParameters parameters);
    /// A link that copies. Fails with `ArgumentException` ("pixel format") when the formats differ.
    static void CreateNewEqualLink(std::unique_ptr<IColorTransformLink>* ppLink, ChainLinkParameters parameters);

    /// Fails as `CreateNewLink` does, and with `UnsupportedPixelFormatException` when no link matches.
    void AddChainLink(ChainLinkParameters parameters);
    void AddEqualChainLink(ChainLinkParameters parameters);
    /// Runs the whole chain on one scanline; an empty chain does nothing. Allocates buffers in the first call after a
    /// link was added. Fails with `ArgumentNullPointerException`.
    void ApplyScanlineTransform(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline);
    void Clear() noexcept;

private:
    void AllocateBuffers();
    bool TransformWithoutAlpha(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline);

    std::vector<std::unique_ptr<IColorTransformLink>> m_links;
    std::vector<MemPtr<std::uint8_t>> m_buffers; ///< outputs of all links but the last, made when first needed
};

} // namespace ImagingFramework
