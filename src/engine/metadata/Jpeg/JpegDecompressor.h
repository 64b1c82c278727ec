#pragma once

#include "metadata/Jpeg/JpegLibrary.h"
#include "metadata/Jpeg/JpegSource.h"

#include <functional>

namespace ImagingFramework {

/// One reading of a JPEG stream by the library: its structure, its source and its failures. Errors and warnings of the
/// library are damage and raise `MediaCorruptedException`.
class JpegDecompressor {
public:
    explicit JpegDecompressor(AbstractReader& reader);
    ~JpegDecompressor();
    JpegDecompressor(const JpegDecompressor&) = delete;
    JpegDecompressor& operator=(const JpegDecompressor&) = delete;

    /// Asks the library to keep the segments of a marker.
    void SaveMarkers(int marker);
    /// Reads up to the first scan and chooses the colours of the output.
    void ReadHeader();
    /// Sizes of the output for `GetInfo().scale_denom`.
    void CalculateOutput();
    /// A progressive frame is read as a whole here. `poll` is called now and then and may raise what ends the work.
    void Start(std::function<void()> poll);
    /// Reads up to `count` lines; at least one.
    std::uint32_t ReadLines(JSAMPROW* pLines, std::uint32_t count);

    const jpeg_decompress_struct& GetInfo() const noexcept { return m_info; }
    void SetScale(std::uint32_t denominator) noexcept { m_info.scale_num = 1, m_info.scale_denom = denominator; }
    /// The samples of inks are those that remain, as Adobe's programs write them.
    bool IsInverted() const noexcept { return m_info.saw_Adobe_marker && m_info.out_color_space == JCS_CMYK; }

private:
    static JpegDecompressor& Of(j_common_ptr pInfo) noexcept { return *static_cast<JpegDecompressor*>(pInfo->client_data); }
    static void ErrorExit(j_common_ptr pInfo) noexcept;
    static void EmitMessage(j_common_ptr pInfo, int level) noexcept;
    static void OutputMessage(j_common_ptr) noexcept {}
    static void OnProgress(j_common_ptr pInfo) noexcept;
    void CheckScans() const;

    CLibraryGuard m_guard;
    jpeg_error_mgr m_errors{};
    jpeg_progress_mgr m_progress{};
    jpeg_decompress_struct m_info{};
    JpegSource m_source;
    std::function<void()> m_poll;
    int m_intScan = 0;
};

} // namespace ImagingFramework
