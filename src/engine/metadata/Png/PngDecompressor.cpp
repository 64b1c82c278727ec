#include "metadata/Png/PngDecompressor.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Png/PngMemory.h"

#include <bit>

namespace ImagingFramework {

namespace {

/// Memory for one chunk, unpacked, and the number of chunks that the library may keep.
constexpr png_alloc_size_t MaximumChunkSize = png_alloc_size_t{32} << 20;
constexpr png_uint_32 MaximumChunkCount = 100;

/// Chunks that nobody here asks for. They are skipped unread, so that none of them can do harm.
constexpr png_byte SkippedChunks[] = "bKGD\0cHRM\0eXIf\0gAMA\0hIST\0iTXt\0oFFs\0pCAL\0sBIT\0sCAL\0sPLT\0sRGB\0tEXt\0tIME\0zTXt";
constexpr int SkippedChunkCount = sizeof SkippedChunks / 5;

} // namespace

PngDecompressor::PngDecompressor(AbstractReader& reader, bool skipCrcCheck) : m_reader(reader) {
    m_reader.Seek(0);
    m_guard.Call([this] {
        m_library.pPng = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, this, PngLibDecoderError, PngLibDecoderWarning,
                                                  &m_guard, PngMemory::Allocate, PngMemory::Free);
        m_library.pInfo = m_library.pPng == nullptr ? nullptr : png_create_info_struct(m_library.pPng);
    });
    if (m_library.pInfo == nullptr) {
        throw MemoryException();
    }
    m_guard.Call([&] { Configure(skipCrcCheck); });
}

void PngDecompressor::Configure(bool skipCrcCheck) {
    const png_structp pPng = m_library.pPng;
    png_set_read_fn(pPng, this, PngLibReadData);
    png_set_benign_errors(pPng, 1);
    png_set_chunk_malloc_max(pPng, MaximumChunkSize);
    png_set_chunk_cache_max(pPng, MaximumChunkCount);
    png_set_keep_unknown_chunks(pPng, PNG_HANDLE_CHUNK_NEVER, SkippedChunks, SkippedChunkCount);
    // The size of a frame is judged by those who know what it is for.
    png_set_user_limits(pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_check_for_invalid_index(pPng, 0);
    if (skipCrcCheck) {
        png_set_crc_action(pPng, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
    }
}

void PngDecompressor::PngLibDecoderError(png_structp pPng, png_const_charp) noexcept {
    auto& self = *static_cast<PngDecompressor*>(png_get_error_ptr(pPng));
    self.m_guard.Leave([] { throw MediaCorruptedException(); });
}

void PngDecompressor::PngLibReadData(png_structp pPng, png_bytep pData, std::size_t count) noexcept {
    auto& self = *static_cast<PngDecompressor*>(png_get_io_ptr(pPng));
    self.m_guard.TryOrJump([&] {
        if (count > self.m_reader.GetRemaining()) {
            throw MediaCorruptedException();
        }
        self.m_reader.ReadBytes(count, pData, count);
    });
}

void PngDecompressor::ReadHeader() {
    m_guard.Call([this] { png_read_info(m_library.pPng, m_library.pInfo); });
}

std::uint32_t PngDecompressor::Start() {
    int passes = 1;
    m_guard.Call([&] {
        png_set_bgr(m_library.pPng);
        if constexpr (std::endian::native == std::endian::little) {
            png_set_swap(m_library.pPng);
        }
        passes = png_set_interlace_handling(m_library.pPng);
        png_read_update_info(m_library.pPng, m_library.pInfo);
    });
    return static_cast<std::uint32_t>(passes);
}

void PngDecompressor::ReadLine(std::uint8_t* pLine) {
    m_guard.Call([&] { png_read_row(m_library.pPng, pLine, nullptr); });
}

} // namespace ImagingFramework
