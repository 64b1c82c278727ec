#include "metadata/Bmp/BitmapFrameEncoder.h"

#include "metadata/Bmp/BmpHeader.h"
#include "metadata/Bmp/BmpRleChain.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t HeadersSize = BmpHeader::FileHeaderSize + BmpHeader::InfoHeaderSize;
constexpr std::int64_t FileSizePosition = 2;
constexpr std::int64_t ImageSizePosition = 34;
constexpr std::uint64_t BlockSize = std::uint64_t{256} << 10;

constexpr PixelFormat SavedPixelFormats[] = {
    PixelFormat::Format1bppIndexed,   PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed,
    PixelFormat::Format8bppGrayScale, PixelFormat::Format24bppRgb,    PixelFormat::Format32bppRgb,
    PixelFormat::Format32bppArgb,
};

std::uint32_t PaletteEntryCount(PixelFormat format) {
    const std::uint32_t bits = PixelFormatSize(format);
    return bits < 9 ? 1U << bits : 0;
}

/// Rounded up, so that a resolution comes back not smaller than it was.
std::uint32_t PixelsPerMetre(double dotsPerInch) {
    constexpr double metresPerInch = 0.0254;
    constexpr double maximum = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::uint32_t>(std::min(std::ceil(dotsPerInch / metresPerInch), maximum));
}

/// Both size fields of the file have 32 bits.
std::uint32_t CheckedFileSize(std::uint64_t size) {
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw OverflowException();
    }
    return static_cast<std::uint32_t>(size);
}

} // namespace

std::span<const PixelFormat> BitmapFrameEncoder::GetSavedPixelFormats() const {
    return SavedPixelFormats;
}

PixelFormat BitmapFrameEncoder::GetAppropriateFormatInternal(PixelFormat format) const {
    return PixelFormatHasAlpha(format) ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb;
}

void BitmapFrameEncoder::EncodeFrameInternal() {
    if (!IsPixelFormatSupported(GetSource().GetPixelFormat())) {
        throw UnsupportedPixelFormatException();
    }
    // An earlier frame that failed may have left something.
    GetWriter().Seek(0);
    DoCodeHeader();
    DoCodeBody();
    const std::uint64_t end = GetWriter().GetBytePosition();
    const std::uint32_t fileSize = CheckedFileSize(end);
    GetWriter().Seek(FileSizePosition);
    GetWriter().WriteDword(fileSize);
    GetWriter().Seek(ImageSizePosition);
    // The palette counts as part of the image here.
    GetWriter().WriteDword(fileSize - HeadersSize);
    GetWriter().Seek(static_cast<std::int64_t>(end));
    m_bFrameWritten = true;
}

// --- Headers

std::uint32_t BitmapFrameEncoder::GetCompressionField() const {
    if (m_compression == FrameCompressionType::None) {
        return 0;
    }
    if (m_compression != FrameCompressionType::Rle) {
        throw CompressionTypeException();
    }
    switch (PixelFormatSize(GetSource().GetPixelFormat())) {
    case 8:
        return 1;
    case 4:
        return 2;
    default:
        return 0;
    }
}

void BitmapFrameEncoder::DoCodeHeader() {
    const PixelFormat format = GetSource().GetPixelFormat();
    const std::uint32_t entryCount = PaletteEntryCount(format);
    const bool isGray = format == PixelFormat::Format8bppGrayScale;
    const ColorMap* const pMap = GetSource().GetColorMapRef();
    if (entryCount != 0 && !isGray && (pMap == nullptr || pMap->IsEmpty())) {
        throw PaletteException();
    }
    WriteFileHeader(HeadersSize + 4 * entryCount);
    WriteInfoHeader();
    if (isGray) {
        WriteGrayPalette();
    } else if (entryCount != 0) {
        WritePalette(entryCount);
    }
}

void BitmapFrameEncoder::WriteFileHeader(std::uint32_t pixelOffset) {
    GetWriter().WriteString("BM");
    GetWriter().WriteDword(0); // file size, filled in at the end
    GetWriter().WriteDword(0); // reserved
    GetWriter().WriteDword(pixelOffset);
}

