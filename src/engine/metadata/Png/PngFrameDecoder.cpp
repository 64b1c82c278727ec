#include "metadata/Png/PngFrameDecoder.h"

#include "Common/FrameSize.h"
#include "metadata/Frames/WidenIndices.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr double MetresPerInch = 0.0254;
constexpr std::uint32_t PassCount = 7; ///< of an interlaced frame
/// Frames above this size must be backed by some data: deflate packs up to about 1032 bytes into one. A row counts for at
/// least TrustedRowSize, because a row costs time however narrow it is.
constexpr std::uint64_t TrustedFrameSize = std::uint64_t{256} << 20;
constexpr std::uint64_t TrustedRowSize = 64;
constexpr std::uint64_t PackedRatio = 1040;

PixelFormat GetPngPixelFormat(int colorType, int bitDepth) {
    const bool wide = bitDepth == 16;
    switch (colorType) {
    case PNG_COLOR_TYPE_GRAY:
    case PNG_COLOR_TYPE_PALETTE:
        switch (bitDepth) {
        case 1:
            return PixelFormat::Format1bppIndexed;
        case 2:
        case 4:
            return PixelFormat::Format4bppIndexed;
        case 8:
            return colorType == PNG_COLOR_TYPE_GRAY ? PixelFormat::Format8bppGrayScale : PixelFormat::Format8bppIndexed;
        case 16:
            return PixelFormat::Format16bppGrayScale;
        default:
            throw UnsupportedPixelFormatException();
        }
    case PNG_COLOR_TYPE_RGB:
        return wide ? PixelFormat::Format48bppRgb : PixelFormat::Format24bppRgb;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return wide ? PixelFormat::Format32bppAGrayScale : PixelFormat::Format16bppAGrayScale;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return wide ? PixelFormat::Format64bppArgb : PixelFormat::Format32bppArgb;
    default:
        throw UnsupportedPixelFormatException();
    }
}

/// From black to white in even steps.
std::shared_ptr<ColorMap> MakeGrayRamp(std::uint32_t bits) {
    const std::uint32_t count = 1U << bits;
    auto map = std::make_shared<ColorMap>(count, PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto level = static_cast<std::uint8_t>(i * 255 / (count - 1));
        const std::uint8_t entry[3] = {level, level, level};
        map->SetEntryRgb(i, entry);
    }
    return map;
}

} // namespace

// --- Headers

void PngFrameDecoder::ReadHeaders() {
    m_bCrcSkipped = m_bSkipCrcCheck;
    PngDecompressor decompressor(GetReader(), m_bCrcSkipped);
    decompressor.ReadHeader();
    LoadBasicParams(decompressor);
}

void PngFrameDecoder::Detach() {
    IFrameDecoderImpl::Detach();
    m_pColorMap.reset();
    m_indexMap = {};
    m_profile.clear();
}

void PngFrameDecoder::LoadBasicParams(const PngDecompressor& decompressor) {
    const png_structp pPng = decompressor.GetPng();
    const png_infop pInfo = decompressor.GetInfo();
    const std::uint32_t bitDepth = png_get_bit_depth(pPng, pInfo);
    m_uintWidth = png_get_image_width(pPng, pInfo);
    m_uintHeight = png_get_image_height(pPng, pInfo);
    m_pixelFormat = GetPngPixelFormat(png_get_color_type(pPng, pInfo), static_cast<int>(bitDepth));
    m_bInterlaced = png_get_interlace_type(pPng, pInfo) != PNG_INTERLACE_NONE;
    m_bTwoBits = bitDepth == 2;
    CheckDataSize(png_get_rowbytes(pPng, pInfo));
    if (PixelFormatIsIndexed(m_pixelFormat)) {
        m_pColorMap = ReadColorMap(decompressor);
        m_indexMap = PaletteIndexMap(PixelFormatSize(m_pixelFormat), m_pColorMap->GetEntryCount());
    }
    ReadResolution(decompressor);
    ReadColorProfile(decompressor);
    m_uintFrameCount = 1;
}

void PngFrameDecoder::CheckDataSize(std::uint64_t rowSize) {
    CheckFrameSize(m_uintWidth, m_uintHeight, m_pixelFormat);
    const std::uint64_t cost = std::max(rowSize + 1, TrustedRowSize) * m_uintHeight;
    if (cost > TrustedFrameSize && cost / PackedRatio > GetReader().GetSize()) {
        throw MediaCorruptedException();
    }
}

void PngFrameDecoder::ReadResolution(const PngDecompressor& decompressor) {
    m_resolutionX = BitmapData::DefaultResolution;
    m_resolutionY = BitmapData::DefaultResolution;
    png_uint_32 x = 0;
    png_uint_32 y = 0;
    int unit = PNG_RESOLUTION_UNKNOWN;
    if (png_get_pHYs(decompressor.GetPng(), decompressor.GetInfo(), &x, &y, &unit) == 0) {
        return;
    }
    if (unit != PNG_RESOLUTION_METER) {
        // Without a unit the second value alone counts, and for the horizontal axis.
        x = y;
        y = 0;
    }
    const double factor = unit == PNG_RESOLUTION_METER ? MetresPerInch : 1.0;
    if (x != 0) {
        m_resolutionX = x * factor;
    }
    if (y != 0) {
        m_resolutionY = y * factor;
    }
}

