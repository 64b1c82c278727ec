#pragma once

#include "Common/ColorMap.h"
#include "Common/PixelFormat.h"
#include "metadata/Frames/CLibraryGuard.h"
#include "metadata/Png/PngFilter.h"
#include "metadata/Streams/AbstractWriter.h"

#include <png.h>
#include <span>

namespace ImagingFramework {

/// How the pixels of a frame are packed.
struct PngSettings {
    static constexpr std::int32_t DefaultLevel = -1;

    bool Interlaced = false;
    std::int32_t CompressionLevel = DefaultLevel; ///< 0 to 9, or what the library thinks best
    PngFilter Filter = PngFilter::Default;
};

/// One writing of a PNG stream by the library. A failure of the library raises `UnexpectedException`.
class PngCompressor {
public:
    /// The writer must outlive this object. Fails with `MemoryException`.
    explicit PngCompressor(AbstractWriter& writer);
    PngCompressor(const PngCompressor&) = delete;
    PngCompressor& operator=(const PngCompressor&) = delete;

    /// Fails with `UnsupportedPixelFormatException` for a format that these files do not have.
    void Configure(PixelFormat format, std::uint32_t width, std::uint32_t height, const PngSettings& settings);
    /// Pixels per metre.
    void SetResolution(std::uint32_t horizontal, std::uint32_t vertical);
    /// The first `count` entries of a map with or without alpha.
    void SetPalette(const ColorMap& map, std::uint32_t count);
    /// A profile that is damaged, or for other colours than those of the frame, is left out.
    void SetProfile(std::span<const std::uint8_t> profile);
    /// Writes everything up to the pixels and gives the number of passes over the lines.
    std::uint32_t Start();
    void WriteLine(const std::uint8_t* pLine);
    void Finish();

private:
    struct Library {
        ~Library() { png_destroy_write_struct(&pPng, &pInfo); }
        png_structp pPng = nullptr;
        png_infop pInfo = nullptr;
    };

    static void PngLibError(png_structp pPng, png_const_charp) noexcept;
    static void PngLibWarning(png_structp, png_const_charp) noexcept {}
    static void PngLibWriteData(png_structp pPng, png_bytep pData, std::size_t count) noexcept;
    static void PngLibFlush(png_structp) noexcept {}

    AbstractWriter& m_writer;
    CLibraryGuard m_guard;
    Library m_library;
    PixelFormat m_format = PixelFormat::FormatUnknown;
};

} // namespace ImagingFramework
