#include <Corvane/Rasterloom/Codecs/JpegReader.h>

#include "CallOverStream.h"
#include "FormatCodecFields.h"
#include "MetadataExchange.h"
#include "ObjectGuard.h"
#include "metadata/Jpeg/JpegMetaData.h"

#include <Corvane/Rasterloom/Codecs/JpegFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

JpegReader::JpegReader() : m_pMetadata(std::make_unique<MetadataReadCells>()) {}

JpegReader::JpegReader(const std::shared_ptr<Host::Stream>& stream) : JpegReader() { Open(stream); }

JpegReader::JpegReader(const std::filesystem::path& fileName) : JpegReader() { Open(fileName); }

JpegReader::~JpegReader() { DisposeFinally(); }

std::unique_ptr<IFormatReader> JpegReader::Clone() {
    auto clone = std::make_unique<JpegReader>();
    clone->set_FastThumbnails(get_FastThumbnails());
    return clone;
}

// --- Metadata

template <class Read>
auto JpegReader::ReadMetadata(Read read) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    CheckOpened();
    return read([this](engine::ItemTag& tag) {
        return CallOverStream(m_pCodec->m_pStreamWrapper.get(), [&] { return m_pCodec->m_pMetaData->GetItem(tag); });
    });
}

std::shared_ptr<ExifDictionary> JpegReader::get_Exif() {
    return ReadMetadata([this](auto get) { return m_pMetadata->GetExif(get); });
}

std::shared_ptr<IptcDictionary> JpegReader::get_Iptc() {
    return ReadMetadata([this](auto get) { return m_pMetadata->GetIptc(get); });
}

std::string JpegReader::get_Xmp() {
    return ReadMetadata([this](auto get) { return m_pMetadata->GetXmp(get); });
}

std::shared_ptr<AdobeResourceDictionary> JpegReader::get_AdobeResources() {
    return ReadMetadata([this](auto get) { return m_pMetadata->GetAdobeResources(get); });
}

void JpegReader::OnClose() { *m_pMetadata = {}; }

// --- Settings

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
