#include "metadata/Jpeg/JpegDecompressor.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ImagingFramework {

namespace {

constexpr unsigned MaximumSegmentSize = 0xFFFF;
/// A few bytes can stand for a whole scan, so scans are counted, and those of large frames are weighed.
constexpr int MaximumScanCount = 500;
constexpr int UnweighedScanCount = 20;
constexpr std::uint64_t MaximumPixelVisits = std::uint64_t{1} << 33;

J_COLOR_SPACE ChooseOutput(J_COLOR_SPACE file) {
    switch (file) {
    case JCS_UNKNOWN:
    case JCS_RGB:
    case JCS_YCbCr:
        return JCS_EXT_BGR;
    case JCS_CMYK:
    case JCS_YCCK:
        return JCS_CMYK;
    default:
        return file;
    }
}

} // namespace

JpegDecompressor::JpegDecompressor(AbstractReader& reader) : m_source(reader, m_guard) {
    m_info.err = jpeg_std_error(&m_errors);
    m_errors.error_exit = ErrorExit;
    m_errors.emit_message = EmitMessage;
    m_errors.output_message = OutputMessage;
    m_info.client_data = this;
    m_source.Rewind(); // may fail, and nothing is there to be freed yet
    m_guard.Call([this] { jpeg_create_decompress(&m_info); });
    m_source.Attach(m_info);
    m_progress.progress_monitor = OnProgress;
}

JpegDecompressor::~JpegDecompressor() { jpeg_destroy_decompress(&m_info); }

void JpegDecompressor::ErrorExit(j_common_ptr pInfo) noexcept {
    Of(pInfo).m_guard.Leave([] { throw MediaCorruptedException(); });
}

void JpegDecompressor::EmitMessage(j_common_ptr pInfo, int level) noexcept {
    if (level < 0) {
        ++pInfo->err->num_warnings;
        ErrorExit(pInfo);
    }
}

void JpegDecompressor::CheckScans() const {
    const std::uint64_t pixels = std::uint64_t{m_info.image_width} * m_info.image_height;
    const int scan = m_info.input_scan_number;
    if (scan > MaximumScanCount ||
        (scan > UnweighedScanCount && static_cast<std::uint64_t>(scan) * pixels > MaximumPixelVisits)) {
        throw MediaCorruptedException();
    }
}

void JpegDecompressor::OnProgress(j_common_ptr pInfo) noexcept {
    JpegDecompressor& self = Of(pInfo);
    self.m_guard.TryOrJump([&] {
        self.CheckScans();
        if (self.m_poll && self.m_info.input_scan_number != std::exchange(self.m_intScan, self.m_info.input_scan_number)) {
            self.m_poll();
        }
    });
}

void JpegDecompressor::SaveMarkers(int marker) {
    m_guard.Call([&] { jpeg_save_markers(&m_info, marker, MaximumSegmentSize); });
}

void JpegDecompressor::ReadHeader() {
    m_guard.Call([this] { jpeg_read_header(&m_info, TRUE); });
    m_info.out_color_space = ChooseOutput(m_info.jpeg_color_space);
    // Coefficients of all components, subsampled or not, and some room for tables and rows.
    constexpr std::uint64_t room = std::uint64_t{64} << 20;
    const std::uint64_t bound = std::uint64_t{m_info.image_width} * m_info.image_height * 2 *
                                    static_cast<std::uint64_t>(m_info.num_components) * 2 +
                                room;
    m_info.mem->max_memory_to_use =
        static_cast<long>(std::min<std::uint64_t>(bound, std::numeric_limits<long>::max()));
}

void JpegDecompressor::CalculateOutput() {
    m_guard.Call([this] { jpeg_calc_output_dimensions(&m_info); });
}

void JpegDecompressor::Start(std::function<void()> poll) {
    m_poll = std::move(poll);
    m_info.progress = &m_progress;
    m_guard.Call([this] { jpeg_start_decompress(&m_info); });
}

std::uint32_t JpegDecompressor::ReadLines(JSAMPROW* pLines, std::uint32_t count) {
    JDIMENSION read = 0;
    m_guard.Call([&] { read = jpeg_read_scanlines(&m_info, pLines, count); });
    if (read == 0) {
        throw MediaCorruptedException();
    }
    return read;
}

} // namespace ImagingFramework
