#include "metadata/Pcx/PcxFrameDecoder.h"

#include "Common/FrameSize.h"
#include "metadata/Frames/WidenIndices.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr std::uint8_t PcxManufacturer = 0x0A;
constexpr std::uint8_t RunLengthEncoding = 1;
/// A byte of 0xC0 and above counts the repetitions of the byte behind it.
constexpr std::uint8_t RunMark = 0xC0;
constexpr std::uint8_t PaletteMark = 0x0C;
/// Two bytes of a file stand for 63 bytes at most; a little more is forgiven.
constexpr std::uint64_t PackedRatio = 32;
constexpr std::uint64_t TrustedDataSize = std::uint64_t{64} << 10;

constexpr std::uint32_t Combine(std::uint32_t planes, std::uint32_t bits) {
    return planes << 8 | bits;
}

PixelFormat GetPcxPixelFormat(std::uint32_t planes, std::uint32_t bits) {
    switch (Combine(planes, bits)) {
    case Combine(1, 1):
        return PixelFormat::Format1bppIndexed;
    case Combine(1, 2):
    case Combine(1, 4):
        return PixelFormat::Format4bppIndexed;
    case Combine(1, 8):
    case Combine(2, 1):
    case Combine(3, 1):
    case Combine(4, 1):
        return PixelFormat::Format8bppIndexed;
    case Combine(3, 8):
        return PixelFormat::Format24bppRgb;
    default:
        throw UnsupportedPixelFormatException();
    }
}

double ResolutionOrDefault(std::uint16_t dpi) {
    return dpi == 0 ? BitmapData::DefaultResolution : dpi;
}

void SetEntry(ColorMap& map, std::uint32_t index, const std::uint8_t* pRedGreenBlue) {
    const std::uint8_t entry[3] = {pRedGreenBlue[2], pRedGreenBlue[1], pRedGreenBlue[0]};
    map.SetEntryRgb(index, entry);
}

/// Fills a block of memory from packed bytes that come in pieces.
class RunUnpacker {
public:
    RunUnpacker(std::uint8_t* pTarget, std::uint64_t size) : m_pTarget(pTarget), m_uintLeft(size) {}

    bool IsDone() const noexcept { return m_uintLeft == 0; }
    /// The number of bytes used, which is below `size` only when all is done.
    std::size_t Unpack(const std::uint8_t* pBytes, std::size_t size) {
        std::size_t used = 0;
        while (used < size && !IsDone()) {
            const std::uint8_t byte = pBytes[used++];
            if (m_bRunPending) {
                Put(byte, m_uintRun);
                m_bRunPending = false;
            } else if (byte >= RunMark) {
                m_uintRun = byte & 0x3FU;
                m_bRunPending = true;
            } else {
                Put(byte, 1);
            }
        }
        return used;
    }

private:
    void Put(std::uint8_t byte, std::uint32_t count) {
        if (count > m_uintLeft) {
            throw UnexpectedException();
        }
        std::memset(m_pTarget, byte, count);
        m_pTarget += count;
        m_uintLeft -= count;
    }

    std::uint8_t* m_pTarget;
    std::uint64_t m_uintLeft;
    std::uint32_t m_uintRun = 0;
    bool m_bRunPending = false; ///< the byte to repeat comes next
};

} // namespace

// --- Header

void PcxFrameDecoder::ReadHeaders() {
    m_uintDataEnd = 0;
    GetReader().Seek(0);
    if (GetReader().GetRemaining() < sizeof m_header) {
        throw MediaCorruptedException();
    }
    GetReader().ReadBytes(sizeof m_header, &m_header, sizeof m_header);
    if (m_header.Manufacturer != PcxManufacturer || m_header.Encoding != RunLengthEncoding || m_header.PlaneCount < 1 ||
        m_header.PlaneCount > 4 || m_header.BitsPerPixel < 1 || m_header.BitsPerPixel > 8) {
        throw MediaCorruptedException();
    }
    LoadBasicParams();
    CheckDataSize();
    m_uintFrameCount = 1;
}

void PcxFrameDecoder::LoadBasicParams() {
    m_pixelFormat = GetPcxPixelFormat(m_header.PlaneCount, m_header.BitsPerPixel);
    if (m_header.XMax < m_header.XMin || m_header.YMax < m_header.YMin) {
        throw MediaCorruptedException();
    }
    m_uintWidth = std::uint32_t{m_header.XMax} - m_header.XMin + 1;
    m_uintHeight = std::uint32_t{m_header.YMax} - m_header.YMin + 1;
}

void PcxFrameDecoder::CheckDataSize() {
    CheckFrameSize(m_uintWidth, m_uintHeight, m_pixelFormat);
    if (m_header.BytesPerLine < (m_uintWidth * m_header.BitsPerPixel + 7) / 8 ||
        GetDecompressedLineSize() * m_uintHeight > PackedRatio * GetReader().GetRemaining() + TrustedDataSize) {
        throw MediaCorruptedException();
    }
}

double PcxFrameDecoder::GetResolutionX() const {
    return ResolutionOrDefault(m_header.HorizontalDpi);
}

double PcxFrameDecoder::GetResolutionY() const {
    return ResolutionOrDefault(m_header.VerticalDpi);
}

