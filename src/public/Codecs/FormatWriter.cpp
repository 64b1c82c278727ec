#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

#include "CallOverStream.h"
#include "Common/EventsMetaHost.h"
#include "EnumTransforms.h"
#include "FormatCodecFields.h"
#include "FrameImpl.h"
#include "InternalEvents.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "colorconversion/ColorSpaceManager.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <mutex>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

struct FormatWriter::Impl {
    std::int32_t m_intWrittenFrameCount = 0;

    // The save under way.
    Frame* m_pFrame = nullptr;
    bool m_bSaved = false;
    bool m_bLastFrame = false;
    /// What the last step, the encoding, reports to.
    InternalEventsHost m_saveHost;

    /// The reader that is loading the frame to be saved.
    std::mutex m_readerMutex;
    std::shared_ptr<ObjectLink<FormatReader>> m_pActiveReader;

    void SetActiveReader(std::shared_ptr<ObjectLink<FormatReader>> link) {
        const std::lock_guard lock(m_readerMutex);
        m_pActiveReader = std::move(link);
    }
};

/// The raster of a frame, there and locked as long as this lives.
class FormatWriter::FrameRaster {
public:
    FrameRaster(FormatWriter& writer, Frame& frame) {
        Frame::Impl& fields = frame.get__Impl();
        if (fields.m_bImageByReference) {
            LockHostBitmap(*fields.m_pBitmapToSave);
            return;
        }
        if (!fields.m_pBitmap && fields.m_pReaderLink) {
            LoadByReader(writer, frame);
        } else {
            m_pOwner = frame._GetBitmap();
        }
        m_pRaster = &m_pOwner->get__InternalBitmapData();
    }
    ~FrameRaster() {
        if (m_pLocked != nullptr) {
            m_pLocked->Unlock();
        }
    }
    FrameRaster(const FrameRaster&) = delete;
    FrameRaster& operator=(const FrameRaster&) = delete;

    engine::BitmapData& Get() const { return *m_pRaster; }

private:
    void LockHostBitmap(const BitmapLink& link) {
        Bitmap* const bitmap = link.Get();
        if (bitmap == nullptr) {
            throw BitmapEmptyException();
        }
        bitmap->Lock();
        try {
            m_pRaster = &bitmap->get__InternalBitmapData();
        } catch (...) {
            bitmap->Unlock();
            throw;
        }
        m_pLocked = bitmap;
    }

    /// The reader's failure is to arrive here, whatever the host has told the reader about failures.
    void LoadByReader(FormatWriter& writer, Frame& frame) {
        FormatReader* const reader = frame.get__Impl().m_pReaderLink->Get();
        struct Loading {
            FormatWriter& Writer;
            FormatReader* Reader;
            bool ThrowEnabled;
            ~Loading() {
                Writer.m_pImpl->SetActiveReader(nullptr);
                if (Reader != nullptr) {
                    Reader->set_ExceptionThrowEnabled(ThrowEnabled);
                }
            }
        } const loading{writer, reader, reader == nullptr || reader->get_ExceptionThrowEnabled()};
        if (reader != nullptr) {
            writer.m_pImpl->SetActiveReader(frame.get__Impl().m_pReaderLink);
            reader->set_ExceptionThrowEnabled(true);
        }
        m_pOwner = frame._GetBitmap();
    }

    std::shared_ptr<Bitmap> m_pOwner;
    Bitmap* m_pLocked = nullptr;
    engine::BitmapData* m_pRaster = nullptr;
};

FormatWriter::FormatWriter(std::int64_t mediaFormat, std::unique_ptr<engine::MetaData> metaData)
    : FormatCodec(mediaFormat, std::move(metaData)), m_pImpl(std::make_unique<Impl>()) {}

FormatWriter::~FormatWriter() { DisposeFinally(); }

void FormatWriter::_ForgetMedia() noexcept {
    m_pImpl->m_intWrittenFrameCount = 0;
    m_pImpl->m_bLastFrame = false;
}

// --- Format

std::vector<PixelFormat> FormatWriter::_GetSupportedPixelFormats() {
    std::vector<engine::PixelFormat> list;
    CallEngine([&] { m_pCodec->m_pMetaData->GetSupportedPixelFormats(list); });
    return TransformPixelFormats(list);
}

