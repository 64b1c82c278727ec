#include <Corvane/Rasterloom/Codecs/JpegReader.h>

#include "CallOverStream.h"
#include "FormatCodecFields.h"
#include "ObjectGuard.h"
#include "metadata/Jpeg/JpegMetaData.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

JpegReader::JpegReader() : FormatReader(FormatManager::JpegFormat, std::make_unique<engine::JpegMetaData>()) {}

JpegReader::JpegReader(const std::shared_ptr<Host::Stream>& stream) : JpegReader() { Open(stream); }

JpegReader::JpegReader(const std::filesystem::path& fileName) : JpegReader() { Open(fileName); }

JpegReader::~JpegReader() { DisposeFinally(); }

std::unique_ptr<IFormatReader> JpegReader::Clone() {
    auto clone = std::make_unique<JpegReader>();
    clone->set_FastThumbnails(get_FastThumbnails());
    return clone;
}

std::unique_ptr<Frame> JpegReader::OnFrameLoad(std::int32_t index) {
    return std::unique_ptr<Frame>(new JpegFrame(*this, index));
}

bool JpegReader::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    StreamWrapper wrapper(stream);
    return CallEngine([&] { return engine::TryJpegFormat(&wrapper); });
}

bool JpegReader::get_FastThumbnails() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_bFastThumbnails;
}

void JpegReader::set_FastThumbnails(bool value) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    m_bFastThumbnails = value;
    static_cast<engine::JpegMetaData&>(*m_pCodec->m_pMetaData).SetFastThumbnails(value);
}

void JpegReader::_FrameLoadSettings(JpegFrame& frame, JpegEncoderOptions::Settings& settings) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    engine::ItemTag subsampling(engine::MetaDataId::ChromaSubsamplingEnabled);
    _GetFrameItem(frame, subsampling);
    engine::ItemTag restart(engine::MetaDataId::JpegRestartOption);
    _GetFrameItem(frame, restart);
    CallEngine([&] {
        settings.ChromaSubsamplingEnabled = static_cast<std::int32_t>(subsampling) != 0;
        settings.RestartInterval = static_cast<std::int32_t>(restart);
    });
}

} // namespace Corvane::Rasterloom::Codecs
