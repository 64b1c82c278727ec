#include "metadata/Bmp/BitmapFrameDecoder.h"

#include "Common/FrameSize.h"

#include <algorithm>
#include <array>

namespace ImagingFramework {

namespace {

/// Rows are read in blocks of about this many bytes, so that they stay in the cache on their way to the raster.
constexpr std::uint64_t BlockSize = std::uint64_t{256} << 10;
/// A run-length encoded frame above this size must be backed by enough data. A row counts for at least TrustedRowSize,
/// because a row costs time however narrow it is.
constexpr std::uint64_t TrustedRasterSize = std::uint64_t{32} << 20;
constexpr std::uint64_t TrustedRowSize = 256;
constexpr std::uint32_t StrideAlignment = BitmapData::StrideAlignment;
constexpr double MetresPerInch = 0.0254;
constexpr std::uint32_t GreenMask555 = 0x3E0;

} // namespace

// --- Headers

void BitmapFrameDecoder::DoDecodeHeader() {
    m_header = BmpHeader::Read(GetReader());
    LoadBasicParams();
    m_uintFrameCount = 1;
}

void BitmapFrameDecoder::LoadBasicParams() {
    const bool packed = m_header.Compression != 0;
    m_compression = FrameCompressionType::None;
    switch (m_header.BitCount) {
    case 1:
        m_pixelFormat = PixelFormat::Format1bppIndexed;
        break;
    case 4:
    case 8:
        m_pixelFormat = m_header.BitCount == 4 ? PixelFormat::Format4bppIndexed : PixelFormat::Format8bppIndexed;
        m_compression = packed ? FrameCompressionType::Rle : FrameCompressionType::None;
        break;
    case 16:
        if (packed && m_header.HeaderSize == BmpHeader::AlphaMaskHeaderSize) {
            m_pixelFormat = PixelFormat::Format16bppArgb1555;
        } else {
            m_pixelFormat = !packed || m_header.GreenMask == GreenMask555 ? PixelFormat::Format16bppRgb555
                                                                          : PixelFormat::Format16bppRgb565;
        }
        break;
    case 24:
        m_pixelFormat = PixelFormat::Format24bppRgb;
        break;
    case 32:
        // Masks of 32-bit files are not looked at; the fourth byte carries no alpha.
        m_pixelFormat = PixelFormat::Format32bppRgb;
        break;
    default:
        throw UnsupportedPixelFormatException();
    }
    m_uintWidth = static_cast<std::uint32_t>(m_header.Width);
    m_bBottomUp = m_header.Height > 0;
    m_uintHeight = static_cast<std::uint32_t>(m_bBottomUp ? m_header.Height : -m_header.Height);
}

void BitmapFrameDecoder::RequireAttached() const {
    if (!m_pReader) {
        throw NotInitializedException("BitmapFrameDecoder");
    }
}

double BitmapFrameDecoder::GetResolutionX() const {
    RequireAttached();
    return m_header.HorizontalPixelsPerMetre == 0 ? BitmapData::DefaultResolution
                                                  : m_header.HorizontalPixelsPerMetre * MetresPerInch;
}

double BitmapFrameDecoder::GetResolutionY() const {
    RequireAttached();
    // The horizontal field decides for both axes; a file without a vertical value then reports 0.
    return m_header.HorizontalPixelsPerMetre == 0 ? BitmapData::DefaultResolution
                                                  : m_header.VerticalPixelsPerMetre * MetresPerInch;
}

std::shared_ptr<ColorMap> BitmapFrameDecoder::GetColorMap() {
    RequireAttached();
    if (!HasPalette()) {
        return nullptr;
    }
    const std::uint32_t count = m_header.GetPaletteEntryCount();
    const std::uint32_t entrySize = m_header.GetPaletteEntrySize();
    std::array<std::uint8_t, 4 * ColorMap::MaximumEntryCount> bytes{};
    GetReader().Seek(static_cast<std::int64_t>(m_header.PaletteOffset));
    GetReader().ReadBytes(std::uint64_t{count} * entrySize, bytes.data(), bytes.size());
    auto map =
        std::make_shared<ColorMap>(count, entrySize == 4 ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint8_t* const pEntry = bytes.data() + i * entrySize;
        const std::uint8_t entry[4] = {pEntry[0], pEntry[1], pEntry[2], 255};
        map->SetEntryArgb(i, entry);
    }
    return map;
}

// --- Pixels

void BitmapFrameDecoder::CheckPixelData() {
    CheckFrameSize(m_uintWidth, m_uintHeight, GetPixelFormat());
    const std::uint64_t stride = CalculateStride64(m_uintWidth, m_header.BitCount, StrideAlignment);
    GetReader().Seek(m_header.PixelOffset);
    const std::uint64_t remaining = GetReader().GetRemaining();
    if (m_compression != FrameCompressionType::Rle) {
        if (remaining < stride * m_uintHeight) {
            throw OutOfRangeException();
        }
        return;
    }
    // A few bytes can stand for any number of empty lines; large frames are believed only when runs could fill them.
    constexpr std::uint64_t pixelsPerRun = 255;
    constexpr std::uint64_t bytesPerRun = 2;
    if (std::max(stride, TrustedRowSize) * m_uintHeight > TrustedRasterSize &&
        remaining / bytesPerRun * pixelsPerRun < std::uint64_t{m_uintWidth} * m_uintHeight) {
        throw MediaCorruptedException();
    }
}

void BitmapFrameDecoder::DecodeFrameInternal() {
    CheckPixelData();
    CreateBitmapData(m_compression == FrameCompressionType::Rle ? PixelCover::Partly : PixelCover::Whole);
    SetResolution();
    m_indexMap = {};
    if (HasPalette()) {
        std::shared_ptr<ColorMap> map = GetColorMap();
        m_indexMap = PaletteIndexMap(m_header.BitCount, map->GetEntryCount());
        SetColorMap(std::move(map));
    }
    GetReader().Seek(m_header.PixelOffset);
    if (m_compression == FrameCompressionType::Rle) {
        DecodeRle();
    } else {
        DecodeUncompressed();
    }
}

void BitmapFrameDecoder::DecodeUncompressed() {
    const std::uint64_t stride = CheckedStride(m_uintWidth, GetPixelFormat(), StrideAlignment);
    const auto rowsPerBlock =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(BlockSize / stride, 1, m_uintHeight));
    BitmapData* const pOutput = GetDirectOutput();
    if (pOutput != nullptr && !m_bBottomUp && pOutput->GetRowSize() == stride && pOutput->GetStride() == stride) {
        DecodeUncompressedDirectly(*pOutput, rowsPerBlock);
        return;
    }
    MemPtr<std::uint8_t> block;
    block.AllocateSize(rowsPerBlock * stride);
    for (std::uint32_t row = 0; row < m_uintHeight;) {
        const std::uint32_t count = std::min(rowsPerBlock, m_uintHeight - row);
        if (m_bBottomUp) {
            // Rows go out from the top, so the file is read from its end.
            GetReader().Seek(static_cast<std::int64_t>(m_header.PixelOffset + stride * (m_uintHeight - row - count)));
        }
        GetReader().ReadBytes(count * stride, block.Get(), rowsPerBlock * stride);
        m_indexMap.Apply(block.Get(), block.Get(), count * stride);
        for (std::uint32_t i = 0; i < count; ++i) {
            SetScanline(block.Get() + stride * (m_bBottomUp ? count - 1 - i : i), row + i);
            UpdateEvents(1);
        }
        row += count;
    }
}