PixelFormat FormatWriter::_GetClosestPixelFormat(PixelFormat format) {
    return CallEngine([&] {
        return static_cast<PixelFormat>(
            m_pCodec->m_pMetaData->GetClosestPixelFormat(static_cast<engine::PixelFormat>(format)));
    });
}

std::vector<PixelFormat> FormatWriter::get_SupportedPixelFormats() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return _GetSupportedPixelFormats();
}

bool FormatWriter::IsPixelFormatSupported(PixelFormat format) {
    Validator::ValidateEnum("format", format);
    const auto formats = get_SupportedPixelFormats();
    return std::ranges::find(formats, format) != formats.end();
}

// --- Settings

bool FormatWriter::_SetItem(engine::ItemTag& tag) {
    return CallOverStream(m_pCodec->m_pStreamWrapper.get(), [&] { return m_pCodec->m_pMetaData->SetItem(tag); });
}

std::int32_t FormatWriter::get__WrittenFrameCount() const noexcept { return m_pImpl->m_intWrittenFrameCount; }
void FormatWriter::set__LastFrame(bool value) noexcept { m_pImpl->m_bLastFrame = value; }

void FormatWriter::OnBeforeAddFrame(Frame&) {}
void FormatWriter::OnAfterAddFrame(Frame&) {}
void FormatWriter::OnImportEncoderOptions(const EncoderOptions&) {}
void FormatWriter::OnExportEncoderOptions(EncoderOptions&) {}

void FormatWriter::ImportEncoderOptions(const EncoderOptions* options) {
    if (options == nullptr) {
        throw Host::ArgumentNullException("options");
    }
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    OnImportEncoderOptions(*options);
}

void FormatWriter::ExportEncoderOptions(EncoderOptions* options) {
    if (options == nullptr) {
        throw Host::ArgumentNullException("options");
    }
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    OnExportEncoderOptions(*options);
}

std::unique_ptr<EncoderOptions> FormatWriter::ExportEncoderOptions() {
    auto options = GetEmptyFrame()->ExportEncoderOptions();
    ExportEncoderOptions(options.get());
    return options;
}

// --- Adding a frame

void FormatWriter::AddFrame(IFrame* frame) {
    if (frame == nullptr) {
        throw Host::ArgumentNullException("frame");
    }
    auto* const own = dynamic_cast<Frame*>(frame);
    if (own == nullptr) {
        throw Host::InvalidCastException();
    }
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    CheckOpened();
    const ObjectGuard frameGuard(*own);
    own->CheckNotDisposed();
    struct Saving {
        Impl& Fields;
        ~Saving() { Fields.m_pFrame = nullptr; }
    } const saving{*m_pImpl};
    m_pImpl->m_pFrame = own;
    _AddFrame(*own);
}

void FormatWriter::_AddFrame(Frame& frame) {
    RaiseSavingEvent(frame);
    OnBeforeAddFrame(frame);
    _FrameSaveParameters(frame);
    m_pImpl->m_bSaved = false;
    StartThread();
    if (!m_pImpl->m_bSaved) {
        return; // the host does not want failures raised
    }
    OnAfterAddFrame(frame);
    ++m_pImpl->m_intWrittenFrameCount;
    frame._RaiseBitmapSavedEvent();
}

/// The handlers see the settings as this format has them, whatever format the frame is of.
void FormatWriter::RaiseSavingEvent(Frame& frame) {
    const auto options = GetEmptyFrame()->ExportEncoderOptions();
    frame._ExportEncoderOptions(*options);
    OnExportEncoderOptions(*options);
    frame._RaiseBitmapSavingEvent(options.get());
}

void FormatWriter::_FrameSaveParameters(Frame& frame) {
    engine::ItemTag left(engine::MetaDataId::FrameLeft, m_pImpl->m_intWrittenFrameCount);
    left = frame.get__Left();
    _SetItem(left);
    engine::ItemTag top(engine::MetaDataId::FrameTop, m_pImpl->m_intWrittenFrameCount);
    top = frame.get__Top();
    _SetItem(top);
}

// --- The operation

void FormatWriter::ThreadProc() {
    SyncHandler::ThreadProc();
    const FrameRaster image(*this, *m_pImpl->m_pFrame);
    if (image.Get().IsEmpty()) {
        throw BitmapEmptyException();
    }
    const auto format = static_cast<PixelFormat>(image.Get().GetPixelFormat());
    const auto formats = _GetSupportedPixelFormats();
    if (std::ranges::find(formats, format) != formats.end()) {
        Save(image.Get(), GetThread().GetEvents(), get_Timeout());
    } else {
        ConvertAndSave(image.Get(), _GetClosestPixelFormat(format));
    }
}