void BitmapFrameEncoder::WriteInfoHeader() {
    const BitmapData& source = GetSource();
    GetWriter().WriteDword(BmpHeader::InfoHeaderSize);
    GetWriter().WriteDword(source.GetWidth());
    GetWriter().WriteDword(source.GetHeight());
    GetWriter().WriteWord(1); // planes
    GetWriter().WriteWord(static_cast<std::uint16_t>(PixelFormatSize(source.GetPixelFormat())));
    GetWriter().WriteDword(GetCompressionField());
    GetWriter().WriteDword(0); // image size, filled in at the end
    GetWriter().WriteDword(PixelsPerMetre(source.GetHorizontalResolution()));
    GetWriter().WriteDword(PixelsPerMetre(source.GetVerticalResolution()));
    GetWriter().WriteDword(0); // colours used: all
    GetWriter().WriteDword(0); // colours important: all
}

void BitmapFrameEncoder::WritePalette(std::uint32_t entryCount) {
    const ColorMap& map = *GetSource().GetColorMapRef();
    if (map.GetPixelFormat() != PixelFormat::Format24bppRgb && map.GetPixelFormat() != PixelFormat::Format32bppArgb) {
        throw UnsupportedPixelFormatException();
    }
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        std::uint8_t entry[4] = {0, 0, 0, 0};
        if (i < map.GetEntryCount()) {
            map.GetEntryArgb(i, entry);
        }
        GetWriter().WriteBytes(entry, sizeof entry);
    }
}

void BitmapFrameEncoder::WriteGrayPalette() {
    for (std::uint32_t i = 0; i < 256; ++i) {
        GetWriter().WriteDword(0xFF000000U | i << 16 | i << 8 | i);
    }
}

// --- Pixels

void BitmapFrameEncoder::DoCodeBody() {
    if (m_compression == FrameCompressionType::None) {
        DoCodeUncompressed();
        return;
    }
    switch (GetSource().GetPixelFormat()) {
    case PixelFormat::Format4bppIndexed:
        DoCodeRLE4();
        return;
    case PixelFormat::Format8bppIndexed:
        DoCodeRLE8();
        return;
    default:
        throw CompressionTypeException();
    }
}

void BitmapFrameEncoder::DoCodeUncompressed() {
    const BitmapData& source = GetSource();
    const std::uint64_t rowSize = source.GetRowSize();
    const std::uint64_t stride = CheckedStride(source.GetWidth(), source.GetPixelFormat(), BitmapData::StrideAlignment);
    CheckedFileSize(GetWriter().GetBytePosition() + stride * source.GetHeight());
    const auto rowsPerBlock =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(BlockSize / stride, 1, source.GetHeight()));
    // The bytes between row size and stride stay zero.
    std::vector<std::uint8_t> block(rowsPerBlock * stride);
    for (std::uint32_t left = source.GetHeight(); left != 0;) {
        const std::uint32_t count = std::min(rowsPerBlock, left);
        for (std::uint32_t i = 0; i < count; ++i) {
            std::memcpy(block.data() + i * stride, source.GetScanlineRef(left - 1 - i), rowSize);
        }
        GetWriter().WriteBytes(block.data(), count * stride);
        left -= count;
        for (std::uint32_t i = 0; i < count; ++i) {
            ReportScanlines(1);
        }
    }
}

void BitmapFrameEncoder::DoCodeRle(std::uint32_t bitCount) {
    const BitmapData& source = GetSource();
    std::vector<std::uint8_t> codes;
    BmpRleChain chain(bitCount, codes);
    for (std::uint32_t left = source.GetHeight(); left != 0; --left) {
        codes.clear();
        chain.CodeLine(source.GetScanlineRef(left - 1), source.GetWidth());
        constexpr std::uint8_t endOfLine[] = {0, 0};
        constexpr std::uint8_t endOfBitmap[] = {0, 1};
        codes.insert(codes.end(), std::begin(endOfLine), std::end(endOfLine));
        if (left == 1) {
            codes.insert(codes.end(), std::begin(endOfBitmap), std::end(endOfBitmap));
        }
        GetWriter().WriteBytes(codes.data(), codes.size());
        ReportScanlines(1);
    }
}

} // namespace ImagingFramework
