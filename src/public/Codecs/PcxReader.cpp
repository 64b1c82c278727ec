#include <Corvane/Rasterloom/Codecs/PcxReader.h>

#include "CallOverStream.h"
#include "metadata/Pcx/PcxMetaData.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PcxFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

PcxReader::PcxReader() : FormatReader(FormatManager::PcxFormat, std::make_unique<engine::PcxMetaData>()) {}

PcxReader::PcxReader(const std::shared_ptr<Host::Stream>& stream) : PcxReader() {
    Open(stream);
}

PcxReader::PcxReader(const std::filesystem::path& fileName) : PcxReader() {
    Open(fileName);
}

PcxReader::~PcxReader() {
    DisposeFinally();
}

std::unique_ptr<IFormatReader> PcxReader::Clone() {
    return std::make_unique<PcxReader>();
}

std::unique_ptr<Frame> PcxReader::OnFrameLoad(std::int32_t index) {
    return std::unique_ptr<Frame>(new PcxFrame(*this, index));
}

bool PcxReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    StreamWrapper wrapper(stream);
    return CallEngine([&] { return engine::TryPcxFormat(&wrapper); });
}

} // namespace Corvane::Rasterloom::Codecs
