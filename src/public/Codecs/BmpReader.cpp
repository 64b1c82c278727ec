#include <Corvane/Rasterloom/Codecs/BmpReader.h>

#include "CallOverStream.h"
#include "ObjectGuard.h"
#include "metadata/Bmp/BitmapMetaData.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

BmpReader::BmpReader() : FormatReader(FormatManager::BmpFormat, std::make_unique<engine::BitmapMetaData>()) {}

BmpReader::BmpReader(const std::shared_ptr<Host::Stream>& stream) : BmpReader() { Open(stream); }

BmpReader::BmpReader(const std::filesystem::path& fileName) : BmpReader() { Open(fileName); }

BmpReader::~BmpReader() { DisposeFinally(); }

std::unique_ptr<IFormatReader> BmpReader::Clone() { return std::make_unique<BmpReader>(); }

std::unique_ptr<Frame> BmpReader::OnFrameLoad(std::int32_t index) {
    return std::unique_ptr<Frame>(new BmpFrame(*this, index));
}

bool BmpReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    StreamWrapper wrapper(stream);
    return CallEngine([&] { return engine::TryBmpFormat(&wrapper); });
}

void BmpReader::_FrameLoadCompression(BmpFrame& frame) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    engine::ItemTag tag(engine::MetaDataId::FrameCompression);
    _GetFrameItem(frame, tag);
    frame.SetLoadedCompression(CallEngine(
        [&] { return static_cast<CompressionType>(static_cast<engine::FrameCompressionType>(tag)); }));
}

} // namespace Corvane::Rasterloom::Codecs
