#include "FormatReaderImpl.h"

#include "CallOverStream.h"
#include "FrameImpl.h"
#include "ObjectGuard.h"
#include "Vocabulary.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/FileStream.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

FormatReader::FormatReader(std::int64_t mediaFormat, std::unique_ptr<engine::MetaData> metaData)
    : m_pImpl(std::make_unique<Impl>(this, mediaFormat, std::move(metaData))) {}

FormatReader::~FormatReader() { DisposeFinally(); }

void FormatReader::Dispose(bool disposing) {
    m_pImpl->m_pLink->Clear();
    try {
        _Close();
    } catch (...) {
        // Nothing was written, so nothing is lost.
    }
    m_pImpl->m_pMetaData.reset();
    SyncHandler::Dispose(disposing);
}

void FormatReader::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("FormatReader");
    }
}

// --- Format

std::string FormatReader::get_DefaultExtension() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetDefaultExtensionRef);
}
std::string FormatReader::get_FormatName() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFormatNameRef);
}
std::string FormatReader::get_FormatDescription() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFormatDescriptionRef);
}
std::string FormatReader::get_FilterString() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetFilterStringRef);
}
std::string FormatReader::get_MimeType() {
    return ReadVocabulary(get_MediaFormat(), engine::MimeTypes::GetMimeTypeRef);
}

std::int64_t FormatReader::get_MediaFormat() { return m_pImpl->m_intMediaFormat; }
void FormatReader::set__MediaFormat(std::int64_t mediaFormat) noexcept { m_pImpl->m_intMediaFormat = mediaFormat; }

// --- Opening

bool FormatReader::get_Opened() { return m_pImpl->m_bOpened; }

void FormatReader::CheckOpened() const {
    if (!m_pImpl->m_bOpened) {
        throw ObjectNotOpenedException("reader");
    }
}

template <class Attach>
void FormatReader::OpenBy(Attach attach) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    _Close();
    m_pImpl->m_bAttached = true;
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
    m_pImpl->m_bOpened = true;
}

void FormatReader::Open(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    OpenBy([&] {
        m_pImpl->m_pProxy = std::make_shared<NonSeekableStreamProxy>(stream);
        _AttachStream(m_pImpl->m_pProxy);
    });
}

void FormatReader::Open(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    OpenBy([&] { _AttachFile(fileName); });
}

void FormatReader::_AttachStream(const std::shared_ptr<Host::Stream>& stream) {
    m_pImpl->m_pStreamWrapper = std::make_shared<StreamWrapper>(stream);
    CallOverStream(m_pImpl->m_pStreamWrapper.get(),
                   [this] { m_pImpl->m_pMetaData->AttachToRead(m_pImpl->m_pStreamWrapper); });
}

void FormatReader::_AttachFile(const std::filesystem::path& fileName) {
    CallEngine([&] { m_pImpl->m_pMetaData->AttachToRead(fileName); });
}

void FormatReader::_DetachMedia() {
    CallEngine([this] { m_pImpl->m_pMetaData->Close(); });
}

void FormatReader::OnOpen() {
    engine::ItemTag tag(engine::MetaDataId::FrameCount, engine::ItemTag::WholeFile);
    const bool answered = CallOverStream(m_pImpl->m_pStreamWrapper.get(),
                                         [&] { return m_pImpl->m_pMetaData->GetItem(tag); });
    set__FrameCount(answered ? CallEngine([&] { return static_cast<std::int32_t>(tag); }) : -1);
}

void FormatReader::Close() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    _Close();
}

void FormatReader::_Close() {
    if (!std::exchange(m_pImpl->m_bAttached, false)) {
        return;
    }
    m_pImpl->m_bOpened = false;
    m_pImpl->m_intFrameCount = 0;
    ++m_pImpl->m_uintOpening;
    struct Release {
        Impl& Fields;
        ~Release() {
            Fields.m_pStreamWrapper.reset();
            Fields.m_pProxy.reset();
        }
    } const release{*m_pImpl};
    _DetachMedia();
    OnClose();
}

bool FormatReader::CheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return OnCheckForSupport(stream);
}

bool FormatReader::CheckForSupport(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    return CheckForSupport(
        std::make_shared<Host::FileStream>(fileName, Host::FileMode::Open, Host::FileAccess::Read));
}

