#include <Corvane/Rasterloom/Codecs/CustomFormatReader.h>

#include "CallEngine.h"
#include "Common/FrameSize.h"
#include "FrameImpl.h"
#include "metadata/MetaData.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/FileStream.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace {

constexpr std::int32_t DefaultStepCount = 100;

void CheckNotClosed(const Host::Stream& stream) {
    if (!stream.get_CanRead() && !stream.get_CanWrite() && !stream.get_CanSeek()) {
        throw Host::ArgumentException("Stream has been closed.", "stream");
    }
}

std::int64_t RequirePosition(Host::Stream& stream) {
    try {
        return stream.get_Position();
    } catch (const std::exception&) {
        throw Host::ArgumentException("Stream did not return current position.", "stream");
    }
}

} // namespace

CustomFormatReader::CustomFormatReader(std::int64_t mediaFormat) : CustomFormatCodec(mediaFormat) {}

CustomFormatReader::~CustomFormatReader() { DisposeFinally(); }

// --- Opening

void CustomFormatReader::OpenReader(const std::filesystem::path& fileName) {
    m_pFileStream = std::make_shared<Host::FileStream>(fileName, Host::FileMode::Open, Host::FileAccess::Read);
    OpenReader(m_pFileStream);
}

void CustomFormatReader::_AttachStream(const std::shared_ptr<Host::Stream>& stream) {
    stream->set_Position(0);
    OpenReader(stream);
}

void CustomFormatReader::_AttachFile(const std::filesystem::path& fileName) {
    OpenReader(fileName);
}

void CustomFormatReader::_DetachMedia() {
    const auto stream = std::exchange(m_pFileStream, nullptr);
    CloseReader();
}

bool CustomFormatReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    CheckNotClosed(*stream);
    const std::int64_t position = RequirePosition(*stream);
    bool supported = false;
    try {
        supported = IsSupported(*stream);
    } catch (...) {
        stream->set_Position(position);
        throw;
    }
    stream->set_Position(position);
    return supported;
}

// --- Frames

std::unique_ptr<Frame> CustomFormatReader::OnFrameLoad(std::int32_t index) {
    auto frame = GetEmptyFrame();
    if (!frame) {
        throw UnexpectedException();
    }
    frame->set_FormatReaderTU(this);
    frame->set_IndexTU(index);
    return frame;
}

void CustomFormatReader::_OnFrameLoadProperty(Frame& frame, FrameProperty) {
    auto* const custom = dynamic_cast<CustomFrame*>(&frame);
    if (custom == nullptr) {
        throw Host::InvalidCastException();
    }
    Frame::Impl::Cells& cells = frame.get__Impl().m_cells;
    const Frame::Impl::Cells before = cells;
    LoadFrameParameters(*custom);
    cells.ForEach(before, [](auto& cell, const auto& old) {
        // A property that the host has set keeps its value; one that is not set now counts as asked for.
        if (old.Loaded) {
            cell = old;
        }
        cell.Loaded = true;
    });
}

std::unique_ptr<ImagingFramework::BitmapData> CustomFormatReader::_LoadRaster() {
    m_pLoadedBitmap.reset();
    ResetEvents(DefaultStepCount);
    LoadFrameBitmap();
    const auto bitmap = std::exchange(m_pLoadedBitmap, nullptr);
    if (!bitmap) {
        throw UnexpectedException("The custom reader has not set the loaded bitmap.");
    }
    auto raster = bitmap->_Detach();
    if (get__ActionType() == ActionType::BitmapLoading) {
        CallEngine([&] {
            ImagingFramework::CheckFrameSize(raster->GetWidth(), raster->GetHeight(), raster->GetPixelFormat());
        });
    }
    return raster;
}

// --- Helpers

void CustomFormatReader::SetFrameCount(std::int32_t count) {
    if (count < 0) {
        throw Host::ArgumentException("Count of frames should be non-negative.", "count");
    }
    set__FrameCount(count);
}

void CustomFormatReader::ResetEvents(std::int32_t count) { _ResetProgress(count); }
void CustomFormatReader::UpdateEvents() { _ReportProgress(1); }
void CustomFormatReader::UpdateEvents(std::int32_t step) { _ReportProgress(step); }

void CustomFormatReader::SetLoadedBitmap(Bitmap* bitmap) {
    if (bitmap == nullptr) {
        throw Host::ArgumentNullException("bitmap");
    }
    if (bitmap->get_IsEmpty()) {
        throw BitmapEmptyException("bitmap");
    }
    m_pLoadedBitmap = std::make_unique<Bitmap>(bitmap->_Detach());
}

std::int32_t CustomFormatReader::GetFrameIndexToLoad() const noexcept {
    const Frame* const frame = get__LoadingFrame();
    return frame != nullptr ? frame->get__Impl().m_intIndex : -1;
}

std::int32_t CustomFormatReader::GetThumbnailWidthToLoad() const noexcept { return get__ThumbnailWidth(); }
std::int32_t CustomFormatReader::GetThumbnailHeightToLoad() const noexcept { return get__ThumbnailHeight(); }

Transforms::InterpolationMode CustomFormatReader::GetThumbnailInterpolationToLoad() const noexcept {
    return get__ThumbnailInterpolation();
}

LoadingMode CustomFormatReader::GetLoadingMode() const noexcept {
    return get__ActionType() == ActionType::ThumbnailLoading ? LoadingMode::Thumbnail : LoadingMode::Bitmap;
}

CustomFrame* CustomFormatReader::GetLoadingFrame() const noexcept {
    return dynamic_cast<CustomFrame*>(get__LoadingFrame());
}

} // namespace Corvane::Rasterloom::Codecs
