#include "metadata/Jpeg/JpegFrameDecoder.h"

#include "Common/ColorProfileUtils.h"
#include "Common/FrameSize.h"
#include "Common/SystemProfiles.h"
#include "metadata/Jpeg/JpegInks.h"
#include "metadata/Streams/MemoryReader.h"

#include <algorithm>
#include <array>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t LinesPerCall = 16;
constexpr double CentimetresPerInch = 2.54;
/// Frames above this size must be backed by some data: the shortest code of a block of 64 samples has two bits.
constexpr std::uint64_t TrustedPixelCount = std::uint64_t{64} << 20;
constexpr std::uint64_t PixelsPerByte = 256;

PixelFormat FormatOf(J_COLOR_SPACE space) {
    switch (space) {
    case JCS_GRAYSCALE:
        return PixelFormat::Format8bppGrayScale;
    case JCS_CMYK:
    case JCS_YCCK:
        return PixelFormat::Format32bppCmyk;
    default:
        return PixelFormat::Format24bppRgb;
    }
}

/// Source samples wanted for each thumbnail sample and axis.
std::uint32_t SamplesPerAxis(InterpolationMode kind) {
    switch (kind) {
    case InterpolationMode::NearestNeighbour:
        return 1;
    case InterpolationMode::Anisotropic4:
        return 2;
    default:
        return 3;
    }
}

} // namespace

// --- Headers

void JpegFrameDecoder::ReadHeaders() {
    JpegDecompressor decompressor(GetReader());
    for (const int marker : {JpegApp1, JpegApp2, JpegApp13, JpegApp14}) {
        decompressor.SaveMarkers(marker);
    }
    decompressor.ReadHeader();
    decompressor.CalculateOutput();
    LoadBasicParams(decompressor.GetInfo());
}

void JpegFrameDecoder::Detach() {
    IFrameDecoderImpl::Detach();
    m_segments = {};
    m_bSRgb = false;
}

void JpegFrameDecoder::LoadBasicParams(const jpeg_decompress_struct& info) {
    m_uintWidth = info.image_width;
    m_uintHeight = info.image_height;
    m_pixelFormat = FormatOf(info.jpeg_color_space);
    CheckDataSize();
    m_bChromaSubsampled = std::any_of(info.comp_info, info.comp_info + info.num_components, [&](const auto& component) {
        return component.h_samp_factor != info.max_h_samp_factor || component.v_samp_factor != info.max_v_samp_factor;
    });
    const auto unitSize = static_cast<std::uint32_t>(info.num_components == 1 ? DCTSIZE : info.max_h_samp_factor * DCTSIZE);
    const std::uint32_t unitsPerRow = (info.image_width + unitSize - 1) / unitSize;
    m_uintRestartInterval = info.restart_interval / std::max(1U, unitsPerRow);
    m_segments = JpegSegments::Read(info);
    ReadResolution(info);
    ReadExifFields();
    m_uintFrameCount = 1;
}

void JpegFrameDecoder::CheckDataSize() {
    CheckFrameSize(m_uintWidth, m_uintHeight, m_pixelFormat);
    const std::uint64_t pixels = std::uint64_t{m_uintWidth} * m_uintHeight;
    if (pixels > TrustedPixelCount && pixels / PixelsPerByte > GetReader().GetSize()) {
        throw MediaCorruptedException();
    }
}

void JpegFrameDecoder::ReadResolution(const jpeg_decompress_struct& info) {
    const bool given = info.saw_JFIF_marker && (info.density_unit != 0 || info.X_density != 1 || info.Y_density != 1) &&
                       info.X_density != 0 && info.Y_density != 0;
    m_resolutionX = given ? info.X_density : BitmapData::DefaultResolution;
    m_resolutionY = given ? info.Y_density : BitmapData::DefaultResolution;
    constexpr int dotsPerCentimetre = 2;
    if (given && info.density_unit == dotsPerCentimetre) {
        m_resolutionX *= CentimetresPerInch;
        m_resolutionY *= CentimetresPerInch;
    }
}

void JpegFrameDecoder::ReadExifFields() {
    if (m_segments.Exif.empty()) {
        return;
    }
    MemoryReader reader(m_segments.Exif.data(), m_segments.Exif.size());
    ExifData exif;
    exif.InitializeTolerantly(&reader, false);
    const auto number = [&](std::uint16_t tag) {
        const ExifTag* const pTag = exif.GetTag(tag, ExifIfd::MainImage);
        return pTag == nullptr ? std::optional<double>() : pTag->GetReal();
    };
    const std::optional<double> x = number(ExifTagId::XResolution);
    const std::optional<double> y = number(ExifTagId::YResolution);
    if (x && y && *x > 0 && *y > 0) {
        constexpr double centimetres = 3;
        const double factor = number(ExifTagId::ResolutionUnit) == centimetres ? CentimetresPerInch : 1.0;
        m_resolutionX = *x * factor;
        m_resolutionY = *y * factor;
    }
    m_bSRgb = m_segments.ColorProfile.empty() && m_pixelFormat == PixelFormat::Format24bppRgb &&
              CheckIfExifDataContainsProfileInfo(exif);
}

