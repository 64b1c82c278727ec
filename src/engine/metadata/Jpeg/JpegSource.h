#pragma once

#include "metadata/Frames/CLibraryGuard.h"
#include "metadata/Jpeg/JpegLibrary.h"
#include "metadata/Streams/AbstractReader.h"

#include <array>

namespace ImagingFramework {

/// Feeds the JPEG library from a reader. The end of the data is damage: nothing is made up to please the decoder.
class JpegSource {
public:
    /// Both must outlive this object.
    JpegSource(AbstractReader& reader, CLibraryGuard& guard);
    JpegSource(const JpegSource&) = delete;
    JpegSource& operator=(const JpegSource&) = delete;

    /// Goes to the beginning of the reader.
    void Rewind();
    /// Becomes the source of `info`.
    void Attach(jpeg_decompress_struct& info) noexcept { info.src = &m_manager; }

private:
    struct Manager : jpeg_source_mgr {
        JpegSource* pOwner;
    };

    static JpegSource& Of(j_decompress_ptr pInfo) noexcept;
    static void InitSource(j_decompress_ptr) noexcept {}
    static boolean FillInputBuffer(j_decompress_ptr pInfo) noexcept;
    static void SkipInputData(j_decompress_ptr pInfo, long count) noexcept;
    static void TermSource(j_decompress_ptr) noexcept {}
    void Fill();

    Manager m_manager{};
    AbstractReader& m_reader;
    CLibraryGuard& m_guard;
    std::array<JOCTET, std::size_t{64} << 10> m_buffer;
};

} // namespace ImagingFramework
