#include <Corvane/Rasterloom/Codecs/PcxFrame.h>

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PcxEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PcxReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- PcxEncoderOptions

PcxEncoderOptions::PcxEncoderOptions() : EncoderOptions(FormatManager::PcxFormat) {}

PcxEncoderOptions::~PcxEncoderOptions() = default;

std::unique_ptr<IFrame> PcxEncoderOptions::ToFrame() const {
    auto frame = std::make_unique<PcxFrame>();
    frame->ImportEncoderOptions(this);
    return frame;
}

// --- PcxFrame

PcxFrame::PcxFrame() = default;

PcxFrame::PcxFrame(Bitmap* bitmap) {
    SetBitmap(bitmap);
}

PcxFrame::PcxFrame(PcxReader& reader, std::int32_t index) : Frame(reader, index) {}

PcxFrame::~PcxFrame() = default;

std::unique_ptr<EncoderOptions> PcxFrame::CreateEmptyEncoderOptions() {
    return std::make_unique<PcxEncoderOptions>();
}

} // namespace Corvane::Rasterloom::Codecs
