#pragma once

#include <Corvane/Rasterloom/Codecs/IMetadataWriteSupport.h>

#include <mutex>

namespace Corvane::Rasterloom::Codecs {

/// The blocks that go into a file, for writers and options of formats that can hold them. Objects are shared with the
/// host, not copied, until a file is written. Thread-safe.
class RASTERLOOM_API MetadataWriteSupport : public IMetadataWriteSupport {
public:
    /// All blocks at once; null, or empty, is none.
    struct Blocks {
        /// EXIF.
        std::shared_ptr<ExifDictionary> Exif;
        /// IPTC.
        std::shared_ptr<IptcDictionary> Iptc;
        /// An XMP packet in UTF-8.
        std::string Xmp;
        /// Image resources.
        std::shared_ptr<AdobeResourceDictionary> AdobeResources;
    };

    ~MetadataWriteSupport() override;

    std::shared_ptr<ExifDictionary> get_Exif() override;
    void set_Exif(std::shared_ptr<ExifDictionary> value) override;
    std::shared_ptr<IptcDictionary> get_Iptc() override;
    void set_Iptc(std::shared_ptr<IptcDictionary> value) override;
    std::string get_Xmp() override;
    void set_Xmp(std::string value) override;
    std::shared_ptr<AdobeResourceDictionary> get_AdobeResources() override;
    void set_AdobeResources(std::shared_ptr<AdobeResourceDictionary> value) override;

    Blocks get__Blocks() const;
    void set__Blocks(Blocks blocks);

protected:
    MetadataWriteSupport() = default;

private:
    mutable std::mutex m_mutex;
    Blocks m_blocks;
};

} // namespace Corvane::Rasterloom::Codecs
