#pragma once

#include "metadata/Frames/CLibraryGuard.h"
#include "metadata/Jpeg/JpegLibrary.h"
#include "metadata/Streams/AbstractWriter.h"

#include <array>

namespace ImagingFramework {

/// Takes the output of the JPEG library to a writer.
class JpegDestination {
public:
    /// Both must outlive this object.
    JpegDestination(AbstractWriter& writer, CLibraryGuard& guard);
    JpegDestination(const JpegDestination&) = delete;
    JpegDestination& operator=(const JpegDestination&) = delete;

    void Attach(jpeg_compress_struct& info) noexcept { info.dest = &m_manager; }

private:
    struct Manager : jpeg_destination_mgr {
        JpegDestination* pOwner;
    };

    static JpegDestination& Of(j_compress_ptr pInfo) noexcept;
    static void InitDestination(j_compress_ptr pInfo) noexcept;
    static boolean EmptyOutputBuffer(j_compress_ptr pInfo) noexcept;
    static void TermDestination(j_compress_ptr pInfo) noexcept;
    void Rewind() noexcept;

    Manager m_manager{};
    AbstractWriter& m_writer;
    CLibraryGuard& m_guard;
    std::array<JOCTET, std::size_t{64} << 10> m_buffer;
};

} // namespace ImagingFramework
