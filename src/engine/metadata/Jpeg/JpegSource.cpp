#include "metadata/Jpeg/JpegSource.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>

namespace ImagingFramework {

JpegSource::JpegSource(AbstractReader& reader, CLibraryGuard& guard) : m_reader(reader), m_guard(guard) {
    m_manager.pOwner = this;
    m_manager.init_source = InitSource;
    m_manager.fill_input_buffer = FillInputBuffer;
    m_manager.skip_input_data = SkipInputData;
    m_manager.resync_to_restart = jpeg_resync_to_restart;
    m_manager.term_source = TermSource;
}

void JpegSource::Rewind() {
    m_reader.Seek(0);
    m_manager.next_input_byte = nullptr;
    m_manager.bytes_in_buffer = 0;
}

JpegSource& JpegSource::Of(j_decompress_ptr pInfo) noexcept {
    return *static_cast<Manager*>(pInfo->src)->pOwner;
}

void JpegSource::Fill() {
    const std::uint64_t count = std::min<std::uint64_t>(m_reader.GetRemaining(), m_buffer.size());
    if (count == 0) {
        throw MediaCorruptedException();
    }
    m_reader.ReadBytes(count, m_buffer.data(), m_buffer.size());
    m_manager.next_input_byte = m_buffer.data();
    m_manager.bytes_in_buffer = count;
}

boolean JpegSource::FillInputBuffer(j_decompress_ptr pInfo) noexcept {
    JpegSource& source = Of(pInfo);
    source.m_guard.TryOrJump([&] { source.Fill(); });
    return TRUE;
}

void JpegSource::SkipInputData(j_decompress_ptr pInfo, long count) noexcept {
    if (count <= 0) {
        return;
    }
    JpegSource& source = Of(pInfo);
    const auto wanted = static_cast<std::uint64_t>(count);
    const auto here = std::min<std::uint64_t>(wanted, source.m_manager.bytes_in_buffer);
    source.m_manager.next_input_byte += here;
    source.m_manager.bytes_in_buffer -= here;
    if (wanted == here) {
        return;
    }
    source.m_guard.TryOrJump([&] {
        if (wanted - here > source.m_reader.GetRemaining()) {
            throw MediaCorruptedException();
        }
        source.m_reader.Seek(static_cast<std::int64_t>(wanted - here), SeekOrigin::Current);
    });
}

} // namespace ImagingFramework
