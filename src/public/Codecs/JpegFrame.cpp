#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

#include "ObjectGuard.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- JpegEncoderOptions

JpegEncoderOptions::JpegEncoderOptions() : EncoderOptions(FormatManager::JpegFormat) {}

JpegEncoderOptions::JpegEncoderOptions(std::int32_t quality) : JpegEncoderOptions() { set_Quality(quality); }

JpegEncoderOptions::JpegEncoderOptions(std::int32_t quality, bool isProgressive) : JpegEncoderOptions(quality) {
    m_settings.IsProgressive = isProgressive;
}

JpegEncoderOptions::JpegEncoderOptions(std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled)
    : JpegEncoderOptions(quality, isProgressive) {
    m_settings.ChromaSubsamplingEnabled = chromaSubsamplingEnabled;
}

JpegEncoderOptions::~JpegEncoderOptions() = default;

void JpegEncoderOptions::set_Quality(std::int32_t quality) {
    if (quality < 0 || quality > 100) {
        throw Host::ArgumentOutOfRangeException("quality", "Quality should be in the range of [0, 100].");
    }
    m_settings.Quality = quality;
}

void JpegEncoderOptions::set_RestartInterval(std::int32_t restartInterval) {
    if (restartInterval < 0 || restartInterval > 65535) {
        throw Host::ArgumentOutOfRangeException("restartInterval");
    }
    m_settings.RestartInterval = restartInterval;
}

std::unique_ptr<IFrame> JpegEncoderOptions::ToFrame() const {
    auto frame = std::make_unique<JpegFrame>();
    frame->ImportEncoderOptions(this);
    return frame;
}

// --- JpegFrame

JpegFrame::JpegFrame() = default;

JpegFrame::JpegFrame(std::int32_t quality) : m_options(quality) {}

JpegFrame::JpegFrame(std::int32_t quality, bool isProgressive) : m_options(quality, isProgressive) {}

JpegFrame::JpegFrame(std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled)
    : m_options(quality, isProgressive, chromaSubsamplingEnabled) {}

JpegFrame::JpegFrame(Bitmap* bitmap) { SetBitmap(bitmap); }

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality) : JpegFrame(quality) { SetBitmap(bitmap); }

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive) : JpegFrame(quality, isProgressive) {
    SetBitmap(bitmap);
}

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled)
    : JpegFrame(quality, isProgressive, chromaSubsamplingEnabled) {
    SetBitmap(bitmap);
}

JpegFrame::JpegFrame(JpegReader& reader, std::int32_t index) : Frame(reader, index), m_bLoaded(false) {}

JpegFrame::~JpegFrame() = default;

const JpegEncoderOptions::Settings& JpegFrame::get__Settings() {
    if (!m_bLoaded) {
        JpegEncoderOptions::Settings settings = m_options.get__Settings();
        static_cast<JpegReader&>(RequireReader())._FrameLoadSettings(*this, settings);
        m_options.set__Settings(settings);
        m_bLoaded = true;
    }
    return m_options.get__Settings();
}

namespace {

/// Runs `body` with the frame locked and its settings loaded.
template <class Body>
auto WithSettings(JpegFrame& frame, Body body) {
    const ObjectGuard guard(frame);
    frame.CheckNotDisposed();
    frame.get__Settings();
    return body();
}

} // namespace

std::int32_t JpegFrame::get_Quality() {
    return WithSettings(*this, [this] { return m_options.get_Quality(); });
}
void JpegFrame::set_Quality(std::int32_t quality) {
    WithSettings(*this, [&] { m_options.set_Quality(quality); });
}
bool JpegFrame::get_IsProgressive() {
    return WithSettings(*this, [this] { return m_options.get_IsProgressive(); });
}
void JpegFrame::set_IsProgressive(bool isProgressive) {
    WithSettings(*this, [&] { m_options.set_IsProgressive(isProgressive); });
}
bool JpegFrame::get_ChromaSubsamplingEnabled() {
    return WithSettings(*this, [this] { return m_options.get_ChromaSubsamplingEnabled(); });
}
void JpegFrame::set_ChromaSubsamplingEnabled(bool enabled) {
    WithSettings(*this, [&] { m_options.set_ChromaSubsamplingEnabled(enabled); });
}
std::int32_t JpegFrame::get_RestartInterval() {
    return WithSettings(*this, [this] { return m_options.get_RestartInterval(); });
}
void JpegFrame::set_RestartInterval(std::int32_t restartInterval) {
    WithSettings(*this, [&] { m_options.set_RestartInterval(restartInterval); });
}

std::unique_ptr<EncoderOptions> JpegFrame::CreateEmptyEncoderOptions() { return std::make_unique<JpegEncoderOptions>(); }

void JpegFrame::OnImportEncoderOptions(const EncoderOptions& options) {
    Frame::OnImportEncoderOptions(options);
    if (const auto* const own = dynamic_cast<const JpegEncoderOptions*>(&options)) {
        m_options.set__Settings(own->get__Settings());
        m_bLoaded = true;
    }
}

void JpegFrame::OnExportEncoderOptions(EncoderOptions& options) {
    Frame::OnExportEncoderOptions(options);
    if (auto* const own = dynamic_cast<JpegEncoderOptions*>(&options)) {
        own->set__Settings(get__Settings());
    }
}

} // namespace Corvane::Rasterloom::Codecs
