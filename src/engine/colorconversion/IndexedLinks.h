#pragma once

#include "colorconversion/IColorTransformLinkImpl.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// Palette indices to colours. Fails with `PaletteException` without a source map, and with `ArgumentException`
/// ("bitmap") for an index that the map does not have.
class IndexedToArgb32Link final : public IColorTransformLinkImpl {
public:
    IndexedToArgb32Link() : IColorTransformLinkImpl(IndexedFormat, PixelFormat::Format32bppArgb) {}
    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override;
    void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) override;

private:
    std::vector<std::uint8_t> m_indices; ///< one byte each, for indices of less than 8 bits
};

/// Indices of one palette to those of another, by the colours of the entries; their alpha does not count. Fails as
/// `IndexedToArgb32Link` does. A map that changes must be set again.
class IndexedToIndexed final : public IColorTransformLinkImpl {
public:
    IndexedToIndexed() : IColorTransformLinkImpl(IndexedFormat, IndexedFormat) {}
    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override;
    void AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const override;
    void SetSrcColorMap(const ColorMap* colorMap) override;
    void SetDstColorMap(ColorMap* colorMap) override;
    void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) override;

private:
    void BuildTable();

    std::array<std::uint8_t, 256> m_table{};
    bool m_bTableReady = false;
    std::vector<std::uint8_t> m_indices;
};

/// Colours to the nearest entries of the destination map, with dithering where a type is set. Fails with
/// `PaletteException` without a destination map. With the threshold in use and a transparent entry in the map, alpha
/// becomes a hard cut. Dithering carries errors from run to run, so runs come in the order of the rows; a setting that
/// changes makes it begin anew.
class Argb32ToIndexedLink final : public IColorTransformLinkImpl {
public:
    Argb32ToIndexedLink() : IColorTransformLinkImpl(PixelFormat::Format32bppArgb, IndexedFormat) {}
    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override;
    void AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const override;
    std::uint8_t GetPaletteAlphaThreshold() const override { return m_paletteAlphaThreshold; }
    void SetPaletteAlphaThreshold(std::uint8_t value) override { m_paletteAlphaThreshold = value; }
    bool GetUsePaletteAlphaThreshold() const override { return m_bUsePaletteAlphaThreshold; }
    void SetUsePaletteAlphaThreshold(bool flag) override { m_bUsePaletteAlphaThreshold = flag; }
    void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) override;

private:
    /// What a dithering object is made for.
    struct DitheringSetup {
        DitheringType Type = DitheringType::None;
        std::uint32_t Intensity = 0;
        std::uint32_t Width = 0;
        ColorMap* Map = nullptr;
        bool operator==(const DitheringSetup&) const = default;
    };

    void PrepareDithering();
    const std::uint8_t* CutByAlpha(const std::uint8_t* source);
    void MapPixels(const std::uint8_t* source, std::uint8_t* indices);

    std::unique_ptr<Dithering> m_pDithering; ///< null without dithering
    DitheringSetup m_ditheringSetup;
    std::vector<std::uint8_t> m_indices;
    std::vector<std::uint8_t> m_workingCopy;
    std::uint8_t m_paletteAlphaThreshold = 0;
    bool m_bUsePaletteAlphaThreshold = false;
};

} // namespace ImagingFramework
