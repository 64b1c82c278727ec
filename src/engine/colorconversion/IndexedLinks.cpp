#include "colorconversion/IndexedLinks.h"

#include "colorconversion/PackedIndices.h"
#include "colorconversion/SampleAccess.h"

namespace ImagingFramework {

namespace {

constexpr std::uint32_t ScanlineAlignment = 4;

void RequirePalette(const ColorMap* map) {
    if (map == nullptr || map->IsEmpty()) {
        throw PaletteException();
    }
}

[[noreturn]] void FailCorrupted() {
    throw ArgumentException("bitmap", "Source bitmap is corrupted.");
}

/// The indices of a run, one byte each; in `buffer` unless the source has them so. Fails on one that is not below
/// `limit`.
const std::uint8_t* ReadIndices(const std::uint8_t* source, std::uint32_t bits, std::uint32_t count,
                                std::uint32_t limit, std::vector<std::uint8_t>& buffer) {
    if (bits < 8) {
        buffer.resize(count);
        UnpackIndices(source, bits, count, buffer.data());
        source = buffer.data();
    }
    if (limit < (1U << bits)) {
        std::uint8_t largest = 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            largest = std::max(largest, source[i]);
        }
        if (count != 0 && largest >= limit) {
            FailCorrupted();
        }
    }
    return source;
}

} // namespace

// --- IndexedToArgb32Link

void IndexedToArgb32Link::CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const {
    IColorTransformLinkImpl::CreateNewInstance(ppNewInstance);
    *ppNewInstance = std::make_unique<IndexedToArgb32Link>();
}

void IndexedToArgb32Link::ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) {
    if (BeginRun(source, destination)) {
        return;
    }
    RequirePalette(m_pSrcColorMap);
    const std::uint32_t entryCount = std::min(m_pSrcColorMap->GetEntryCount(), 1U << m_uintSrcBits);
    const std::uint8_t* const indices = ReadIndices(source, m_uintSrcBits, m_run.PixelCount, entryCount, m_indices);
    const bool keepsAlpha = m_pSrcColorMap->GetPixelFormat() == PixelFormat::Format32bppArgb;
    std::uint32_t colors[256];
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        std::uint8_t entry[4];
        m_pSrcColorMap->GetEntryArgb(i, entry);
        if (!keepsAlpha) {
            entry[3] = static_cast<std::uint8_t>(m_run.Alpha >> 8);
        }
        colors[i] = LoadSample<std::uint32_t>(entry, 0);
    }
    // A local count, since a store through a byte pointer might change the member.
    const std::size_t count = m_run.PixelCount;
    for (std::size_t i = 0; i < count; ++i) {
        StoreSample(destination, i, colors[indices[i]]);
    }
}

// --- IndexedToIndexed

void IndexedToIndexed::CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const {
    IColorTransformLinkImpl::CreateNewInstance(ppNewInstance);
    *ppNewInstance = std::make_unique<IndexedToIndexed>();
}

void IndexedToIndexed::AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const {
    AllocScanline(ppScanlineBuffer, m_run.PixelCount, m_uintDstBits, ScanlineAlignment);
}

void IndexedToIndexed::SetSrcColorMap(const ColorMap* colorMap) {
    IColorTransformLinkImpl::SetSrcColorMap(colorMap);
    m_bTableReady = false;
}

void IndexedToIndexed::SetDstColorMap(ColorMap* colorMap) {
    IColorTransformLinkImpl::SetDstColorMap(colorMap);
    m_bTableReady = false;
}

void IndexedToIndexed::BuildTable() {
    const auto count = std::min<std::uint32_t>(m_pSrcColorMap->GetEntryCount(), 256);
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint8_t entry[3];
        m_pSrcColorMap->GetEntryRgb(i, entry);
        const std::uint32_t nearest = m_pDstColorMap->FindNearestEntryIndex(entry[2], entry[1], entry[0]);
        m_table[i] = static_cast<std::uint8_t>(std::min<std::uint32_t>(nearest, 255));
    }
    m_bTableReady = true;
}

