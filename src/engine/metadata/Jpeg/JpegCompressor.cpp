#include "metadata/Jpeg/JpegCompressor.h"

#include "ErrorHandling/Exceptions.h"

#include <utility>

namespace ImagingFramework {

namespace {

struct InputColors {
    J_COLOR_SPACE Space;
    int ComponentCount;
};

InputColors ColorsOf(PixelFormat format) {
    switch (format) {
    case PixelFormat::Format24bppRgb:
        return {JCS_EXT_BGR, 3};
    case PixelFormat::Format8bppGrayScale:
        return {JCS_GRAYSCALE, 1};
    case PixelFormat::Format32bppCmyk:
        return {JCS_CMYK, 4};
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

JpegCompressor::JpegCompressor(AbstractWriter& writer) : m_destination(writer, m_guard) {
    m_info.err = jpeg_std_error(&m_errors);
    m_errors.error_exit = ErrorExit;
    m_errors.output_message = OutputMessage;
    m_info.client_data = this;
    m_guard.Call([this] { jpeg_create_compress(&m_info); });
    m_destination.Attach(m_info);
    m_progress.progress_monitor = OnProgress;
}

JpegCompressor::~JpegCompressor() { jpeg_destroy_compress(&m_info); }

void JpegCompressor::ErrorExit(j_common_ptr pInfo) noexcept {
    CLibraryGuard& guard = Of(pInfo).m_guard;
    if (pInfo->err->msg_code == JERR_BAD_LENGTH) {
        guard.Leave([] { throw JpegMarkerException(); });
    }
    guard.Leave([] { throw UnexpectedException(); });
}

void JpegCompressor::OnProgress(j_common_ptr pInfo) noexcept {
    JpegCompressor& self = Of(pInfo);
    if (self.m_progress.pass_counter == 0) {
        self.m_guard.TryOrJump([&] { self.m_poll(); });
    }
}

void JpegCompressor::Configure(PixelFormat format, std::uint32_t width, std::uint32_t height,
                               std::uint16_t horizontalDensity, std::uint16_t verticalDensity,
                               const JpegSettings& settings) {
    const InputColors colors = ColorsOf(format);
    m_info.image_width = width;
    m_info.image_height = height;
    m_info.in_color_space = colors.Space;
    m_info.input_components = colors.ComponentCount;
    m_guard.Call([&] {
        jpeg_set_defaults(&m_info);
        m_info.dct_method = JDCT_FLOAT;
        m_info.density_unit = 1;
        m_info.X_density = horizontalDensity;
        m_info.Y_density = verticalDensity;
        jpeg_set_quality(&m_info, settings.Quality, TRUE);
        if (!settings.ChromaSubsampling) {
            for (int i = 0; i < m_info.num_components; ++i) {
                m_info.comp_info[i].h_samp_factor = 1;
                m_info.comp_info[i].v_samp_factor = 1;
            }
        }
        if (settings.Progressive) {
            jpeg_simple_progression(&m_info);
        }
        m_info.restart_in_rows = static_cast<int>(settings.RestartInterval);
    });
}

void JpegCompressor::Start() {
    m_guard.Call([this] { jpeg_start_compress(&m_info, TRUE); });
}

void JpegCompressor::WriteMarker(int marker, std::span<const std::uint8_t> identifier,
                                 std::span<const std::uint8_t> data) {
    m_guard.Call([&] {
        jpeg_write_m_header(&m_info, marker, static_cast<unsigned>(identifier.size() + data.size()));
        for (const std::uint8_t byte : identifier) {
            jpeg_write_m_byte(&m_info, byte);
        }
        for (const std::uint8_t byte : data) {
            jpeg_write_m_byte(&m_info, byte);
        }
    });
}

void JpegCompressor::WriteLines(JSAMPROW* pLines, std::uint32_t count) {
    m_guard.Call([&] { jpeg_write_scanlines(&m_info, pLines, count); });
}

void JpegCompressor::Finish(std::function<void()> poll) {
    m_poll = std::move(poll);
    m_info.progress = &m_progress;
    m_guard.Call([this] { jpeg_finish_compress(&m_info); });
}

} // namespace ImagingFramework
