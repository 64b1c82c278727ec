#include <Corvane/Rasterloom/Codecs/WbmpFrame.h>

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/WbmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/WbmpReader.h>

namespace Corvane::Rasterloom::Codecs {

// --- WbmpEncoderOptions

WbmpEncoderOptions::WbmpEncoderOptions() : EncoderOptions(FormatManager::WbmpFormat) {}

WbmpEncoderOptions::~WbmpEncoderOptions() = default;

std::unique_ptr<IFrame> WbmpEncoderOptions::ToFrame() const {
    auto frame = std::make_unique<WbmpFrame>();
    frame->ImportEncoderOptions(this);
    return frame;
}

// --- WbmpFrame

WbmpFrame::WbmpFrame() = default;

WbmpFrame::WbmpFrame(Bitmap* bitmap) {
    SetBitmap(bitmap);
}

WbmpFrame::WbmpFrame(WbmpReader& reader, std::int32_t index) : Frame(reader, index) {}

WbmpFrame::~WbmpFrame() = default;

std::unique_ptr<EncoderOptions> WbmpFrame::CreateEmptyEncoderOptions() {
    return std::make_unique<WbmpEncoderOptions>();
}

} // namespace Corvane::Rasterloom::Codecs
