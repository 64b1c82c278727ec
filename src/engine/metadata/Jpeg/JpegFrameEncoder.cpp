#include "metadata/Jpeg/JpegFrameEncoder.h"

#include "metadata/Jpeg/JpegInks.h"
#include "metadata/Jpeg/JpegSegmentWriter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t LinesPerCall = 16;

constexpr PixelFormat SavedPixelFormats[] = {PixelFormat::Format8bppGrayScale, PixelFormat::Format24bppRgb,
                                             PixelFormat::Format32bppCmyk};

std::uint16_t Density(double rounded) { return static_cast<std::uint16_t>(std::clamp(rounded, 0.0, 65535.0)); }

/// The library reads lines only, though its pointers say otherwise.
JSAMPROW LinePointer(const std::uint8_t* pLine) { return const_cast<JSAMPROW>(pLine); }

} // namespace

std::span<const PixelFormat> JpegFrameEncoder::GetSavedPixelFormats() const { return SavedPixelFormats; }

PixelFormat JpegFrameEncoder::GetAppropriateFormatInternal(PixelFormat format) const {
    if (PixelFormatIsGrayscale(format)) {
        return PixelFormat::Format8bppGrayScale;
    }
    return PixelFormatIsCmyk(format) ? PixelFormat::Format32bppCmyk : PixelFormat::Format24bppRgb;
}

void JpegFrameEncoder::SetQuality(std::int32_t quality) {
    if (quality < 0 || quality > 100) {
        throw ArgumentOutOfRangeException("quality", "Quality should be in the range of [0, 100].");
    }
    m_settings.Quality = quality;
}

void JpegFrameEncoder::ResetFrameState() {
    IFrameEncoderImpl::ResetFrameState();
    m_pCompressor.reset();
}

void JpegFrameEncoder::Begin(PixelFormat format, std::uint32_t width, std::uint32_t height,
                             std::uint16_t horizontalDensity, std::uint16_t verticalDensity) {
    // An earlier frame that failed may have left something.
    GetWriter().Seek(0);
    m_pCompressor = std::make_unique<JpegCompressor>(GetWriter());
    m_pCompressor->Configure(format, width, height, horizontalDensity, verticalDensity, m_settings);
    m_pCompressor->Start();
    m_line.resize(format == PixelFormat::Format32bppCmyk ? std::size_t{4} * width : 0);
}

void JpegFrameEncoder::WriteSegments(double, double, const std::vector<std::uint8_t>& profile) {
    JpegSegmentWriter writer(*m_pCompressor);
    writer.WriteColorProfile(profile);
}

void JpegFrameEncoder::EncodeFrameInternal() {
    m_bFrameWritten = true;
    const BitmapData& source = GetSource();
    Begin(source.GetPixelFormat(), source.GetWidth(), source.GetHeight(),
          Density(std::ceil(source.GetHorizontalResolution())), Density(std::ceil(source.GetVerticalResolution())));
    const bool hasProfile = source.GetProfileNameRef() != nullptr;
    WriteSegments(source.GetHorizontalResolution(), source.GetVerticalResolution(),
                  hasProfile ? source.GetProfileData() : std::vector<std::uint8_t>());
    EncodeLines();
    m_pCompressor->Finish();
    m_pCompressor.reset();
}

void JpegFrameEncoder::EncodeLines() {
    const BitmapData& source = GetSource();
    for (std::uint32_t row = 0; row < source.GetHeight();) {
        std::array<JSAMPROW, LinesPerCall> lines{};
        std::uint32_t count = std::min(LinesPerCall, source.GetHeight() - row);
        if (m_line.empty()) {
            for (std::uint32_t i = 0; i < count; ++i) {
                lines[i] = LinePointer(source.GetScanlineRef(row + i));
            }
        } else {
            ConvertJpegInks(source.GetScanlineRef(row), m_line.data(), source.GetWidth(), m_bInvertInks);
            lines[0] = m_line.data();
            count = 1;
        }
        m_pCompressor->WriteLines(lines.data(), count);
        for (std::uint32_t i = 0; i < count; ++i) {
            ReportScanlines(1);
        }
        row += count;
    }
}

// --- Lines of a producer

void JpegFrameEncoder::Initialize(std::shared_ptr<const FilterData> pSourceImageMetaData) {
    IScanLineConsumerImpl::Initialize(pSourceImageMetaData);
    const FilterData& data = *pSourceImageMetaData;
    if (std::ranges::find(SavedPixelFormats, data.Format) == std::end(SavedPixelFormats)) {
        throw UnsupportedPixelFormatException("enPixelFormat");
    }
    Begin(data.Format, data.Width, data.Height, Density(std::round(data.HorizontalResolution)),
          Density(std::round(data.VerticalResolution)));
    WriteSegments(data.HorizontalResolution, data.VerticalResolution, data.Profile);
}

void JpegFrameEncoder::SetScanline(const std::uint8_t* pScanline, std::uint32_t row) {
    const FilterData& data = *m_pSourceImageMetaData;
    if (!m_pCompressor || row >= data.Height) {
        return;
    }
    JSAMPROW pLine = LinePointer(pScanline);
    if (!m_line.empty()) {
        ConvertJpegInks(pScanline, m_line.data(), data.Width, m_bInvertInks);
        pLine = m_line.data();
    }
    m_pCompressor->WriteLines(&pLine, 1);
    if (row + 1 == data.Height) {
        m_pCompressor->Finish();
        m_pCompressor.reset();
        GetWriter().Flush();
        m_line.clear();
    }
}

} // namespace ImagingFramework
