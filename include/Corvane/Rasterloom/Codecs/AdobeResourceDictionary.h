#pragma once

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

namespace ImagingFramework {
class AdobeResources;
}

namespace Corvane::Rasterloom::Codecs {

/// The image resource blocks that editors leave in JPEG, TIFF and PSD files: numbered blocks with an
/// `AdobeResourceBlock` as value. They are kept for round trips; few of them mean anything to this library.
///
/// Several blocks may share a number. `get_Keys` then gives it once for each of them, look-ups find the first, setting
/// changes the first alone, and removing takes them all. Keys above 0xFFFF fail with
/// `Host::ArgumentOutOfRangeException` when they are set, values of another type with `Host::InvalidCastException`.
class RASTERLOOM_API AdobeResourceDictionary final : public MetadataDictionary {
public:
    /// Without entries.
    AdobeResourceDictionary();
    /// A copy of the other's contents.
    explicit AdobeResourceDictionary(AdobeResourceDictionary& other);
    /// Internal: takes over the engine's object; null fails with `Host::ArgumentNullException` ("metaData").
    explicit AdobeResourceDictionary(std::unique_ptr<ImagingFramework::AdobeResources> resources);
    ~AdobeResourceDictionary() override;

    /// A copy of the contents.
    std::unique_ptr<AdobeResourceDictionary> Clone();

    /// Internal: the engine's object, without the lock.
    ImagingFramework::AdobeResources& get__InternalResources() const;
};

} // namespace Corvane::Rasterloom::Codecs
