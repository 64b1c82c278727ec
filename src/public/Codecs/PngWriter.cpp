#include <Corvane/Rasterloom/Codecs/PngWriter.h>

#include "CallOverStream.h"
#include "FormatCodecFields.h"
#include "metadata/Png/PngMetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/PngFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

PngWriter::PngWriter() : FormatWriter(FormatManager::PngFormat, std::make_unique<engine::PngMetaData>()) {}

PngWriter::PngWriter(const std::shared_ptr<Host::Stream>& stream) : PngWriter() { Open(stream); }

PngWriter::PngWriter(const std::filesystem::path& fileName) : PngWriter() { Open(fileName); }

PngWriter::~PngWriter() { DisposeFinally(); }

std::unique_ptr<IFrame> PngWriter::GetEmptyFrame() { return std::make_unique<PngFrame>(); }

std::unique_ptr<IFormatWriter> PngWriter::Clone() { return std::make_unique<PngWriter>(); }

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