bool FormatReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    StreamWrapper wrapper(stream);
    const auto format = CallOverStream(&wrapper, [&] { return engine::RecognizeMediaFormat(&wrapper); });
    return static_cast<std::int64_t>(format) == get_MediaFormat();
}

// --- Frames

std::int32_t FormatReader::get__FrameCount() const noexcept { return m_pImpl->m_intFrameCount; }

void FormatReader::set__FrameCount(std::int32_t frameCount) {
    if (frameCount < -1) {
        throw Host::ArgumentOutOfRangeException("frameCount");
    }
    m_pImpl->m_intFrameCount = frameCount;
}

std::int32_t FormatReader::get_FrameCount() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_pImpl->m_intFrameCount;
}

std::unique_ptr<IFrame> FormatReader::LoadFrame(std::int32_t index) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    CheckOpened();
    if (index < 0 || index >= m_pImpl->m_intFrameCount) {
        throw Host::ArgumentOutOfRangeException("index", "Index of frame is out of range.");
    }
    return OnFrameLoad(index);
}

FramesEnumerator FormatReader::GetEnumerator() { return FramesEnumerator(*this); }

void FormatReader::CheckFrameParams(const Frame* frame) const {
    CheckOpened();
    if (frame == nullptr) {
        throw Host::ArgumentNullException("frame");
    }
    const Frame::Impl& fields = frame->get__Impl();
    if (fields.m_pReaderLink != m_pImpl->m_pLink || fields.m_uintReaderOpening != m_pImpl->m_uintOpening) {
        throw ObjectNotOpenedException("reader"); // the file that the frame is of was closed
    }
    if (fields.m_intIndex < 0 || fields.m_intIndex >= m_pImpl->m_intFrameCount) {
        throw Host::ArgumentOutOfRangeException("frame", "Frame index is out of range.");
    }
}

bool FormatReader::_GetFrameItem(const Frame& frame, engine::ItemTag& tag) {
    CheckFrameParams(&frame);
    tag.SetFrameIndex(frame.get__Impl().m_intIndex);
    return CallOverStream(m_pImpl->m_pStreamWrapper.get(), [&] { return m_pImpl->m_pMetaData->GetItem(tag); });
}

void FormatReader::_FrameLoadProperty(Frame& frame, FrameProperty property) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    CheckFrameParams(&frame);
    _OnFrameLoadProperty(frame, property);
}

void FormatReader::_OnFrameLoadProperty(Frame& frame, FrameProperty property) {
    Frame::Impl& fields = frame.get__Impl();
    const auto load = [&](engine::MetaDataId id, auto& cell) {
        using Value = std::remove_reference_t<decltype(cell.Value)>;
        engine::ItemTag tag(id);
        if (!_GetFrameItem(frame, tag)) {
            return;
        }
        CallEngine([&] {
            if constexpr (std::is_enum_v<Value>) {
                cell.Set(static_cast<Value>(static_cast<engine::PixelFormat>(tag)));
            } else {
                cell.Set(static_cast<Value>(tag));
            }
        });
    };
    switch (property) {
    case FrameProperty::Name:
        break; // no format of the engine names its frames
    case FrameProperty::Width:
        return load(engine::MetaDataId::FrameWidth, fields.m_cells.Width);
    case FrameProperty::Height:
        return load(engine::MetaDataId::FrameHeight, fields.m_cells.Height);
    case FrameProperty::PixelFormat:
        return load(engine::MetaDataId::FramePixelFormat, fields.m_cells.PixelFormat);
    case FrameProperty::HorizontalResolution:
        return load(engine::MetaDataId::HorizontalResolution, fields.m_cells.HorizontalResolution);
    case FrameProperty::VerticalResolution:
        return load(engine::MetaDataId::VerticalResolution, fields.m_cells.VerticalResolution);
    case FrameProperty::Left:
        return load(engine::MetaDataId::FrameLeft, fields.m_cells.Left);
    case FrameProperty::Top:
        return load(engine::MetaDataId::FrameTop, fields.m_cells.Top);
    }
}

// --- Loading

ActionType FormatReader::get__ActionType() const noexcept { return m_pImpl->m_loading.m_enActionType; }
Frame* FormatReader::get__LoadingFrame() const noexcept { return m_pImpl->m_loading.m_pFrame; }
std::int32_t FormatReader::get__ThumbnailWidth() const noexcept { return m_pImpl->m_loading.m_intThumbnailWidth; }
std::int32_t FormatReader::get__ThumbnailHeight() const noexcept { return m_pImpl->m_loading.m_intThumbnailHeight; }

