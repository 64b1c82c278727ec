#include <Corvane/Rasterloom/Codecs/PngFrame.h>

#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PngReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- PngEncoderOptions

PngEncoderOptions::PngEncoderOptions() : EncoderOptions(FormatManager::PngFormat) {}

PngEncoderOptions::PngEncoderOptions(bool interlaced) : PngEncoderOptions() { m_settings.Interlaced = interlaced; }

PngEncoderOptions::~PngEncoderOptions() = default;

void PngEncoderOptions::set_CompressionLevel(std::int32_t compressionLevel) {
    if (compressionLevel < DefaultCompressionLevel || compressionLevel > 9) {
        throw Host::ArgumentOutOfRangeException("compressionLevel");
    }
    m_settings.CompressionLevel = compressionLevel;
}

void PngEncoderOptions::set_Filter(PngFilter filter) {
    Validator::ValidateEnum("filter", filter);
    m_settings.Filter = filter;
}

std::unique_ptr<IFrame> PngEncoderOptions::ToFrame() const {
    auto frame = std::make_unique<PngFrame>();
    frame->ImportEncoderOptions(this);
    return frame;
}

// --- PngFrame

PngFrame::PngFrame() = default;

PngFrame::PngFrame(bool interlaced) : m_options(interlaced) {}

PngFrame::PngFrame(Bitmap* bitmap) { SetBitmap(bitmap); }

PngFrame::PngFrame(Bitmap* bitmap, bool interlaced) : PngFrame(interlaced) { SetBitmap(bitmap); }

PngFrame::PngFrame(PngReader& reader, std::int32_t index) : Frame(reader, index), m_bLoaded(false) {}

PngFrame::~PngFrame() = default;

const PngEncoderOptions::Settings& PngFrame::get__Settings() {
    if (!m_bLoaded) {
        m_options.set_Interlaced(static_cast<PngReader&>(RequireReader())._FrameLoadInterlaced(*this));
        m_bLoaded = true;
    }
    return m_options.get__Settings();
}

namespace {

/// Runs `body` with the frame locked and its settings loaded.
template <class Body>
auto WithSettings(PngFrame& frame, Body body) {
    const ObjectGuard guard(frame);
    frame.CheckNotDisposed();
    frame.get__Settings();
    return body();
}

} // namespace

bool PngFrame::get_Interlaced() {
    return WithSettings(*this, [this] { return m_options.get_Interlaced(); });
}
void PngFrame::set_Interlaced(bool interlaced) {
    WithSettings(*this, [&] { m_options.set_Interlaced(interlaced); });
}
std::int32_t PngFrame::get_CompressionLevel() {
    return WithSettings(*this, [this] { return m_options.get_CompressionLevel(); });
}
void PngFrame::set_CompressionLevel(std::int32_t compressionLevel) {
    WithSettings(*this, [&] { m_options.set_CompressionLevel(compressionLevel); });
}
PngFilter PngFrame::get_Filter() {
    return WithSettings(*this, [this] { return m_options.get_Filter(); });
}
void PngFrame::set_Filter(PngFilter filter) {
    WithSettings(*this, [&] { m_options.set_Filter(filter); });
}

std::unique_ptr<EncoderOptions> PngFrame::CreateEmptyEncoderOptions() { return std::make_unique<PngEncoderOptions>(); }

void PngFrame::OnImportEncoderOptions(const EncoderOptions& options) {
    Frame::OnImportEncoderOptions(options);
    if (const auto* const own = dynamic_cast<const PngEncoderOptions*>(&options)) {
        m_options.set__Settings(own->get__Settings());
        m_bLoaded = true;
    }
}

void PngFrame::OnExportEncoderOptions(EncoderOptions& options) {
    Frame::OnExportEncoderOptions(options);
    if (auto* const own = dynamic_cast<PngEncoderOptions*>(&options)) {
        own->set__Settings(get__Settings());
    }
}

} // namespace Corvane::Rasterloom::Codecs
