#include <Corvane/Rasterloom/Codecs/PngFrame.h>

#include "SettingsFrame.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Codecs/PngReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- PngEncoderOptions

PngEncoderOptions::PngEncoderOptions() = default;

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

// --- PngFrame

template class SettingsFrameOf<Formats::Png, PngEncoderOptions>;

PngFrame::PngFrame() : SettingsFrameOf(PngEncoderOptions::Settings{}) {}

PngFrame::PngFrame(bool interlaced) : SettingsFrameOf(PngEncoderOptions(interlaced).get__Settings()) {}

PngFrame::PngFrame(Bitmap* bitmap) : PngFrame() { SetBitmap(bitmap); }

PngFrame::PngFrame(Bitmap* bitmap, bool interlaced) : PngFrame(interlaced) { SetBitmap(bitmap); }

PngFrame::PngFrame(FormatReader& reader, std::int32_t index) : SettingsFrameOf(reader, index) {}

PngFrame::~PngFrame() = default;

void PngFrame::LoadSettings(FormatReader& reader, PngEncoderOptions::Settings& settings) {
    settings.Interlaced = static_cast<PngReader&>(reader)._FrameLoadInterlaced(*this);
}

bool PngFrame::get_Interlaced() { return Get(&PngEncoderOptions::get_Interlaced); }
void PngFrame::set_Interlaced(bool interlaced) { Set(&PngEncoderOptions::set_Interlaced, interlaced); }

std::int32_t PngFrame::get_CompressionLevel() { return Get(&PngEncoderOptions::get_CompressionLevel); }
void PngFrame::set_CompressionLevel(std::int32_t compressionLevel) {
    Set(&PngEncoderOptions::set_CompressionLevel, compressionLevel);
}

PngFilter PngFrame::get_Filter() { return Get(&PngEncoderOptions::get_Filter); }
void PngFrame::set_Filter(PngFilter filter) { Set(&PngEncoderOptions::set_Filter, filter); }

} // namespace Corvane::Rasterloom::Codecs