void IndexedToIndexed::ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) {
    if (BeginRun(source, destination)) {
        return;
    }
    RequirePalette(m_pSrcColorMap);
    RequirePalette(m_pDstColorMap);
    if (!m_bTableReady) {
        BuildTable();
    }
    const std::uint8_t* const indices =
        ReadIndices(source, m_uintSrcBits, m_run.PixelCount, m_pSrcColorMap->GetEntryCount(), m_indices);
    m_indices.resize(m_run.PixelCount);
    for (std::size_t i = 0; i < m_run.PixelCount; ++i) {
        m_indices[i] = m_table[indices[i]];
    }
    PackIndices(m_indices.data(), m_uintDstBits, m_run.PixelCount, destination);
}

// --- Argb32ToIndexedLink

void Argb32ToIndexedLink::CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const {
    IColorTransformLinkImpl::CreateNewInstance(ppNewInstance);
    *ppNewInstance = std::make_unique<Argb32ToIndexedLink>();
}

void Argb32ToIndexedLink::AllocOutBuffer(MemPtr<std::uint8_t>* ppScanlineBuffer) const {
    AllocScanline(ppScanlineBuffer, m_run.PixelCount, m_uintDstBits, ScanlineAlignment);
}

/// The run with pixels below the threshold replaced by the transparent entry and all others made opaque; the run itself
/// when the threshold is not in use or the map has no transparent entry.
const std::uint8_t* Argb32ToIndexedLink::CutByAlpha(const std::uint8_t* source) {
    if (!m_bUsePaletteAlphaThreshold) {
        return source;
    }
    std::uint32_t transparent = 0;
    while (transparent < m_pDstColorMap->GetEntryCount() && m_pDstColorMap->GetAlpha(transparent) != 0) {
        ++transparent;
    }
    if (transparent == m_pDstColorMap->GetEntryCount()) {
        return source;
    }
    std::uint8_t entry[4];
    m_pDstColorMap->GetEntryArgb(transparent, entry);
    const auto replacement = LoadSample<std::uint32_t>(entry, 0);
    m_workingCopy.resize(std::size_t{m_run.PixelCount} * 4);
    for (std::size_t i = 0; i < m_run.PixelCount; ++i) {
        const auto pixel = LoadSample<std::uint32_t>(source, i);
        const bool isBelow = (pixel >> 24) < m_paletteAlphaThreshold;
        StoreSample(m_workingCopy.data(), i, isBelow ? replacement : pixel | 0xFF000000U);
    }
    return m_workingCopy.data();
}

/// Makes the dithering object on the first run. It borrows the map and counts on the width, hence a new one when they
/// change.
void Argb32ToIndexedLink::PrepareDithering() {
    const DitheringSetup setup{m_ditheringType, m_uintDitheringIntensity, m_run.PixelCount, m_pDstColorMap};
    if (setup == m_ditheringSetup) {
        return;
    }
    std::unique_ptr<Dithering> dithering;
    if (setup.Type != DitheringType::None) {
        dithering = CreateDithering(m_srcFormat, m_dstFormat, setup.Type);
        dithering->Open(setup.Width, setup.Intensity, setup.Map);
    }
    m_pDithering = std::move(dithering);
    m_ditheringSetup = setup;
}

void Argb32ToIndexedLink::MapPixels(const std::uint8_t* source, std::uint8_t* indices) {
    if (m_pDithering) {
        m_pDithering->ApplyDithering(source, indices);
    } else {
        m_pDstColorMap->FindNearestEntries(source, m_run.PixelCount, indices);
    }
}

void Argb32ToIndexedLink::ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) {
    if (BeginRun(source, destination)) {
        return;
    }
    RequirePalette(m_pDstColorMap);
    if (m_run.PixelCount == 0) {
        return;
    }
    PrepareDithering();
    source = CutByAlpha(source);
    if (m_uintDstBits == 8) {
        MapPixels(source, destination);
        return;
    }
    m_indices.resize(m_run.PixelCount);
    MapPixels(source, m_indices.data());
    PackIndices(m_indices.data(), m_uintDstBits, m_run.PixelCount, destination);
}

} // namespace ImagingFramework