void BitmapFrameDecoder::DecodeUncompressedDirectly(BitmapData& output, std::uint32_t rowsPerBlock) {
    for (std::uint32_t row = 0; row < m_uintHeight;) {
        const std::uint32_t count = std::min(rowsPerBlock, m_uintHeight - row);
        std::uint8_t* const pRows = output.GetScanlineRef(row);
        const std::uint64_t size = std::uint64_t{count} * output.GetStride();
        GetReader().ReadBytes(size, pRows, size);
        m_indexMap.Apply(pRows, pRows, size);
        for (std::uint32_t i = 0; i < count; ++i) {
            UpdateEvents(1);
        }
        row += count;
    }
}

void BitmapFrameDecoder::DoDecodeScanLine(BmpRleReader& rle, std::uint8_t* pLine) {
    try {
        rle.ReadLine(pLine);
    } catch (const OutOfRangeException&) {
        throw MediaCorruptedException();
    } catch (const Exception&) {
        throw;
    } catch (...) {
        throw UnexpectedException();
    }
}

void BitmapFrameDecoder::DecodeRle() {
    BitmapData* const pOutput = GetDirectOutput();
    // The lines come in the order of the file, so whoever wants them from the top waits for all of them.
    BitmapData privateRaster;
    if (pOutput == nullptr) {
        privateRaster.Create(m_uintWidth, m_uintHeight, GetPixelFormat());
    }
    BitmapData& raster = pOutput == nullptr ? privateRaster : *pOutput;
    const std::size_t rowSize = raster.GetRowSize();
    BmpRleReader rle(GetReader(), m_header.BitCount, m_uintWidth);
    for (std::uint32_t line = 0; line < m_uintHeight && !rle.IsEnd(); ++line) {
        std::uint8_t* const pLine = raster.GetScanlineRef(m_bBottomUp ? m_uintHeight - 1 - line : line);
        DoDecodeScanLine(rle, pLine);
        m_indexMap.Apply(pLine, pLine, rowSize);
        UpdateEvents(1);
    }
    if (pOutput == nullptr) {
        for (std::uint32_t row = 0; row < m_uintHeight; ++row) {
            SetScanline(raster.GetScanlineRef(row), row);
            UpdateEvents(0);
        }
    }
}

} // namespace ImagingFramework
