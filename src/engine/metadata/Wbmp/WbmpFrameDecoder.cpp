#include "metadata/Wbmp/WbmpFrameDecoder.h"

#include "Common/FrameSize.h"
#include "metadata/Wbmp/WbmpInteger.h"

namespace ImagingFramework {

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
    GetReader().Seek(static_cast<std::int64_t>(m_uintDataOffset));
    FillLines([this](std::uint8_t* pLine, std::uint32_t) { GetReader().ReadBytes(GetRowSize(), pLine, GetRowSize()); });
}

} // namespace ImagingFramework
