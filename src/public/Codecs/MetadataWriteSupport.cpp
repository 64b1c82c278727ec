#include <Corvane/Rasterloom/Codecs/MetadataWriteSupport.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

MetadataWriteSupport::~MetadataWriteSupport() = default;

MetadataWriteSupport::Blocks MetadataWriteSupport::get__Blocks() const {
    const std::lock_guard lock(m_mutex);
    return m_blocks;
}

void MetadataWriteSupport::set__Blocks(Blocks blocks) {
    const std::lock_guard lock(m_mutex);
    m_blocks = std::move(blocks);
}

std::shared_ptr<ExifDictionary> MetadataWriteSupport::get_Exif() { return get__Blocks().Exif; }
std::shared_ptr<IptcDictionary> MetadataWriteSupport::get_Iptc() { return get__Blocks().Iptc; }
std::string MetadataWriteSupport::get_Xmp() { return get__Blocks().Xmp; }
std::shared_ptr<AdobeResourceDictionary> MetadataWriteSupport::get_AdobeResources() { return get__Blocks().AdobeResources; }

void MetadataWriteSupport::set_Exif(std::shared_ptr<ExifDictionary> value) {
    const std::lock_guard lock(m_mutex);
    m_blocks.Exif = std::move(value);
}
void MetadataWriteSupport::set_Iptc(std::shared_ptr<IptcDictionary> value) {
    const std::lock_guard lock(m_mutex);
    m_blocks.Iptc = std::move(value);
}
void MetadataWriteSupport::set_Xmp(std::string value) {
    const std::lock_guard lock(m_mutex);
    m_blocks.Xmp = std::move(value);
}
void MetadataWriteSupport::set_AdobeResources(std::shared_ptr<AdobeResourceDictionary> value) {
    const std::lock_guard lock(m_mutex);
    m_blocks.AdobeResources = std::move(value);
}

} // namespace Corvane::Rasterloom::Codecs
