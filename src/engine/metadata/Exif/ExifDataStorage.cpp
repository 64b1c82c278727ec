#include "metadata/Exif/ExifDataStorage.h"

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/ExifText.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <limits>
#include <memory>
#include <utility>

namespace ImagingFramework {

namespace {

template <class T>
void Append(std::vector<std::uint8_t>& bytes, T value) {
    const std::size_t place = bytes.size();
    bytes.resize(place + sizeof value);
    std::memcpy(bytes.data() + place, &value, sizeof value);
}

void AppendNumber(ExifTag& tag, const DataItem& value) {
    switch (tag.Type) {
    case ExifDataType::Short: {
        const auto number = static_cast<std::uint32_t>(value);
        if (number > std::numeric_limits<std::uint16_t>::max()) {
            throw ArgumentOutOfRangeException("value");
        }
        Append(tag.Data, static_cast<std::uint16_t>(number));
        break;
    }
    case ExifDataType::Long:
        Append(tag.Data, static_cast<std::uint32_t>(value));
        break;
    case ExifDataType::SignedLong:
        Append(tag.Data, static_cast<std::int32_t>(value));
        break;
    case ExifDataType::Rational:
        Append(tag.Data, static_cast<UnsignedRational>(value));
        break;
    case ExifDataType::SignedRational:
        Append(tag.Data, static_cast<Rational>(value));
        break;
    default:
        throw UnexpectedException("Unsupported Exif data type.");
    }
}

/// The longest part of a text that fits into `size` bytes without cutting a character in two.
std::string_view CutText(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return text;
    }
    while (size != 0 && (static_cast<std::uint8_t>(text[size]) & 0xC0) == 0x80) {
        --size;
    }
    return text.substr(0, size);
}

ExifTag MakeTag(const ExifTagInfo& info, std::uint32_t count, const DataItem* pValues) {
    const bool isAnyCount = info.Count == ExifTagInfo::AnyCount;
    const bool isSingle = info.Type == ExifDataType::Ascii || ExifDataTypeSize(info.Type) == 1;
    if (count == 0 || (!isSingle && !isAnyCount && count != info.Count)) {
        throw ArgumentOutOfRangeException("number of values",
                                          "Number of values is incorrect for specified EXIF tag.");
    }
    ExifTag tag{info.Type, {}};
    if (info.Type == ExifDataType::Ascii) {
        const auto& text = static_cast<std::string&>(pValues[0]);
        const std::size_t size = isAnyCount ? text.size() + 1 : info.Count;
        const std::string_view stored = CutText(text, size - 1);
        tag.Data.assign(stored.begin(), stored.end());
        tag.Data.resize(size);
    } else if (isSingle) {
        tag.Data = static_cast<std::vector<std::uint8_t>&>(pValues[0]);
        tag.Data.resize(isAnyCount ? tag.Data.size() : info.Count);
    } else {
        for (std::uint32_t i = 0; i < count; ++i) {
            AppendNumber(tag, pValues[i]);
        }
    }
    return tag;
}

bool IsKey(std::uint32_t key) { return key <= 0xFFFF || ExifKey::IsPseudoKey(key); }

} // namespace

// --- Reading

bool ExifDataStorage::IsSingleValue(const ExifTag& tag) noexcept {
    return tag.Type == ExifDataType::Ascii || tag.Type == ExifDataType::Byte || tag.Type == ExifDataType::Undefined;
}

void ExifDataStorage::AssignValueToDataItem(const ExifTag& tag, std::uint32_t index, DataItem& value) {
    switch (tag.Type) {
    case ExifDataType::Short:
    case ExifDataType::Long:
        value = tag.GetNumber(index).value_or(0);
        break;
    case ExifDataType::SignedLong:
        value = tag.GetValue<std::int32_t>(index);
        break;
    case ExifDataType::Rational:
        value = tag.GetValue<UnsignedRational>(index);
        break;
    case ExifDataType::SignedRational:
        value = tag.GetValue<Rational>(index);
        break;
    case ExifDataType::Ascii:
        value = new std::string(ExifText::ReadText(tag.Data));
        break;
    case ExifDataType::Byte:
    case ExifDataType::Undefined:
        value = new std::vector<std::uint8_t>(tag.Data);
        break;
    }
}

