#include "FormatReaderImpl.h"

#include "CallOverStream.h"
#include "Common/FrameSize.h"
#include "FormatCodecFields.h"
#include "FrameImpl.h"
#include "ObjectGuard.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Codecs/NonSeekableStreamProxy.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/FileStream.h>

#include <algorithm>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

FormatReader::FormatReader(std::int64_t mediaFormat, std::unique_ptr<engine::MetaData> metaData)
    : FormatCodec(mediaFormat, std::move(metaData)), m_pImpl(std::make_unique<Impl>(this)) {}

FormatReader::~FormatReader() { DisposeFinally(); }

void FormatReader::Dispose(bool disposing) {
    m_pImpl->m_pLink->Clear();
    FormatCodec::Dispose(disposing);
}

// --- Opening

std::shared_ptr<Host::Stream> FormatReader::_PrepareStream(const std::shared_ptr<Host::Stream>& stream) {
    return std::make_shared<NonSeekableStreamProxy>(stream);
}

void FormatReader::OnOpen() {
    engine::ItemTag tag(engine::MetaDataId::FrameCount, engine::ItemTag::WholeFile);
    const bool answered = _GetItem(tag);
    set__FrameCount(answered ? CallEngine([&] { return static_cast<std::int32_t>(tag); }) : -1);
}

void FormatReader::_ForgetMedia() noexcept {
    m_pImpl->m_intFrameCount = 0;
    ++m_pImpl->m_uintOpening;
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
    CallEngine([&] { engine::CheckFrameCount(static_cast<std::uint64_t>(std::max(0, frameCount))); });
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
    return _GetItem(tag);
}

bool FormatReader::_GetItem(engine::ItemTag& tag) {
    return CallOverStream(m_pCodec->m_pStreamWrapper.get(), [&] { return m_pCodec->m_pMetaData->GetItem(tag); });
}

void FormatReader::_FrameLoadProperty(Frame& frame, FrameProperty property) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    CheckFrameParams(&frame);
    _OnFrameLoadProperty(frame, property);
}

/// Null for none, and for one that is damaged: the picture beside it is good.
std::shared_ptr<ColorProfile> FormatReader::LoadColorProfile(const Frame& frame) {
    engine::ItemTag tag(engine::MetaDataId::ColorProfile);
    if (!_GetFrameItem(frame, tag) || tag.IsEmpty()) {
        return nullptr;
    }
    const std::unique_ptr<engine::ColorProfileData> data(
        CallEngine([&] { return static_cast<engine::ColorProfileData*>(tag); }));
    try {
        return data && !data->Bytes.empty() ? std::make_shared<ColorProfile>(std::span(std::as_const(data->Bytes)))
                                            : nullptr;
    } catch (const Host::Exception&) {
        return nullptr;
    }
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
    case FrameProperty::ColorProfile:
        return fields.m_cells.ColorProfile.Set(LoadColorProfile(frame));
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
    engine::MetaData& metaData = *m_pCodec->m_pMetaData;
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
