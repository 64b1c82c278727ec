#pragma once

#include "metadata/Frames/CLibraryGuard.h"
#include "metadata/Streams/AbstractReader.h"

#include <png.h>

namespace ImagingFramework {

/// One reading of a PNG stream by the library: its structures, its source and its failures. Errors of the library are damage
/// and raise `MediaCorruptedException`; its warnings are not heard.
class PngDecompressor {
public:
    /// Goes to the beginning of the reader, which must outlive this object. `skipCrcCheck` takes chunks with wrong check
    /// sums as they are. Fails with `MemoryException`.
    PngDecompressor(AbstractReader& reader, bool skipCrcCheck);
    PngDecompressor(const PngDecompressor&) = delete;
    PngDecompressor& operator=(const PngDecompressor&) = delete;

    /// Reads up to the first chunk of pixels.
    void ReadHeader();
    /// Chooses the order of samples and gives the number of passes over the lines.
    std::uint32_t Start();
    /// Reads the next line; one of an interlaced frame adds its pixels to those of earlier passes.
    void ReadLine(std::uint8_t* pLine);

    png_structp GetPng() const noexcept { return m_library.pPng; }
    png_infop GetInfo() const noexcept { return m_library.pInfo; }

private:
    struct Library {
        ~Library() { png_destroy_read_struct(&pPng, &pInfo, nullptr); }
        png_structp pPng = nullptr;
        png_infop pInfo = nullptr;
    };

    static void PngLibDecoderError(png_structp pPng, png_const_charp) noexcept;
    static void PngLibDecoderWarning(png_structp, png_const_charp) noexcept {}
    static void PngLibReadData(png_structp pPng, png_bytep pData, std::size_t count) noexcept;
    void Configure(bool skipCrcCheck);

    AbstractReader& m_reader;
    CLibraryGuard m_guard;
    Library m_library;
};

} // namespace ImagingFramework
