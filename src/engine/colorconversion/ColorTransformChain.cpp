#include "colorconversion/ColorTransformChain.h"

#include "colorconversion/ColorTransformLinks.h"

namespace ImagingFramework {

namespace {

/// The texts differ in their full stops; hosts compare them as they are.
void CheckQuantization(const ChainLinkParameters& parameters) {
    const std::uint32_t bits = parameters.QuantizationTo8bBitsUsed;
    const std::uint32_t scale = parameters.QuantizationTo8bScale;
    if (bits < 8 || bits > 16) {
        throw ArgumentOutOfRangeException("quantizationTo8bBitsUsed", "Parameter has invalid value.");
    }
    if (scale < 8 || scale > bits) {
        throw ArgumentOutOfRangeException("quantizationTo8bScale", "Parameter has invalid value");
    }
    if (parameters.QuantizationTo8bOffset > ((1U << bits) - 1U) - ((1U << scale) - 1U)) {
        throw ArgumentOutOfRangeException("quantizationTo8bOffset", "Parameter has invalid value");
    }
}

/// All bits of the prototype's word are in the requested one. That lets the bare indexed flag serve the indexed
/// formats.
bool Includes(PixelFormat requested, PixelFormat prototype) {
    return (ToWord(requested) & ToWord(prototype)) == ToWord(prototype);
}

void Configure(IColorTransformLink& link, ChainLinkParameters& parameters) {
    link.SetColorProvider(std::move(parameters.Provider));
    link.SetPixelCount(parameters.PixelCount);
    link.SetSrcColorMap(parameters.SourceColorMap);
    link.SetDstColorMap(parameters.DestinationColorMap);
    link.SetDitheringType(parameters.Dithering);
    link.SetDitheringIntensity(parameters.DitheringIntensity);
    link.SetSrcBitsPerPixel(PixelFormatSize(parameters.SourceFormat));
    link.SetDstBitsPerPixel(PixelFormatSize(parameters.DestinationFormat));
    link.SetAlpha(parameters.Alpha);
    link.SetBitsUsedQuantizeTo8(parameters.QuantizationTo8bBitsUsed);
    link.SetOffsetQuantizeTo8(parameters.QuantizationTo8bOffset);
    link.SetScaleQuantizeTo8(parameters.QuantizationTo8bScale);
    link.SetPaletteAlphaThreshold(parameters.PaletteAlphaThreshold);
    link.SetUsePaletteAlphaThreshold(parameters.UsePaletteAlphaThreshold);
    // Every link of the table stands on the events host.
    static_cast<IColorTransformLinkImpl&>(link).SetEvents(parameters.Events);
}

} // namespace

void ColorTransformChain::CreateNewLink(std::unique_ptr<IColorTransformLink>* ppLink, ChainLinkParameters parameters) {
    if (ppLink == nullptr) {
        throw ArgumentNullPointerException("ppLink");
    }
    CheckQuantization(parameters);
    ppLink->reset();
    for (const LinkPrototype& prototype : GetLinkPrototypes()) {
        if (Includes(parameters.SourceFormat, prototype.Link->GetSrcPixelFormat()) &&
            Includes(parameters.DestinationFormat, prototype.Link->GetDstPixelFormat())) {
            std::unique_ptr<IColorTransformLink> link;
            prototype.Link->CreateNewInstance(&link);
            Configure(*link, parameters);
            *ppLink = std::move(link);
            return;
        }
    }
}

void ColorTransformChain::CreateNewEqualLink(std::unique_ptr<IColorTransformLink>* ppLink,
                                             ChainLinkParameters parameters) {
    if (ppLink == nullptr) {
        throw ArgumentNullPointerException("ppLink");
    }
    if (parameters.SourceFormat != parameters.DestinationFormat) {
        throw ArgumentException("pixel format", "Source and destination pixel formats should be the same.");
    }
    auto link = std::make_unique<EqualLink>(parameters.SourceFormat);
    Configure(*link, parameters);
    *ppLink = std::move(link);
}

void ColorTransformChain::AddChainLink(ChainLinkParameters parameters) {
    m_buffers.clear();
    std::unique_ptr<IColorTransformLink> link;
    CreateNewLink(&link, std::move(parameters));
    if (!link) {
        throw UnsupportedPixelFormatException();
    }
    m_links.push_back(std::move(link));
}

void ColorTransformChain::AddEqualChainLink(ChainLinkParameters parameters) {
    m_buffers.clear();
    std::unique_ptr<IColorTransformLink> link;
    CreateNewEqualLink(&link, std::move(parameters));
    m_links.push_back(std::move(link));
}

void ColorTransformChain::Clear() noexcept {
    m_buffers.clear();
    m_links.clear();
}

void ColorTransformChain::AllocateBuffers() {
    std::vector<MemPtr<std::uint8_t>> buffers(m_links.size() - 1);
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        m_links[i]->AllocOutBuffer(&buffers[i]);
    }
    m_buffers = std::move(buffers);
}

/// An alpha that the first link adds and the last one drops has no part in the result: the provider between them then
/// goes straight from the one scanline to the other. False, with nothing done, where the chain is another.
bool ColorTransformChain::TransformWithoutAlpha(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    if (m_links.size() != 3) {
        return false;
    }
    const PixelFormat source = m_links[0]->GetSrcPixelFormat();
    const PixelFormat destination = m_links[2]->GetDstPixelFormat();
    const bool isAlphaOnly = source != IndexedFormat && destination != IndexedFormat &&
                             !PixelFormatHasAlpha(source) && !PixelFormatHasAlpha(destination) &&
                             PixelFormatAddAlpha(source) == m_links[1]->GetSrcPixelFormat() &&
                             PixelFormatAddAlpha(destination) == m_links[1]->GetDstPixelFormat();
    if (!isAlphaOnly || !m_links[1]->ApplyProviderTransform(pSrcScanline, source, pDestScanline, destination)) {
        return false;
    }
    for (const auto& link : m_links) {
        link->SkipRun();
    }
    return true;
}

void ColorTransformChain::ApplyScanlineTransform(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    if (pSrcScanline == nullptr) {
        throw ArgumentNullPointerException("pSrcScanline");
    }
    if (pDestScanline == nullptr) {
        throw ArgumentNullPointerException("pDestScanline");
    }
    if (m_links.empty() || TransformWithoutAlpha(pSrcScanline, pDestScanline)) {
        return;
    }
    if (m_buffers.size() + 1 != m_links.size()) {
        AllocateBuffers();
    }
    // A link that only copies is spared its run. The last of the others writes to the destination; where there is none,
    // the last link makes the one copy.
    std::size_t last = m_links.size() - 1;
    while (last > 0 && m_links[last]->IsPassThrough()) {
        --last;
    }
    if (m_links[last]->IsPassThrough()) {
        last = m_links.size() - 1;
    }
    const std::uint8_t* input = pSrcScanline;
    for (std::size_t i = 0; i < m_links.size(); ++i) {
        if (i != last && m_links[i]->IsPassThrough()) {
            m_links[i]->SkipRun();
            continue;
        }
        std::uint8_t* const output = i == last ? pDestScanline : m_buffers[i].Get();
        m_links[i]->ApplyScanlineTransform(input, output);
        input = output;
    }
}

} // namespace ImagingFramework
