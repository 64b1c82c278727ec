#include "metadata/Wbmp/WbmpFrameDecoder.h"

#include "Common/FrameSize.h"
#include "metadata/Wbmp/WbmpInteger.h"

#include <vector>

namespace ImagingFramework {

void WbmpFrameDecoder::Attach(ObjPtr<AbstractReader> pReader) {
    if (!pReader) {
        throw ArgumentNullPointerException("pReader");
    }
    Detach();
    m_pReader = std::move(pReader);
    try {
        InitializeWbmp();
    } catch (...) {
        Detach();
        throw;
    }
}

void WbmpFrameDecoder::InitializeWbmp() {
    GetReader().Seek(0);
    const std::uint8_t type = ReadHeaderByte();
    ReadHeaderByte(); // fixed header
    if (type != 0) {
        throw MediaCorruptedException();
    }
    m_uintWidth = ReadInteger();
    m_uintHeight = ReadInteger();
    m_pixelFormat = PixelFormat::Format1bppIndexed;
    m_uintDataOffset = GetReader().GetBytePosition();
    CheckFrameSize(m_uintWidth, m_uintHeight, m_pixelFormat);
    if (GetRowSize() * m_uintHeight > GetReader().GetRemaining()) {
        throw MediaCorruptedException();
    }
    m_uintFrameCount = 1;
}

std::uint8_t WbmpFrameDecoder::ReadHeaderByte() {
    if (GetReader().GetRemaining() == 0) {
        throw MediaCorruptedException();
    }
    return GetReader().ReadByte();
}

std::uint32_t WbmpFrameDecoder::ReadInteger() {
    WbmpInteger integer;
    WbmpInteger::State state = WbmpInteger::State::Incomplete;
    while (state == WbmpInteger::State::Incomplete) {
        state = integer.AddByte(ReadHeaderByte());
    }
    if (state == WbmpInteger::State::Invalid) {
        throw MediaCorruptedException();
    }
    return integer.GetValue();
}

std::shared_ptr<ColorMap> WbmpFrameDecoder::GetColorMap() {
    auto map = std::make_shared<ColorMap>(2, PixelFormat::Format24bppRgb);
    constexpr std::uint8_t black[3] = {0, 0, 0};
    constexpr std::uint8_t white[3] = {255, 255, 255};
    map->SetEntryRgb(0, black);
    map->SetEntryRgb(1, white);
    return map;
}

void WbmpFrameDecoder::DecodeFrameInternal() {
    CreateBitmapData(PixelCover::Whole);
    SetColorMap(GetColorMap());
    if (!IsThumbnailMode()) {
        SetResolution();
    }
    const std::uint64_t rowSize = GetRowSize();
    BitmapData* const pOutput = GetDirectOutput();
    std::vector<std::uint8_t> line(pOutput == nullptr ? rowSize : 0);
    GetReader().Seek(static_cast<std::int64_t>(m_uintDataOffset));
    for (std::uint32_t row = 0; row < m_uintHeight; ++row) {
        std::uint8_t* const pLine = pOutput == nullptr ? line.data() : pOutput->GetScanlineRef(row);
        GetReader().ReadBytes(rowSize, pLine, rowSize);
        if (pOutput == nullptr) {
            SetScanline(pLine, row);
        }
        UpdateEvents(1);
    }
}

} // namespace ImagingFramework
