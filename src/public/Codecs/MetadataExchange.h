#pragma once

// How metadata blocks go between the public objects and the items of a codec; what the formats that hold them share.

#include "ObjectGuard.h"
#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/ItemTag.h"
#include "metadata/Iptc/IptcDataStorage.h"

#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/MetadataWriteSupport.h>

#include <memory>
#include <optional>
#include <string>

namespace Corvane::Rasterloom::Codecs {

/// Gives the blocks to an encoder, which copies them; `set` takes a tag. Each dictionary is locked meanwhile.
template <class Set>
void SendMetadata(const MetadataWriteSupport::Blocks& blocks, std::int32_t frameIndex, Set set) {
    namespace engine = ImagingFramework;
    const auto send = [&](engine::MetaDataId id, auto* pDictionary, auto get) {
        engine::ItemTag tag(id, frameIndex);
        if (pDictionary == nullptr) {
            tag = static_cast<decltype(get())>(nullptr);
            set(tag);
            return;
        }
        const ObjectGuard guard(*pDictionary);
        tag = get();
        set(tag);
    };
    send(engine::MetaDataId::Exif, blocks.Exif.get(), [&] { return &blocks.Exif->get__InternalData(); });
    send(engine::MetaDataId::Iptc, blocks.Iptc.get(), [&] { return &blocks.Iptc->get__InternalData(); });
    send(engine::MetaDataId::AdobeResources, blocks.AdobeResources.get(),
         [&] { return &blocks.AdobeResources->get__InternalResources(); });
    std::string xmp = blocks.Xmp;
    engine::ItemTag tag(engine::MetaDataId::Xmp, frameIndex);
    tag = &xmp;
    set(tag);
}

/// The blocks of a file that is open, each read when it is first asked for. Not thread-safe.
class MetadataReadCells {
public:
    /// `get` asks the codec for an item; false when the file does not have it.
    template <class Get>
    std::shared_ptr<ExifDictionary> GetExif(Get get) {
        return Load<ImagingFramework::ExifDataStorage>(m_exif, ImagingFramework::MetaDataId::Exif, get);
    }
    template <class Get>
    std::shared_ptr<IptcDictionary> GetIptc(Get get) {
        return Load<ImagingFramework::IptcDataStorage>(m_iptc, ImagingFramework::MetaDataId::Iptc, get);
    }
    template <class Get>
    std::shared_ptr<AdobeResourceDictionary> GetAdobeResources(Get get) {
        return Load<ImagingFramework::AdobeResources>(m_resources, ImagingFramework::MetaDataId::AdobeResources, get);
    }
    template <class Get>
    std::string GetXmp(Get get) {
        ImagingFramework::ItemTag tag(ImagingFramework::MetaDataId::Xmp);
        if (!get(tag)) {
            return {};
        }
        return *std::unique_ptr<std::string>(static_cast<std::string*>(tag));
    }

private:
    template <class Internal, class Public, class Get>
    static std::shared_ptr<Public> Load(std::optional<std::shared_ptr<Public>>& cell, ImagingFramework::MetaDataId id,
                                        Get get) {
        if (!cell) {
            ImagingFramework::ItemTag tag(id);
            cell = get(tag) ? std::make_shared<Public>(std::unique_ptr<Internal>(static_cast<Internal*>(tag)))
                            : nullptr;
        }
        return *cell;
    }

    std::optional<std::shared_ptr<ExifDictionary>> m_exif;
    std::optional<std::shared_ptr<IptcDictionary>> m_iptc;
    std::optional<std::shared_ptr<AdobeResourceDictionary>> m_resources;
};

} // namespace Corvane::Rasterloom::Codecs
