#include <Corvane/Rasterloom/Codecs/JpegWriter.h>

#include "metadata/Jpeg/JpegMetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

JpegWriter::JpegWriter() : FormatWriter(FormatManager::JpegFormat, std::make_unique<engine::JpegMetaData>()) {}

JpegWriter::JpegWriter(const std::shared_ptr<Host::Stream>& stream) : JpegWriter() { Open(stream); }

JpegWriter::JpegWriter(const std::filesystem::path& fileName) : JpegWriter() { Open(fileName); }

JpegWriter::~JpegWriter() { DisposeFinally(); }

std::unique_ptr<IFrame> JpegWriter::GetEmptyFrame() { return std::make_unique<JpegFrame>(); }

std::unique_ptr<IFormatWriter> JpegWriter::Clone() { return std::make_unique<JpegWriter>(); }

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
}

} // namespace Corvane::Rasterloom::Codecs
