#include "metadata/Jpeg/JpegDestination.h"

namespace ImagingFramework {

JpegDestination::JpegDestination(AbstractWriter& writer, CLibraryGuard& guard) : m_writer(writer), m_guard(guard) {
    m_manager.pOwner = this;
    m_manager.init_destination = InitDestination;
    m_manager.empty_output_buffer = EmptyOutputBuffer;
    m_manager.term_destination = TermDestination;
}

JpegDestination& JpegDestination::Of(j_compress_ptr pInfo) noexcept {
    return *static_cast<Manager*>(pInfo->dest)->pOwner;
}

void JpegDestination::Rewind() noexcept {
    m_manager.next_output_byte = m_buffer.data();
    m_manager.free_in_buffer = m_buffer.size();
}

void JpegDestination::InitDestination(j_compress_ptr pInfo) noexcept { Of(pInfo).Rewind(); }

boolean JpegDestination::EmptyOutputBuffer(j_compress_ptr pInfo) noexcept {
    // The library wants the whole buffer written, whatever the counters say.
    JpegDestination& destination = Of(pInfo);
    destination.m_guard.TryOrJump(
        [&] { destination.m_writer.WriteBytes(destination.m_buffer.data(), destination.m_buffer.size()); });
    destination.Rewind();
    return TRUE;
}

void JpegDestination::TermDestination(j_compress_ptr pInfo) noexcept {
    JpegDestination& destination = Of(pInfo);
    const std::size_t count = destination.m_buffer.size() - destination.m_manager.free_in_buffer;
    destination.m_guard.TryOrJump([&] { destination.m_writer.WriteBytes(destination.m_buffer.data(), count); });
}

} // namespace ImagingFramework
