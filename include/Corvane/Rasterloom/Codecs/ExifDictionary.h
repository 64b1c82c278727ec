#pragma once

#include <Corvane/Rasterloom/Codecs/ExifItemInfo.h>
#include <Corvane/Rasterloom/Codecs/ExifKeys.h>
#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

#include <cstdint>
#include <memory>

namespace ImagingFramework {
class ExifDataStorage;
}

namespace Corvane::Rasterloom::Codecs {

/// The EXIF metadata of an image: values by key, as `exif->get_Item(ExifDictionary::ExposureTime)`.
///
/// A key is one of `ExifKeys`, or a bare tag number up to 0xFFFF for the directory that EXIF 2.2 gives the tag; other
/// numbers fail with `Host::ArgumentException`. What is set must have the type and the count that `GetItemInfo` tells:
/// texts and bytes are cut or filled to a fixed count; a wrong count of numbers fails with
/// `Host::ArgumentOutOfRangeException`, another type with `Host::InvalidCastException`. Keys that the standard does not
/// know can be read and removed; setting them does nothing. Removing a key that is not there fails with
/// `Host::ArgumentException`.
class RASTERLOOM_API ExifDictionary final : public MetadataDictionary, public ExifKeys {
public:
    /// Without entries.
    ExifDictionary();
    /// Internal: takes over a block of the engine. Null fails with `Host::ArgumentNullException` ("metaData").
    explicit ExifDictionary(std::unique_ptr<ImagingFramework::ExifDataStorage> exif);
    /// A copy, under the lock of the other one.
    explicit ExifDictionary(ExifDictionary& other);
    ~ExifDictionary() override;

    /// A copy of the contents.
    std::unique_ptr<ExifDictionary> Clone();
    /// What values a key takes. A key that the standard does not know fails with `Host::ArgumentException` ("key").
    static ExifItemInfo GetItemInfo(std::int64_t key);

    /// Internal: the engine's object, without the lock.
    ImagingFramework::ExifDataStorage& get__InternalData() const;
};

} // namespace Corvane::Rasterloom::Codecs
