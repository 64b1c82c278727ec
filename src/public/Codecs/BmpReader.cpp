#include <Corvane/Rasterloom/Codecs/BmpReader.h>

#include "CallOverStream.h"
#include "ObjectGuard.h"
#include "metadata/ItemTag.h"

#include <Corvane/Rasterloom/Codecs/BmpFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

BmpReader::~BmpReader() { DisposeFinally(); }

void BmpReader::_FrameLoadCompression(BmpFrame& frame) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    engine::ItemTag tag(engine::MetaDataId::FrameCompression);
    _GetFrameItem(frame, tag);
    frame.SetLoadedCompression(CallEngine(
        [&] { return static_cast<CompressionType>(static_cast<engine::FrameCompressionType>(tag)); }));
}

} // namespace Corvane::Rasterloom::Codecs
