#pragma once

#include "Common/PixelFormat.h"
#include "metadata/Jpeg/JpegDestination.h"
#include "metadata/Jpeg/JpegLibrary.h"

#include <cstdint>
#include <functional>
#include <span>

namespace ImagingFramework {

/// How the samples of a frame are coded.
struct JpegSettings {
    std::int32_t Quality = 75; ///< 0 to 100
    bool Progressive = false;
    bool ChromaSubsampling = true;
    std::uint32_t RestartInterval = 0; ///< rows of coded units between restart markers, 0 for none
};

/// One writing of a JPEG stream by the library. A marker segment that is too long raises `JpegMarkerException`, any other
/// failure of the library `UnexpectedException`.
class JpegCompressor {
public:
    explicit JpegCompressor(AbstractWriter& writer);
    ~JpegCompressor();
    JpegCompressor(const JpegCompressor&) = delete;
    JpegCompressor& operator=(const JpegCompressor&) = delete;

    /// `format` is one of gray, RGB and CMYK of 8 bits a channel; densities in dots per inch.
    void Configure(PixelFormat format, std::uint32_t width, std::uint32_t height, std::uint16_t horizontalDensity,
                   std::uint16_t verticalDensity, const JpegSettings& settings);
    /// Writes everything up to the first application segment.
    void Start();
    void WriteMarker(int marker, std::span<const std::uint8_t> identifier, std::span<const std::uint8_t> data);
    void WriteLines(JSAMPROW* pLines, std::uint32_t count);
    /// Ends the stream. The scans of a progressive frame are coded here; `poll` is called before each pass over the frame
    /// and may raise what ends the work.
    void Finish(std::function<void()> poll);

    jpeg_compress_struct& GetInfo() noexcept { return m_info; }
    /// For calls of the library that this class has no name for.
    CLibraryGuard& GetGuard() noexcept { return m_guard; }

private:
    static JpegCompressor& Of(j_common_ptr pInfo) noexcept { return *static_cast<JpegCompressor*>(pInfo->client_data); }
    static void ErrorExit(j_common_ptr pInfo) noexcept;
    static void OutputMessage(j_common_ptr) noexcept {}
    static void OnProgress(j_common_ptr pInfo) noexcept;

    CLibraryGuard m_guard;
    jpeg_error_mgr m_errors{};
    jpeg_progress_mgr m_progress{};
    jpeg_compress_struct m_info{};
    JpegDestination m_destination;
    std::function<void()> m_poll;
};

} // namespace ImagingFramework
