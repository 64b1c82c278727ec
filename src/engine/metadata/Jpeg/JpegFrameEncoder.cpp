#include "metadata/Jpeg/JpegFrameEncoder.h"

#include "Common/Numeric.h"
#include "metadata/Jpeg/JpegInks.h"
#include "metadata/Jpeg/JpegSegmentWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t LinesPerCall = 16;

constexpr PixelFormat SavedPixelFormats[] = {PixelFormat::Format8bppGrayScale, PixelFormat::Format24bppRgb,
                                             PixelFormat::Format32bppCmyk};

std::uint16_t Density(double rounded) { return static_cast<std::uint16_t>(std::clamp(TruncateToInt32(rounded), 0, 65535)); }

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

void JpegFrameEncoder::Detach() {
    m_pCompressor.reset(); // lines that still come have nowhere to go
    IFrameEncoderImpl::Detach();
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

/// The block as it stands in the segment, with the resolution where it has none.
std::vector<std::uint8_t> JpegFrameEncoder::SerializeExif(double horizontalResolution, double verticalResolution) const {
    if (!m_pExif || m_pExif->GetCount() == 0) {
        return {};
    }
    ExifData exif = *m_pExif;
    const auto add = [&](std::uint16_t id, ExifTag tag) {
        if (exif.GetTag(id, ExifIfd::MainImage) == nullptr) {
            exif.SetTagInternal(id, ExifIfd::MainImage, std::move(tag));
        }
    };
    const auto resolution = [](double value) { return ExifTag::FromRational(ExifTag::ToRational(value == 0 ? 1 : value)); };
    constexpr std::uint16_t inches = 2;
    add(ExifTagId::XResolution, resolution(horizontalResolution));
    add(ExifTagId::YResolution, resolution(verticalResolution));
    add(ExifTagId::ResolutionUnit, ExifTag::FromShort(inches));
    return exif.SerializeForJpeg();
}

/// The IPTC block is one of the resources.
std::vector<std::uint8_t> JpegFrameEncoder::SerializeResources() const {
    AdobeResources resources = m_pResources ? *m_pResources : AdobeResources();
    std::vector<std::uint8_t> iptc;
    if (m_pIptc && m_pIptc->GetIptcAsBinary(iptc) != 0) {
        resources.Remove(AdobeResources::IptcId);
        auto block = std::make_unique<AdobeResourceBlock>(AdobeResources::IptcId, std::string_view(), std::move(iptc));
        DataItem item;
        item = block.get();
        resources.SetItem(AdobeResources::IptcId, item);
        static_cast<void>(block.release()); // the resources have taken it
    }
    std::vector<std::uint8_t> bytes;
    if (resources.GetCount() != 0) {
        resources.Save(bytes);
    }
    return bytes;
}

void JpegFrameEncoder::WriteSegments(double horizontalResolution, double verticalResolution,
                                     const std::vector<std::uint8_t>& profile) {
    JpegSegmentWriter writer(*m_pCompressor);
    writer.WriteExif(SerializeExif(horizontalResolution, verticalResolution));
    writer.WriteAdobeResources(SerializeResources());
    writer.WriteXmp(m_xmp);
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
    Finish();
}

void JpegFrameEncoder::Finish() {
    m_pCompressor->Finish([this] { UpdateEvents(0); });
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
    RequireAttached();
    if (std::exchange(m_bFrameWritten, true)) {
        throw MultiFrameException();
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
        Finish();
        GetWriter().Flush();
        m_line.clear();
        CompleteFrame();
    }
}

} // namespace ImagingFramework