bool ExifDataStorage::GetItem(const std::uint32_t& key, DataItem& value) const {
    value.Empty();
    if (key == ExifKey::Thumbnail) {
        if (GetThumbnailRef() != nullptr) {
            value = new BitmapData(*GetThumbnailRef());
        }
        return GetThumbnailRef() != nullptr;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    const ExifTag* const pTag = GetTag(place.Tag, place.Ifd);
    if (pTag == nullptr || (pTag->GetCount() == 0 && !IsSingleValue(*pTag))) {
        return false;
    }
    AssignValueToDataItem(*pTag, 0, value);
    return true;
}

bool ExifDataStorage::GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const {
    DataItem first;
    if (!GetItem(key, first)) {
        return false;
    }
    values.push_back(first);
    if (key == ExifKey::Thumbnail) {
        return true;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    const ExifTag& tag = *GetTag(place.Tag, place.Ifd);
    for (std::uint32_t i = 1; !IsSingleValue(tag) && i < tag.GetCount(); ++i) {
        AssignValueToDataItem(tag, i, values.emplace_back());
    }
    return true;
}

bool ExifDataStorage::GetItemString(const std::uint32_t& key, std::string& text) const {
    if (key == ExifKey::Thumbnail) {
        if (GetThumbnailRef() != nullptr) {
            text = fmt::format("{} x {}", GetThumbnailRef()->GetWidth(), GetThumbnailRef()->GetHeight());
        }
        return GetThumbnailRef() != nullptr;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    return GetTagString(place.Tag, place.Ifd, text);
}

bool ExifDataStorage::GetKeyDescription(const std::uint32_t& key, std::string& text) const {
    if (key == ExifKey::Thumbnail) {
        text = "Thumbnail";
        return true;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    text = GetTagDescription(place.Tag, place.Ifd);
    return !text.empty();
}

bool ExifDataStorage::KeyToName(const std::uint32_t& key, std::string& text) const {
    return ExifKey::KeyToName(key, text);
}

bool ExifDataStorage::NameToKey(std::string_view text, std::uint32_t& key) const {
    return ExifKey::NameToKey(text, key);
}

std::uint32_t ExifDataStorage::GetCount() const {
    std::uint32_t count = GetThumbnailRef() == nullptr ? 0 : 1;
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        count += GetTagCount(static_cast<ExifIfd>(number));
    }
    return count;
}

bool ExifDataStorage::GetKey(std::uint32_t index, std::uint32_t& key) const {
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        const auto ifd = static_cast<ExifIfd>(number);
        if (index < GetTagCount(ifd)) {
            key = ExifKey::MakeKey({GetTagAt(ifd, index), ifd});
            return true;
        }
        index -= GetTagCount(ifd);
    }
    key = ExifKey::Thumbnail;
    return index == 0 && GetThumbnailRef() != nullptr;
}

bool ExifDataStorage::Contains(const std::uint32_t& key) const {
    if (key == ExifKey::Thumbnail) {
        return GetThumbnailRef() != nullptr;
    }
    if (!IsKey(key)) {
        return false;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    return GetTag(place.Tag, place.Ifd) != nullptr;
}

// --- Changing

bool ExifDataStorage::SetEntry(std::uint32_t key, std::uint32_t count, const DataItem* pValues) {
    if (key == ExifKey::Thumbnail) {
        if (count == 0) {
            throw ArgumentOutOfRangeException("number of values",
                                              "Number of values is incorrect for specified EXIF tag.");
        }
        SetThumbnail(std::make_shared<BitmapData>(static_cast<BitmapData&>(pValues[0])));
        return true;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    const ExifTagInfo* const pInfo = GetTagInfoRef(place.Tag, place.Ifd);
    if (pInfo != nullptr) {
        SetTagInternal(place.Tag, place.Ifd, MakeTag(*pInfo, count, pValues));
    }
    return pInfo != nullptr;
}

bool ExifDataStorage::SetItem(const std::uint32_t& key, const DataItem& value) { return SetItemArray(key, {value}); }

bool ExifDataStorage::SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) {
    const bool isStored = SetEntry(key, static_cast<std::uint32_t>(values.size()), values.data());
    for (DataItem value : values) {
        value.FreePointerValue();
    }
    return isStored;
}

void ExifDataStorage::RemoveEntry(std::uint32_t key) {
    if (!Contains(key)) {
        throw ArgumentException("key");
    }
    if (key == ExifKey::Thumbnail) {
        SetThumbnail(nullptr);
        return;
    }
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    RemoveTag(place.Tag, place.Ifd);
}

bool ExifDataStorage::Remove(const std::uint32_t& key) {
    RemoveEntry(key);
    return true;
}

} // namespace ImagingFramework
