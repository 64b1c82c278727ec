#include "metadata/Png/PngFrameEncoder.h"

#include "Common/Numeric.h"
#include "metadata/Frames/PaletteIndexMap.h"

#include <algorithm>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr PixelFormat SavedPixelFormats[] = {
    PixelFormat::Format1bppIndexed,    PixelFormat::Format4bppIndexed,     PixelFormat::Format8bppIndexed,
    PixelFormat::Format24bppRgb,       PixelFormat::Format32bppRgb,        PixelFormat::Format32bppArgb,
    PixelFormat::Format48bppRgb,       PixelFormat::Format64bppArgb,       PixelFormat::Format8bppGrayScale,
    PixelFormat::Format16bppGrayScale, PixelFormat::Format16bppAGrayScale, PixelFormat::Format32bppAGrayScale,
};
constexpr std::uint32_t PassCount = 7; ///< of an interlaced frame

std::uint32_t PixelsPerMetre(double dotsPerInch) {
    constexpr double metresPerInch = 0.0254;
    return static_cast<std::uint32_t>(std::max(0, TruncateToInt32(dotsPerInch / metresPerInch)));
}

} // namespace

std::span<const PixelFormat> PngFrameEncoder::GetSavedPixelFormats() const { return SavedPixelFormats; }

PixelFormat PngFrameEncoder::GetAppropriateFormatInternal(PixelFormat format) const {
    if (PixelFormatHasAlpha(format)) {
        return PixelFormatIsExtended(format) ? PixelFormat::Format64bppArgb : PixelFormat::Format32bppArgb;
    }
    return PixelFormatIsExtended(format) ? PixelFormat::Format48bppRgb : PixelFormat::Format24bppRgb;
}

void PngFrameEncoder::SetCompressionLevel(std::int32_t level) {
    if (level < PngSettings::DefaultLevel || level > 9) {
        throw ArgumentOutOfRangeException("level");
    }
    m_settings.CompressionLevel = level;
}

std::uint64_t PngFrameEncoder::GetProgressStepCount() const {
    return std::uint64_t{m_settings.Interlaced ? PassCount : 1} * GetSource().GetHeight();
}

void PngFrameEncoder::EncodeFrameInternal() {
    const BitmapData& source = GetSource();
    // An earlier frame that failed may have left something.
    GetWriter().Seek(0);
    PngCompressor compressor(GetWriter());
    compressor.Configure(source.GetPixelFormat(), source.GetWidth(), source.GetHeight(), m_settings);
    compressor.SetResolution(PixelsPerMetre(source.GetHorizontalResolution()),
                             PixelsPerMetre(source.GetVerticalResolution()));
    const std::uint32_t entryCount =
        PixelFormatIsIndexed(source.GetPixelFormat()) ? DoEncodePalette(compressor) : ColorMap::MaximumEntryCount;
    if (source.GetProfileNameRef() != nullptr) {
        compressor.SetProfile(source.GetProfileData());
    }
    EncodeLines(compressor, entryCount);
    compressor.Finish();
    m_bFrameWritten = true;
}

std::uint32_t PngFrameEncoder::DoEncodePalette(PngCompressor& compressor) const {
    const ColorMap* const pMap = GetSource().GetColorMapRef();
    if (pMap == nullptr || pMap->IsEmpty()) {
        throw PaletteException();
    }
    if (pMap->GetPixelFormat() != PixelFormat::Format24bppRgb && pMap->GetPixelFormat() != PixelFormat::Format32bppArgb) {
        throw UnsupportedPixelFormatException();
    }
    const std::uint32_t count = std::min(pMap->GetEntryCount(), 1U << PixelFormatSize(GetSource().GetPixelFormat()));
    compressor.SetPalette(*pMap, count);
    return count;
}

void PngFrameEncoder::EncodeLines(PngCompressor& compressor, std::uint32_t entryCount) {
    const BitmapData& source = GetSource();
    // Readers refuse files whose indices point beyond the palette.
    PaletteIndexMap map;
    if (PixelFormatIsIndexed(source.GetPixelFormat())) {
        map = PaletteIndexMap(PixelFormatSize(source.GetPixelFormat()), entryCount);
    }
    std::vector<std::uint8_t> line(map.IsNeeded() ? source.GetRowSize() : 0);
    const std::uint32_t passes = compressor.Start();
    for (std::uint32_t pass = 0; pass < passes; ++pass) {
        for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
            const std::uint8_t* pLine = source.GetScanlineRef(row);
            if (map.IsNeeded()) {
                map.Apply(pLine, line.data(), line.size());
                pLine = line.data();
            }
            compressor.WriteLine(pLine);
            ReportScanlines(1);
        }
    }
}

} // namespace ImagingFramework
