#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

#include "SettingsFrame.h"

#include <Corvane/Rasterloom/Codecs/JpegReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- JpegEncoderOptions

JpegEncoderOptions::JpegEncoderOptions() = default;

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

// --- JpegFrame

template class SettingsFrameOf<Formats::Jpeg, JpegEncoderOptions>;

JpegFrame::JpegFrame() : SettingsFrameOf(JpegEncoderOptions::Settings{}) {}

JpegFrame::JpegFrame(std::int32_t quality) : SettingsFrameOf(JpegEncoderOptions(quality).get__Settings()) {}

JpegFrame::JpegFrame(std::int32_t quality, bool isProgressive)
    : SettingsFrameOf(JpegEncoderOptions(quality, isProgressive).get__Settings()) {}

JpegFrame::JpegFrame(std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled)
    : SettingsFrameOf(JpegEncoderOptions(quality, isProgressive, chromaSubsamplingEnabled).get__Settings()) {}

JpegFrame::JpegFrame(Bitmap* bitmap) : JpegFrame() { SetBitmap(bitmap); }

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality) : JpegFrame(quality) { SetBitmap(bitmap); }

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive) : JpegFrame(quality, isProgressive) {
    SetBitmap(bitmap);
}

JpegFrame::JpegFrame(Bitmap* bitmap, std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled)
    : JpegFrame(quality, isProgressive, chromaSubsamplingEnabled) {
    SetBitmap(bitmap);
}

JpegFrame::JpegFrame(FormatReader& reader, std::int32_t index) : SettingsFrameOf(reader, index) {}

JpegFrame::~JpegFrame() = default;

void JpegFrame::LoadSettings(FormatReader& reader, JpegEncoderOptions::Settings& settings) {
    static_cast<JpegReader&>(reader)._FrameLoadSettings(*this, settings);
}

std::int32_t JpegFrame::get_Quality() { return Get(&JpegEncoderOptions::get_Quality); }
void JpegFrame::set_Quality(std::int32_t quality) { Set(&JpegEncoderOptions::set_Quality, quality); }

bool JpegFrame::get_IsProgressive() { return Get(&JpegEncoderOptions::get_IsProgressive); }
void JpegFrame::set_IsProgressive(bool isProgressive) { Set(&JpegEncoderOptions::set_IsProgressive, isProgressive); }

bool JpegFrame::get_ChromaSubsamplingEnabled() { return Get(&JpegEncoderOptions::get_ChromaSubsamplingEnabled); }
void JpegFrame::set_ChromaSubsamplingEnabled(bool enabled) {
    Set(&JpegEncoderOptions::set_ChromaSubsamplingEnabled, enabled);
}

std::int32_t JpegFrame::get_RestartInterval() { return Get(&JpegEncoderOptions::get_RestartInterval); }
void JpegFrame::set_RestartInterval(std::int32_t restartInterval) {
    Set(&JpegEncoderOptions::set_RestartInterval, restartInterval);
}

} // namespace Corvane::Rasterloom::Codecs
