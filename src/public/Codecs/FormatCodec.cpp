#include "FormatCodecFields.h"

#include "CallOverStream.h"
#include "ObjectGuard.h"
#include "metadata/MimeTypes.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <type_traits>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

template <class Interface>
constexpr bool IsReader = std::is_same_v<Interface, IFormatReader>;

template <class Interface, class Source>
void Attach(engine::MetaData& metaData, const Source& source) {
    if constexpr (IsReader<Interface>) {
        metaData.AttachToRead(source);
    } else {
        metaData.AttachToWrite(source);
    }
}

/// A word of the engine's table of media formats.
std::string ReadVocabulary(std::int64_t mediaFormat, const std::string& (*lookup)(engine::FileFormat)) {
    return CallEngine([&]() -> std::string { return lookup(static_cast<engine::FileFormat>(mediaFormat)); });
}

} // namespace

template <class Interface>
FormatCodec<Interface>::FormatCodec(std::int64_t mediaFormat, std::unique_ptr<engine::MetaData> metaData)
    : m_pCodec(new FormatCodecFields{mediaFormat, std::move(metaData)}) {}

template <class Interface>
FormatCodec<Interface>::~FormatCodec() = default;

template <class Interface>
void FormatCodec<Interface>::Dispose(bool disposing) {
    std::exception_ptr failure;
    try {
        _Close();
    } catch (...) {
        failure = std::current_exception();
    }
    m_pCodec->m_pMetaData.reset();
    SyncHandler::Dispose(disposing);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

template <class Interface>
void FormatCodec<Interface>::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException(IsReader<Interface> ? "FormatReader" : "FormatWriter");
    }
}

template <class Interface>
void FormatCodec<Interface>::CheckOpened() const {
    if (!m_pCodec->m_bOpened) {
        throw ObjectNotOpenedException(IsReader<Interface> ? "reader" : "writer");
    }
}

// --- Format

template <class Interface>
std::string FormatCodec<Interface>::get_DefaultExtension() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetDefaultExtensionRef);
}

template <class Interface>
std::string FormatCodec<Interface>::get_FormatName() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFormatNameRef);
}

template <class Interface>
std::string FormatCodec<Interface>::get_FormatDescription() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFormatDescriptionRef);
}

template <class Interface>
std::string FormatCodec<Interface>::get_FilterString() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFilterStringRef);
}

template <class Interface>
std::string FormatCodec<Interface>::get_MimeType() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetMimeTypeRef);
}

template <class Interface>
std::int64_t FormatCodec<Interface>::get_MediaFormat() {
    return m_pCodec->m_intMediaFormat;
}

template <class Interface>
void FormatCodec<Interface>::set__MediaFormat(std::int64_t mediaFormat) noexcept {
    m_pCodec->m_intMediaFormat = mediaFormat;
}

// --- Opening

template <class Interface>
bool FormatCodec<Interface>::get_Opened() {
    return m_pCodec->m_bOpened;
}

template <class Interface>
template <class Attach>
void FormatCodec<Interface>::OpenBy(Attach attach) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    _Close();
    try {
        attach();
        OnOpen();
    } catch (...) {
        try {
            _Close();
        } catch (...) {
            // The first failure is the one to tell.
        }
        throw;
    }
    m_pCodec->m_bOpened = true;
}

template <class Interface>
void FormatCodec<Interface>::Open(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    OpenBy([&] {
        m_pCodec->m_pStream = _PrepareStream(stream);
        m_pCodec->m_bAttached = true;
        _AttachStream(m_pCodec->m_pStream);
    });
}

template <class Interface>
void FormatCodec<Interface>::Open(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    OpenBy([&] {
        m_pCodec->m_bAttached = true;
        _AttachFile(fileName);
    });
}

template <class Interface>
void FormatCodec<Interface>::_AttachStream(const std::shared_ptr<Host::Stream>& stream) {
    const auto wrapper = std::make_shared<StreamWrapper>(stream);
    m_pCodec->m_pStreamWrapper = wrapper;
    CallOverStream(wrapper.get(), [&] { Attach<Interface>(*m_pCodec->m_pMetaData, wrapper); });
}

template <class Interface>
void FormatCodec<Interface>::_AttachFile(const std::filesystem::path& fileName) {
    CallEngine([&] { Attach<Interface>(*m_pCodec->m_pMetaData, fileName); });
}

template <class Interface>
void FormatCodec<Interface>::_DetachMedia() {
    CallOverStream(m_pCodec->m_pStreamWrapper.get(), [this] { m_pCodec->m_pMetaData->Close(); });
}

template <class Interface>
void FormatCodec<Interface>::Close() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    _Close();
}

template <class Interface>
void FormatCodec<Interface>::_Close() {
    if (!std::exchange(m_pCodec->m_bAttached, false)) {
        return;
    }
    m_pCodec->m_bOpened = false;
    std::exception_ptr failure;
    const auto step = [&](auto body) {
        try {
            body();
        } catch (...) {
            failure = failure ? failure : std::current_exception();
        }
    };
    step([this] { _DetachMedia(); });
    step([this] { OnClose(); });
    m_pCodec->m_pStreamWrapper.reset();
    m_pCodec->m_pStream.reset();
    _ForgetMedia();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

template class FormatCodec<IFormatReader>;
template class FormatCodec<IFormatWriter>;

} // namespace Corvane::Rasterloom::Codecs
