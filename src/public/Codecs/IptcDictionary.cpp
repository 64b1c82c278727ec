#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>

#include "StorageCopy.h"
#include "metadata/Iptc/IptcDataStorage.h"

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

#define RASTERLOOM_IPTC_TAG(Key, Name, Text) static_assert(IptcDictionary::Name == Key);
#include "metadata/Iptc/IptcTags.def"
#undef RASTERLOOM_IPTC_TAG

IptcDictionary::IptcDictionary() : MetadataDictionary(std::make_unique<engine::IptcDataStorage>()) {}

IptcDictionary::IptcDictionary(IptcDictionary& other)
    : MetadataDictionary(CopyStorage<engine::IptcDataStorage>(other)) {}

IptcDictionary::IptcDictionary(std::unique_ptr<engine::IptcDataStorage> data) : MetadataDictionary(std::move(data)) {}

IptcDictionary::~IptcDictionary() = default;

std::unique_ptr<IptcDictionary> IptcDictionary::Clone() {
    return std::make_unique<IptcDictionary>(*this);
}

engine::IptcDataStorage& IptcDictionary::get__InternalData() const {
    return static_cast<engine::IptcDataStorage&>(get__Storage());
}

} // namespace Corvane::Rasterloom::Codecs