Transforms::InterpolationMode FormatReader::get__ThumbnailInterpolation() const noexcept {
    return m_pImpl->m_loading.m_enThumbnailInterpolation;
}

void FormatReader::_FrameLoadBitmap(Frame& frame) { StartLoading({ActionType::BitmapLoading, &frame}); }

void FormatReader::_FrameLoadThumbnail(Frame& frame, std::int32_t width, std::int32_t height,
                                       const Transforms::InterpolationMode* pInterpolationMode) {
    Loading loading{ActionType::ThumbnailLoading, &frame, width, height};
    if (pInterpolationMode != nullptr) {
        loading.m_enThumbnailInterpolation = *pInterpolationMode;
    }
    StartLoading(loading);
}

void FormatReader::StartLoading(const Loading& loading) {
    Lock();
    m_pImpl->m_bLoadHoldsLock = true;
    try {
        CheckNotDisposed();
        CheckFrameParams(loading.m_pFrame);
        m_pImpl->m_loading = loading;
        StartThread();
    } catch (...) {
        EndLoading(); // a start that failed does not come to the end of the work, which gives the lock back
        throw;
    }
    EndLoading();
}

void FormatReader::EndLoading() noexcept {
    if (!std::exchange(m_pImpl->m_bLoadHoldsLock, false)) {
        return;
    }
    m_pImpl->m_loading.m_enActionType = ActionType::None;
    m_pImpl->m_loading.m_pFrame = nullptr;
    m_pImpl->m_pRaster.reset();
    Unlock();
}

void FormatReader::ThreadProc() {
    SyncHandler::ThreadProc();
    m_pImpl->m_pRaster = _LoadRaster();
    if (!m_pImpl->m_pRaster || m_pImpl->m_pRaster->IsEmpty()) {
        throw MediaCorruptedException();
    }
}

std::unique_ptr<engine::BitmapData> FormatReader::_LoadRaster() {
    engine::MetaData& metaData = *m_pImpl->m_pMetaData;
    const Loading& loading = m_pImpl->m_loading;
    const bool thumbnail = loading.m_enActionType == ActionType::ThumbnailLoading;
    engine::ItemTag tag(thumbnail ? engine::MetaDataId::FrameThumbnail : engine::MetaDataId::FrameBitmap);
    tag.SetThumbnailWidth(static_cast<std::uint32_t>(loading.m_intThumbnailWidth));
    tag.SetThumbnailHeight(static_cast<std::uint32_t>(loading.m_intThumbnailHeight));
    tag.SetThumbnailInterpolation(static_cast<engine::InterpolationMode>(loading.m_enThumbnailInterpolation));
    struct EventsOfRun {
        FormatReader& Reader;
        engine::MetaData& Target;
        EventsOfRun(FormatReader& reader, engine::MetaData& target) : Reader(reader), Target(target) {
            Reader.ExportEventsHostSettings(&Target);
        }
        ~EventsOfRun() { Reader.ResetEventsHostSettings(&Target); }
    } const events(*this, metaData);
    if (!_GetFrameItem(*loading.m_pFrame, tag)) {
        throw UnexpectedException();
    }
    return std::unique_ptr<engine::BitmapData>(
        CallEngine([&] { return static_cast<engine::BitmapData*>(tag); }));
}

void FormatReader::OnThreadStopping(const std::exception_ptr& exception) {
    std::exception_ptr failure;
    try {
        auto raster = std::move(m_pImpl->m_pRaster);
        Frame* const frame = std::exchange(m_pImpl->m_loading.m_pFrame, nullptr);
        if (frame != nullptr && (exception || !raster)) {
            frame->_LoadingFailed();
        } else if (frame != nullptr && m_pImpl->m_loading.m_enActionType == ActionType::ThumbnailLoading) {
            frame->_ThumbnailLoadingComplete(std::move(raster));
        } else if (frame != nullptr) {
            frame->_BitmapLoadingComplete(std::move(raster));
        }
    } catch (...) {
        failure = std::current_exception();
    }
    try {
        SyncHandler::OnThreadStopping(exception);
    } catch (...) {
        failure = failure ? failure : std::current_exception();
    }
    EndLoading();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace Corvane::Rasterloom::Codecs