std::shared_ptr<ColorMap> PcxFrameDecoder::GetColorMap() {
    if (!PixelFormatIsIndexed(m_pixelFormat)) {
        return nullptr;
    }
    const std::uint32_t count = 1U << (m_header.PlaneCount * m_header.BitsPerPixel);
    auto map = std::make_shared<ColorMap>(count, PixelFormat::Format24bppRgb);
    if (count == ColorMap::MaximumEntryCount) {
        ReadFilePalette(*map);
        return map;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        SetEntry(*map, i, m_header.Palette[i]);
    }
    return map;
}

void PcxFrameDecoder::ReadFilePalette(ColorMap& map) {
    if (m_uintDataEnd == 0) {
        DoDecompressPcxBytes();
    }
    std::uint8_t bytes[1 + 3 * ColorMap::MaximumEntryCount];
    GetReader().Seek(static_cast<std::int64_t>(m_uintDataEnd));
    if (GetReader().GetRemaining() < sizeof bytes) {
        throw MediaCorruptedException();
    }
    GetReader().ReadBytes(sizeof bytes, bytes, sizeof bytes);
    if (bytes[0] != PaletteMark) {
        throw MediaCorruptedException();
    }
    for (std::uint32_t i = 0; i < ColorMap::MaximumEntryCount; ++i) {
        SetEntry(map, i, bytes + 1 + 3 * i);
    }
}

// --- Pixels

void PcxFrameDecoder::DecodeFrameInternal() {
    const MemPtr<std::uint8_t> bytes = DoDecompressPcxBytes();
    // The bits behind the last pixel of a line are as the file has them.
    CreateBitmapData(PixelCover::Whole);
    if (PixelFormatIsIndexed(m_pixelFormat)) {
        SetColorMap(GetColorMap());
    }
    if (!IsThumbnailMode()) {
        SetResolution();
    }
    FillLines([&](std::uint8_t* pLine, std::uint32_t row) {
        DoDecompressScanLine(bytes.Get() + GetDecompressedLineSize() * row, pLine);
    });
}

MemPtr<std::uint8_t> PcxFrameDecoder::DoDecompressPcxBytes() {
    constexpr std::uint64_t blockSize = std::uint64_t{64} << 10;
    const std::uint64_t size = GetDecompressedLineSize() * m_uintHeight;
    MemPtr<std::uint8_t> bytes;
    bytes.AllocateSize(size);
    std::vector<std::uint8_t> block(blockSize);
    std::uint64_t position = sizeof m_header;
    GetReader().Seek(static_cast<std::int64_t>(position));
    for (RunUnpacker unpacker(bytes.Get(), size); !unpacker.IsDone();) {
        const std::uint64_t count = std::min(blockSize, GetReader().GetRemaining());
        if (count == 0) {
            throw MediaCorruptedException();
        }
        GetReader().ReadBytes(count, block.data(), blockSize);
        position += unpacker.Unpack(block.data(), count);
        UpdateEvents(0);
    }
    m_uintDataEnd = position;
    return bytes;
}

void PcxFrameDecoder::DoDecompressScanLine(const std::uint8_t* pPlanes, std::uint8_t* pLine) const {
    const std::size_t packedSize = (std::size_t{m_uintWidth} * m_header.BitsPerPixel + 7) / 8;
    switch (Combine(m_header.PlaneCount, m_header.BitsPerPixel)) {
    case Combine(3, 8):
        InterleavePlanes(pPlanes, pLine);
        return;
    case Combine(2, 1):
    case Combine(3, 1):
    case Combine(4, 1):
        MergePlanes(pPlanes, pLine);
        return;
    case Combine(1, 2):
        std::memcpy(pLine, pPlanes, packedSize);
        WidenIndices(pLine, m_uintWidth);
        return;
    case Combine(1, 1):
    case Combine(1, 4):
    case Combine(1, 8):
        std::memcpy(pLine, pPlanes, packedSize);
        return;
    default:
        throw MediaCorruptedException();
    }
}

void PcxFrameDecoder::InterleavePlanes(const std::uint8_t* pPlanes, std::uint8_t* pLine) const noexcept {
    const std::uint8_t* const pRed = pPlanes;
    const std::uint8_t* const pGreen = pRed + m_header.BytesPerLine;
    const std::uint8_t* const pBlue = pGreen + m_header.BytesPerLine;
    for (std::size_t x = 0; x < m_uintWidth; ++x) {
        pLine[3 * x] = pBlue[x];
        pLine[3 * x + 1] = pGreen[x];
        pLine[3 * x + 2] = pRed[x];
    }
}

/// The pixel's bit of plane p becomes bit p of its index.
void PcxFrameDecoder::MergePlanes(const std::uint8_t* pPlanes, std::uint8_t* pLine) const noexcept {
    for (std::size_t x = 0; x < m_uintWidth; ++x) {
        std::uint32_t index = 0;
        for (std::uint32_t plane = 0; plane < m_header.PlaneCount; ++plane) {
            const std::uint32_t byte = pPlanes[std::size_t{plane} * m_header.BytesPerLine + x / 8];
            index |= (byte >> (7 - x % 8) & 1) << plane;
        }
        pLine[x] = static_cast<std::uint8_t>(index);
    }
}

} // namespace ImagingFramework