/// Two operations that share the progress. The counter of the thread never goes back, so both report through one host
/// that turns them into halves.
void FormatWriter::ConvertAndSave(const engine::BitmapData& raster, PixelFormat format) {
    constexpr std::int32_t steps = 200;
    const std::uint32_t start = engine::GetTickCount();
    engine::EventsMetaHost host({1, 1}, {}, steps);
    host.SetEvents(GetThread().GetEvents());
    std::unique_ptr<engine::BitmapData> converted;
    CallEngine([&] {
        engine::ColorSpaceManager manager;
        manager.SetTimeout(get_Timeout());
        manager.SetEvents(host.GetWorkerEvents(0));
        manager.TransformBitmapData(raster, static_cast<engine::PixelFormat>(format), converted);
    });
    std::int32_t timeout = get_Timeout();
    if (timeout > 0) {
        timeout = std::max(1, timeout - static_cast<std::int32_t>(engine::GetTickCount() - start));
    }
    Save(*converted, host.GetWorkerEvents(1), timeout);
}

void FormatWriter::Save(engine::BitmapData& raster, engine::IInternalEvents* pEvents, std::int32_t timeout) {
    struct EventsOfSave {
        engine::IInternalEventsHost* Target;
        ~EventsOfSave() {
            Target->SetEvents(nullptr);
            Target->SetTimeout(-1);
        }
    };
    m_pImpl->m_saveHost.SetEvents(pEvents);
    m_pImpl->m_saveHost.SetTimeout(timeout);
    const EventsOfSave events{&m_pImpl->m_saveHost};
    _SaveRaster(*m_pImpl->m_pFrame, raster);
}

void FormatWriter::_SaveRaster(Frame&, engine::BitmapData& raster) {
    engine::MetaData& metaData = *m_pCodec->m_pMetaData;
    engine::ItemTag tag(engine::MetaDataId::FrameBitmap, m_pImpl->m_intWrittenFrameCount);
    tag.SetIsLastGifFrame(m_pImpl->m_bLastFrame);
    tag = &raster;
    metaData.SetEvents(m_pImpl->m_saveHost.GetEvents());
    metaData.SetTimeout(m_pImpl->m_saveHost.GetTimeout());
    struct EventsOfEngine {
        FormatWriter& Writer;
        engine::MetaData& Target;
        ~EventsOfEngine() { Writer.ResetEventsHostSettings(&Target); }
    } const events{*this, metaData};
    if (!_SetItem(tag)) {
        throw UnexpectedException();
    }
}

void FormatWriter::_ResetSaveProgress(std::int32_t count) {
    CallEngine([&] { m_pImpl->m_saveHost.ResetProgress(count); });
}

void FormatWriter::_ReportSaveProgress(std::int32_t step) {
    CallEngine([&] { m_pImpl->m_saveHost.UpdateEvents(step); });
}

void FormatWriter::OnThreadStopping(const std::exception_ptr& exception) {
    m_pImpl->m_bSaved = exception == nullptr;
    SyncHandler::OnThreadStopping(exception);
}

// --- Control

template <class Forward>
void FormatWriter::ForwardToReader(Forward forward) {
    std::shared_ptr<ObjectLink<FormatReader>> link;
    {
        const std::lock_guard lock(m_pImpl->m_readerMutex);
        link = m_pImpl->m_pActiveReader;
    }
    FormatReader* const reader = link ? link->Get() : nullptr;
    // An idle reader would remember the request for its next load.
    if (reader != nullptr && !reader->get_Completed()) {
        forward(*reader);
    }
}

void FormatWriter::Abort() {
    ForwardToReader([](FormatReader& reader) { reader.Abort(); });
    SyncHandler::Abort();
}

void FormatWriter::Pause() {
    ForwardToReader([](FormatReader& reader) { reader.Pause(); });
    SyncHandler::Pause();
}

void FormatWriter::Continue() {
    ForwardToReader([](FormatReader& reader) { reader.Continue(); });
    SyncHandler::Continue();
}

} // namespace Corvane::Rasterloom::Codecs
