#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>

#include "StorageCopy.h"
#include "metadata/AdobeResources/AdobeResources.h"

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

AdobeResourceDictionary::AdobeResourceDictionary() : MetadataDictionary(std::make_unique<engine::AdobeResources>()) {}

AdobeResourceDictionary::AdobeResourceDictionary(AdobeResourceDictionary& other)
    : MetadataDictionary(CopyStorage<engine::AdobeResources>(other)) {}

AdobeResourceDictionary::AdobeResourceDictionary(std::unique_ptr<engine::AdobeResources> resources)
    : MetadataDictionary(std::move(resources)) {}

AdobeResourceDictionary::~AdobeResourceDictionary() = default;

std::unique_ptr<AdobeResourceDictionary> AdobeResourceDictionary::Clone() {
    return std::make_unique<AdobeResourceDictionary>(*this);
}

engine::AdobeResources& AdobeResourceDictionary::get__InternalResources() const {
    return static_cast<engine::AdobeResources&>(get__Storage());
}

} // namespace Corvane::Rasterloom::Codecs
