#include <Corvane/Rasterloom/Codecs/WbmpReader.h>

#include "CallOverStream.h"
#include "metadata/RecognizeMediaFormat.h"
#include "metadata/Wbmp/WbmpMetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/WbmpFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

WbmpReader::WbmpReader() : FormatReader(FormatManager::WbmpFormat, std::make_unique<engine::WbmpMetaData>()) {}

WbmpReader::WbmpReader(const std::shared_ptr<Host::Stream>& stream) : WbmpReader() {
    Open(stream);
}

WbmpReader::WbmpReader(const std::filesystem::path& fileName) : WbmpReader() {
    Open(fileName);
}

WbmpReader::~WbmpReader() {
    DisposeFinally();
}

std::unique_ptr<IFormatReader> WbmpReader::Clone() {
    return std::make_unique<WbmpReader>();
}

std::unique_ptr<Frame> WbmpReader::OnFrameLoad(std::int32_t index) {
    return std::unique_ptr<Frame>(new WbmpFrame(*this, index));
}

bool WbmpReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    StreamWrapper wrapper(stream);
    return CallEngine([&] { return engine::TryWbmpFormat(&wrapper); });
}

} // namespace Corvane::Rasterloom::Codecs