void PngFrameDecoder::ReadColorProfile(const PngDecompressor& decompressor) {
    png_charp pName = nullptr;
    int method = 0;
    png_bytep pProfile = nullptr;
    png_uint_32 size = 0;
    if (png_get_iCCP(decompressor.GetPng(), decompressor.GetInfo(), &pName, &method, &pProfile, &size) != 0) {
        m_profile.assign(pProfile, pProfile + size);
    }
}

std::shared_ptr<ColorMap> PngFrameDecoder::ReadColorMap(const PngDecompressor& decompressor) const {
    const png_structp pPng = decompressor.GetPng();
    const png_infop pInfo = decompressor.GetInfo();
    if (png_get_color_type(pPng, pInfo) != PNG_COLOR_TYPE_PALETTE) {
        return MakeGrayRamp(png_get_bit_depth(pPng, pInfo));
    }
    png_colorp pColors = nullptr;
    int colorCount = 0;
    if (png_get_PLTE(pPng, pInfo, &pColors, &colorCount) == 0 || colorCount <= 0) {
        throw MediaCorruptedException();
    }
    png_bytep pAlphas = nullptr;
    int alphaCount = 0;
    const bool hasAlpha = png_get_tRNS(pPng, pInfo, &pAlphas, &alphaCount, nullptr) != 0 && pAlphas != nullptr;
    const auto count = static_cast<std::uint32_t>(colorCount);
    auto map = std::make_shared<ColorMap>(count, hasAlpha ? PixelFormat::Format32bppArgb : PixelFormat::Format24bppRgb);
    for (std::uint32_t i = 0; i < count; ++i) {
        const bool isGiven = hasAlpha && i < static_cast<std::uint32_t>(alphaCount);
        const std::uint8_t entry[4] = {pColors[i].blue, pColors[i].green, pColors[i].red,
                                       isGiven ? pAlphas[i] : std::uint8_t{255}};
        map->SetEntryArgb(i, entry);
    }
    return map;
}

std::shared_ptr<ColorMap> PngFrameDecoder::GetColorMap() {
    return m_pColorMap == nullptr ? nullptr : std::make_shared<ColorMap>(*m_pColorMap);
}

// --- Pixels

std::uint64_t PngFrameDecoder::GetProgressStepCount() const {
    return std::uint64_t{(m_bInterlaced ? PassCount : 1) + 1} * m_uintHeight;
}

void PngFrameDecoder::DecodeFrameInternal() {
    PngDecompressor decompressor(GetReader(), m_bCrcSkipped);
    decompressor.ReadHeader();
    const png_structp pPng = decompressor.GetPng();
    const png_infop pInfo = decompressor.GetInfo();
    const int bitDepth = png_get_bit_depth(pPng, pInfo);
    if (png_get_image_width(pPng, pInfo) != m_uintWidth || png_get_image_height(pPng, pInfo) != m_uintHeight ||
        GetPngPixelFormat(png_get_color_type(pPng, pInfo), bitDepth) != m_pixelFormat || (bitDepth == 2) != m_bTwoBits ||
        (png_get_interlace_type(pPng, pInfo) != PNG_INTERLACE_NONE) != m_bInterlaced) {
        throw MediaCorruptedException(); // the file has changed since it was opened
    }
    // The library leaves the bits behind the last pixel of a line as they are.
    CreateBitmapData(bitDepth < 8 ? PixelCover::Partly : PixelCover::Whole);
    if (m_pColorMap != nullptr) {
        SetColorMap(GetColorMap());
    }
    if (!IsThumbnailMode()) {
        SetResolution();
    }
    SetColorProfile();
    DoDecompressPng(decompressor);
}

void PngFrameDecoder::DoDecompressPng(PngDecompressor& decompressor) {
    const std::uint32_t passes = decompressor.Start();
    if (passes != 1) {
        DecodePasses(decompressor, passes);
        return;
    }
    FillLines([&](std::uint8_t* pLine, std::uint32_t) {
        decompressor.ReadLine(pLine);
        UpdateEvents(1);
        FinishLine(pLine);
    });
}

void PngFrameDecoder::FinishLine(std::uint8_t* pLine) const noexcept {
    if (m_bTwoBits) {
        WidenIndices(pLine, m_uintWidth);
    }
    m_indexMap.Apply(pLine, pLine, (std::size_t{m_uintWidth} * PixelFormatSize(m_pixelFormat) + 7) / 8);
}

void PngFrameDecoder::DecodePasses(PngDecompressor& decompressor, std::uint32_t passes) {
    BitmapData* const pOutput = GetDirectOutput();
    // A line is complete after the last pass only, so whoever wants lines waits for the whole frame.
    BitmapData privateRaster;
    if (pOutput == nullptr) {
        privateRaster.Create(m_uintWidth, m_uintHeight, GetPixelFormat());
    }
    BitmapData& raster = pOutput == nullptr ? privateRaster : *pOutput;
    for (std::uint32_t pass = 0; pass < passes; ++pass) {
        for (std::uint32_t row = 0; row < m_uintHeight; ++row) {
            decompressor.ReadLine(raster.GetScanlineRef(row));
            UpdateEvents(1);
        }
    }
    for (std::uint32_t row = 0; row < m_uintHeight; ++row) {
        FinishLine(raster.GetScanlineRef(row));
        if (pOutput == nullptr) {
            SetScanline(raster.GetScanlineRef(row), row);
        }
        UpdateEvents(1);
    }
}

} // namespace ImagingFramework
