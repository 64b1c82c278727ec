#include <Corvane/Rasterloom/Codecs/PngWriter.h>

#include "CallOverStream.h"
#include "FormatCodecFields.h"
#include "metadata/Png/PngMetaData.h"

#include <Corvane/Rasterloom/Codecs/PngFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

PngWriter::~PngWriter() { DisposeFinally(); }

void PngWriter::OnBeforeAddFrame(Frame& frame) {
    auto* const own = dynamic_cast<PngFrame*>(&frame);
    const PngEncoderOptions::Settings settings = own != nullptr ? own->get__Settings() : PngEncoderOptions::Settings{};
    engine::ItemTag tag(engine::MetaDataId::Interlaced, get__WrittenFrameCount());
    tag = std::int32_t{settings.Interlaced};
    _SetItem(tag);
    auto& metaData = static_cast<engine::PngMetaData&>(*m_pCodec->m_pMetaData);
    CallEngine([&] {
        metaData.SetCompressionLevel(settings.CompressionLevel);
        metaData.SetFilter(static_cast<engine::PngFilter>(settings.Filter));
    });
}

} // namespace Corvane::Rasterloom::Codecs
