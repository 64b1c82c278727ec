#include <Corvane/Rasterloom/Codecs/CustomFormatWriter.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "EngineFileStream.h"
#include "metadata/MetaData.h"

#include <Corvane/Rasterloom/Bitmap.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

constexpr std::int32_t DefaultStepCount = 100;

} // namespace

CustomFormatWriter::CustomFormatWriter(std::int64_t mediaFormat) : CustomFormatCodec(mediaFormat) {}

CustomFormatWriter::~CustomFormatWriter() { DisposeFinally(); }

std::unique_ptr<IFrame> CustomFormatWriter::GetEmptyFrame() { return std::make_unique<CustomFrame>(); }

// --- Opening

void CustomFormatWriter::OpenWriter(const std::shared_ptr<Host::Stream>&) {}

void CustomFormatWriter::OpenWriter(const std::filesystem::path& fileName) {
    m_pTargetFile = std::make_shared<EngineFileStream>(fileName);
    m_pStream = m_pTargetFile;
    OpenWriter(m_pStream);
}

void CustomFormatWriter::CloseWriter() {
    if (const auto file = std::exchange(m_pTargetFile, nullptr)) {
        if (GetWrittenFrameCount() > 0) {
            file->Complete();
        }
        file->Close();
    }
}

void CustomFormatWriter::_AttachStream(const std::shared_ptr<Host::Stream>& stream) {
    m_pStream = stream;
    OpenWriter(stream);
}

void CustomFormatWriter::_AttachFile(const std::filesystem::path& fileName) {
    OpenWriter(fileName);
}

void CustomFormatWriter::_DetachMedia() {
    struct Release {
        CustomFormatWriter& Writer;
        ~Release() {
            Writer.m_pStream.reset();
            Writer.m_pTargetFile.reset(); // where the host's `CloseWriter` has failed or does not call the base's
        }
    } const release{*this};
    CloseWriter();
}

// --- Saving

void CustomFormatWriter::SaveFrameParameters(CustomFrame&) {}

void CustomFormatWriter::_FrameSaveParameters(Frame& frame) {
    if (auto* const custom = dynamic_cast<CustomFrame*>(&frame)) {
        SaveFrameParameters(*custom);
    }
}

/// The host gets a bitmap of its own over the same memory: the real one may be locked.
void CustomFormatWriter::_SaveRaster(Frame&, engine::BitmapData& raster) {
    auto shared = CallEngine([&] {
        auto part = std::make_unique<engine::BitmapData>();
        part->AttachPartially(raster, {0, 0, static_cast<std::int32_t>(raster.GetWidth()),
                                       static_cast<std::int32_t>(raster.GetHeight())});
        return part;
    });
    Bitmap bitmap(std::move(shared));
    ResetEvents(DefaultStepCount);
    SaveFrameBitmap(bitmap);
}

// --- Helpers

void CustomFormatWriter::ResetEvents(std::int32_t count) { _ResetSaveProgress(count); }
void CustomFormatWriter::UpdateEvents() { _ReportSaveProgress(1); }
void CustomFormatWriter::UpdateEvents(std::int32_t step) { _ReportSaveProgress(step); }
std::int32_t CustomFormatWriter::GetWrittenFrameCount() const noexcept { return get__WrittenFrameCount(); }

} // namespace Corvane::Rasterloom::Codecs
