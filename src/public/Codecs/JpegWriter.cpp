#include <Corvane/Rasterloom/Codecs/JpegWriter.h>

#include "MetadataExchange.h"
#include "metadata/Jpeg/JpegMetaData.h"

#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

JpegWriter::JpegWriter() = default;

JpegWriter::JpegWriter(const std::shared_ptr<Host::Stream>& stream) : JpegWriter() { Open(stream); }

JpegWriter::JpegWriter(const std::filesystem::path& fileName) : JpegWriter() { Open(fileName); }

JpegWriter::~JpegWriter() { DisposeFinally(); }

void JpegWriter::OnBeforeAddFrame(Frame& frame) {
    auto* const own = dynamic_cast<JpegFrame*>(&frame);
    const JpegEncoderOptions::Settings settings = own != nullptr ? own->get__Settings() : JpegEncoderOptions::Settings{};
    const auto send = [this](engine::MetaDataId id, std::int32_t value) {
        engine::ItemTag tag(id, get__WrittenFrameCount());
        tag = value;
        _SetItem(tag);
    };
    send(engine::MetaDataId::Quality, settings.Quality);
    send(engine::MetaDataId::Progressive, settings.IsProgressive);
    send(engine::MetaDataId::ChromaSubsamplingEnabled, settings.ChromaSubsamplingEnabled);
    send(engine::MetaDataId::JpegRestartOption, settings.RestartInterval);
    SendMetadata(get__Blocks(), get__WrittenFrameCount(), [this](engine::ItemTag& tag) { _SetItem(tag); });
}

void JpegWriter::OnClose() { set__Blocks({}); }

void JpegWriter::OnImportEncoderOptions(const EncoderOptions& options) {
    if (const auto* const source = dynamic_cast<const MetadataWriteSupport*>(&options)) {
        set__Blocks(source->get__Blocks());
    }
}

void JpegWriter::OnExportEncoderOptions(EncoderOptions& options) {
    if (auto* const target = dynamic_cast<MetadataWriteSupport*>(&options)) {
        target->set__Blocks(get__Blocks());
    }
}

} // namespace Corvane::Rasterloom::Codecs