bool JpegFrameDecoder::CheckIfExifDataContainsProfileInfo(const ExifData& exif) const {
    constexpr std::uint32_t sRgb = 1;
    const ExifTag* const pTag = exif.GetTag(ExifTagId::ColorSpace, ExifIfd::Exif);
    return pTag != nullptr && pTag->GetNumber() == sRgb;
}

// --- Metadata

std::unique_ptr<ExifDataStorage> JpegFrameDecoder::GetExifData() const {
    if (m_segments.Exif.empty()) {
        return nullptr;
    }
    auto exif = std::make_unique<ExifDataStorage>();
    MemoryReader reader(m_segments.Exif.data(), m_segments.Exif.size());
    exif->Initialize(&reader, true);
    return exif;
}

std::unique_ptr<AdobeResources> JpegFrameDecoder::GetAdobeResources() const {
    if (m_segments.AdobeResources.empty()) {
        return nullptr;
    }
    auto resources = std::make_unique<AdobeResources>();
    resources->Load(m_segments.AdobeResources);
    return resources;
}

std::unique_ptr<IptcDataStorage> JpegFrameDecoder::GetIptcData() const {
    const auto resources = GetAdobeResources();
    DataItem item;
    if (!resources || !resources->GetItem(AdobeResources::IptcId, item)) {
        return nullptr;
    }
    const std::unique_ptr<AdobeResourceBlock> block(static_cast<AdobeResourceBlock*>(item));
    auto iptc = std::make_unique<IptcDataStorage>();
    if (!block->GetData().empty()) {
        MemoryReader reader(block->GetData().data(), block->GetData().size());
        iptc->Initialize(&reader);
    }
    return iptc;
}

std::vector<std::uint8_t> JpegFrameDecoder::GetColorProfile() const {
    return m_bSRgb ? GetProfileData(&GetSRgbProfile()->GetPath()) : m_segments.ColorProfile;
}

// --- Pixels

/// The largest reduction of the library that leaves enough samples for the thumbnail.
std::uint32_t JpegFrameDecoder::ChooseReduction() const {
    if (!m_bFastThumbnails || !IsThumbnailMode()) {
        return 1;
    }
    const std::uint64_t samples = SamplesPerAxis(GetThumbnailKind());
    const auto fits = [&](std::uint32_t denominator) {
        return m_uintWidth / denominator >= samples * GetOutput().GetWidth() &&
               m_uintHeight / denominator >= samples * GetOutput().GetHeight();
    };
    for (const std::uint32_t denominator : {8U, 4U, 2U}) {
        if (fits(denominator)) {
            return denominator;
        }
    }
    return 1;
}

void JpegFrameDecoder::DecodeFrameInternal() {
    JpegDecompressor decompressor(GetReader());
    decompressor.ReadHeader();
    const jpeg_decompress_struct& info = decompressor.GetInfo();
    if (info.image_width != m_uintWidth || info.image_height != m_uintHeight ||
        FormatOf(info.jpeg_color_space) != m_pixelFormat) {
        throw MediaCorruptedException(); // the file has changed since it was opened
    }
    CreateBitmapData(PixelCover::Whole);
    const std::uint32_t reduction = ChooseReduction();
    decompressor.SetScale(reduction);
    if (!IsThumbnailMode()) {
        SetResolution();
    }
    if (m_bSRgb) {
        IFrameDecoderImpl::SetColorProfile(GetSRgbProfile());
    } else {
        IFrameDecoderImpl::SetColorProfile();
    }
    decompressor.Start([this] { UpdateEvents(0); });
    if (reduction != 1) {
        SetReducedSize(info.output_width, info.output_height);
    }
    DecodeLines(decompressor, info.output_width, info.output_height);
}

void JpegFrameDecoder::DecodeLines(JpegDecompressor& decompressor, std::uint32_t width, std::uint32_t height) {
    BitmapData* const pOutput = GetDirectOutput();
    const std::uint64_t stride = CheckedStride(width, GetPixelFormat(), BitmapData::StrideAlignment);
    MemPtr<std::uint8_t> buffer;
    if (pOutput == nullptr) {
        buffer.AllocateSize(stride * LinesPerCall);
    }
    const bool hasInks = GetPixelFormat() == PixelFormat::Format32bppCmyk;
    for (std::uint32_t row = 0; row < height;) {
        std::array<JSAMPROW, LinesPerCall> lines{};
        const std::uint32_t wanted = std::min(LinesPerCall, height - row);
        for (std::uint32_t i = 0; i < wanted; ++i) {
            lines[i] = pOutput == nullptr ? buffer.Get() + i * stride : pOutput->GetScanlineRef(row + i);
        }
        const std::uint32_t count = decompressor.ReadLines(lines.data(), wanted);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (hasInks) {
                ConvertJpegInks(lines[i], lines[i], width, decompressor.IsInverted());
            }
            if (pOutput == nullptr) {
                SetScanline(lines[i], row + i);
            }
            UpdateEvents(1);
        }
        row += count;
    }
}

} // namespace ImagingFramework
