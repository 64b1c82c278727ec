#include "colorconversion/AdaptivePaletteCreator.h"

#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/HexadecimalTreeQuantizer.h"
#include "colorconversion/MedianCutQuantizer.h"
#include "colorconversion/OctreeColorQuantizer.h"

#include <array>
#include <limits>
#include <span>
#include <utility>

namespace ImagingFramework {

namespace {

using Pixel = std::array<std::uint8_t, 4>;

constexpr std::uint32_t MinimumArgbEntryCount = 8;

/// Brings the pixels of at least `threshold` to the front, makes them opaque, and gives their number. Ends that run toward
/// each other decide the order in which they stand, and the order decides what a tree merges.
std::size_t GatherOpaque(std::span<Pixel> pixels, std::uint8_t threshold) {
    std::size_t first = 0;
    std::size_t last = pixels.size();
    while (true) {
        for (; first < last && pixels[first][3] >= threshold; ++first) {
            pixels[first][3] = 255;
        }
        while (first < last && pixels[last - 1][3] < threshold) {
            --last;
        }
        if (first == last) {
            return first;
        }
        std::swap(pixels[first], pixels[last - 1]);
    }
}

/// `palette` behind an entry of transparent black.
ColorMap BehindTransparentEntry(const ColorMap& palette) {
    ColorMap map(palette.GetEntryCount() + 1, PixelFormat::Format32bppArgb);
    for (std::uint32_t i = 0; i < palette.GetEntryCount(); ++i) {
        std::uint8_t entry[4];
        palette.GetEntryArgb(i, entry);
        map.SetEntryArgb(i + 1, entry);
    }
    return map;
}

} // namespace

std::unique_ptr<ColorQuantizer> AdaptivePaletteCreator::CreateQuantizer() const {
    switch (m_parameters.Algorithm) {
    case ColorQuantizationAlgorithm::Octree:
        if (m_parameters.CreateWithAlpha) {
            return std::make_unique<HexadecimalTreeQuantizer>();
        }
        return std::make_unique<OctreeColorQuantizer>();
    case ColorQuantizationAlgorithm::MedianCut:
        return std::make_unique<MedianCutQuantizer>();
    }
    throw ArgumentException("ColorQuantizationAlgorithm", "Enum value is not valid.");
}

template <class AddRow> void AdaptivePaletteCreator::ForEachRow(const BitmapData& bitmapData, AddRow addRow) {
    // Without a profile to convert to, the picture's own would change nothing, and a broken one would only stop this.
    ColorSpaceManager manager;
    manager.SetColorManagementEngine(ColorManagementEngine::None);
    manager.InitializePerScanlineHandling(bitmapData.GetWidth(), bitmapData.GetPixelFormat(),
                                          bitmapData.GetColorMapRef(), nullptr, PixelFormat::Format32bppArgb);
    MemPtr<Pixel> row;
    row.AllocateCount(bitmapData.GetWidth());
    const std::uint32_t height = bitmapData.GetHeight();
    ResetProgress(static_cast<std::int32_t>(std::min<std::uint32_t>(height, std::numeric_limits<std::int32_t>::max())));
    for (std::uint32_t y = 0; y < height; ++y) {
        manager.TransformScanline(bitmapData.GetScanlineRef(y), row.Get()->data());
        addRow(std::span(row.Get(), bitmapData.GetWidth()));
        UpdateEvents(1);
    }
}

void AdaptivePaletteCreator::GetPalette(const BitmapData& bitmapData, ColorMap& colorMap) {
    const bool withAlpha = m_parameters.CreateWithAlpha;
    const bool useThreshold = withAlpha && m_parameters.UseAlphaThreshold;
    if (withAlpha && m_parameters.EntryCount < MinimumArgbEntryCount) {
        throw ArgumentOutOfRangeException("ColorMapEntryCount", "Should be at least 8 for Argb palette.");
    }
    const std::unique_ptr<ColorQuantizer> quantizer = CreateQuantizer();
    // With the threshold, one entry is for all that lies below it.
    quantizer->Open(8, withAlpha, m_parameters.EntryCount - (useThreshold ? 1 : 0));
    ForEachRow(bitmapData, [&](std::span<Pixel> row) {
        if (useThreshold) {
            quantizer->AddColorsRgb(row.front().data(), GatherOpaque(row, m_parameters.AlphaThreshold));
        } else if (withAlpha) {
            quantizer->AddColorsArgb(row.front().data(), row.size());
        } else {
            quantizer->AddColorsRgb(row.front().data(), row.size());
        }
    });
    std::unique_ptr<ColorMap> palette;
    quantizer->GetPalette(palette);
    colorMap = useThreshold ? BehindTransparentEntry(*palette) : *palette;
}

} // namespace ImagingFramework
