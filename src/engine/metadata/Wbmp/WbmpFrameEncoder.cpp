#include "metadata/Wbmp/WbmpFrameEncoder.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr PixelFormat SavedPixelFormats[] = {PixelFormat::Format1bppIndexed};

} // namespace

std::span<const PixelFormat> WbmpFrameEncoder::GetSavedPixelFormats() const {
    return SavedPixelFormats;
}

PixelFormat WbmpFrameEncoder::GetAppropriateFormatInternal(PixelFormat) const {
    return PixelFormat::Format1bppIndexed;
}

void WbmpFrameEncoder::EncodeFrameInternal() {
    const BitmapData& source = GetSource();
    if (!IsPixelFormatSupported(source.GetPixelFormat())) {
        throw UnsupportedPixelFormatException();
    }
    const bool inverted = !IsFirstEntryDark();
    // An earlier frame that failed may have left something.
    GetWriter().Seek(0);
    GetWriter().WriteWord(0); // type and fixed header
    SaveUIntSeptets(source.GetWidth());
    SaveUIntSeptets(source.GetHeight());
    const std::size_t rowSize = source.GetRowSize();
    std::vector<std::uint8_t> line(inverted ? rowSize : 0);
    for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
        const std::uint8_t* pLine = source.GetScanlineRef(row);
        if (inverted) {
            std::transform(pLine, pLine + rowSize, line.begin(), std::bit_not<>());
            pLine = line.data();
        }
        GetWriter().WriteBytes(pLine, rowSize);
        ReportScanlines(1);
    }
    m_bFrameWritten = true;
}

/// By its blue sample alone.
bool WbmpFrameEncoder::IsFirstEntryDark() const {
    const ColorMap* const pMap = GetSource().GetColorMapRef();
    if (pMap == nullptr || pMap->IsEmpty()) {
        throw PaletteException();
    }
    std::uint8_t entry[4];
    pMap->GetEntryArgb(0, entry);
    return entry[0] == 0;
}

void WbmpFrameEncoder::SaveUIntSeptets(std::uint32_t value) {
    std::uint32_t shift = 0;
    while (value >> shift > 0x7F) {
        shift += 7;
    }
    for (; shift != 0; shift -= 7) {
        GetWriter().WriteByte(static_cast<std::uint8_t>(0x80 | (value >> shift & 0x7F)));
    }
    GetWriter().WriteByte(static_cast<std::uint8_t>(value & 0x7F));
}

} // namespace ImagingFramework
