#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>

#include "CallEngine.h"
#include "StorageCopy.h"
#include "metadata/Exif/ExifDataStorage.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

const std::type_info& HostType(engine::ExifDataType type) {
    switch (type) {
    case engine::ExifDataType::Ascii:
        return typeid(std::string);
    case engine::ExifDataType::Byte:
    case engine::ExifDataType::Undefined:
        return typeid(std::vector<std::uint8_t>);
    case engine::ExifDataType::SignedLong:
        return typeid(std::int32_t);
    case engine::ExifDataType::Rational:
        return typeid(UnsignedRational);
    case engine::ExifDataType::SignedRational:
        return typeid(Rational);
    default:
        return typeid(std::uint32_t);
    }
}

} // namespace

ExifDictionary::ExifDictionary() : MetadataDictionary(std::make_unique<engine::ExifDataStorage>()) {}

ExifDictionary::ExifDictionary(std::unique_ptr<engine::ExifDataStorage> exif) : MetadataDictionary(std::move(exif)) {}

ExifDictionary::ExifDictionary(ExifDictionary& other)
    : MetadataDictionary(CopyStorage<engine::ExifDataStorage>(other)) {}

ExifDictionary::~ExifDictionary() = default;

std::unique_ptr<ExifDictionary> ExifDictionary::Clone() { return std::make_unique<ExifDictionary>(*this); }

ExifItemInfo ExifDictionary::GetItemInfo(std::int64_t key) {
    const std::uint32_t number = ConvertKeyToUint(key);
    if (number == ExifKeys::Thumbnail) {
        return {typeid(std::shared_ptr<Bitmap>), 1};
    }
    const engine::ExifTagInfo* const pInfo = CallEngine([&]() -> const engine::ExifTagInfo* {
        if (number > 0xFFFF && !engine::ExifKey::IsPseudoKey(number)) {
            return nullptr;
        }
        const engine::ExifTagPlace place = engine::ExifKey::TranslateKey(number);
        return engine::ExifData::GetTagInfoRef(place.Tag, place.Ifd);
    });
    if (pInfo == nullptr) {
        throw Host::ArgumentException("Unknown key.", "key");
    }
    return {HostType(pInfo->Type), pInfo->Count};
}

engine::ExifDataStorage& ExifDictionary::get__InternalData() const {
    return static_cast<engine::ExifDataStorage&>(get__Storage());
}

} // namespace Corvane::Rasterloom::Codecs
