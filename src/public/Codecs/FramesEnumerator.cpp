#include <Corvane/Rasterloom/Codecs/FramesEnumerator.h>

#include "FormatReaderImpl.h"

#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {

FramesEnumerator::FramesEnumerator(FormatReader& reader) : m_pReaderLink(reader.get__Impl().m_pLink) {}

FramesEnumerator::~FramesEnumerator() = default;

FormatReader& FramesEnumerator::RequireReader() const {
    FormatReader* const reader = m_pReaderLink->Get();
    if (reader == nullptr) {
        throw ObjectNotOpenedException("reader");
    }
    return *reader;
}

bool FramesEnumerator::MoveNext() {
    const std::int32_t count = RequireReader().get_FrameCount();
    // Stays behind the last frame, however often it is called.
    if (m_intIndex < count) {
        ++m_intIndex;
    }
    return m_intIndex < count;
}

std::unique_ptr<IFrame> FramesEnumerator::get_Current() const { return RequireReader().LoadFrame(m_intIndex); }

} // namespace Corvane::Rasterloom::Codecs
