#include <Corvane/Rasterloom/Codecs/BmpWriter.h>

#include "metadata/ItemTag.h"

#include <Corvane/Rasterloom/Codecs/BmpFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

BmpWriter::~BmpWriter() { DisposeFinally(); }

void BmpWriter::OnBeforeAddFrame(Frame& frame) {
    auto* const own = dynamic_cast<BmpFrame*>(&frame);
    const CompressionType compression = own != nullptr ? own->get__Compression() : CompressionType::None;
    engine::ItemTag tag(engine::MetaDataId::FrameCompression, get__WrittenFrameCount());
    tag = static_cast<engine::FrameCompressionType>(compression);
    _SetItem(tag);
}

} // namespace Corvane::Rasterloom::Codecs
