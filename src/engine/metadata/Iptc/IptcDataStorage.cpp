#include "metadata/Iptc/IptcDataStorage.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Iptc/IptcTags.h"

namespace ImagingFramework {

namespace {

constexpr std::uint32_t MaxKey = 0xFFFF;

std::uint16_t CheckedTag(std::uint32_t key) {
    if (key > MaxKey) {
        throw ArgumentOutOfRangeException("key");
    }
    return static_cast<std::uint16_t>(key);
}

const IptcTag* FindTag(std::uint32_t key) {
    return key <= MaxKey ? FindIptcTag(static_cast<std::uint16_t>(key)) : nullptr;
}

std::span<const IptcDataset> FindDatasets(const IptcData& data, std::uint32_t key) {
    return key <= MaxKey ? data.GetDatasets(static_cast<std::uint16_t>(key)) : std::span<const IptcDataset>();
}

} // namespace

// --- Values

IptcDataset IptcDataStorage::MakeDataset(std::uint16_t tag, const DataItem& value) const {
    IptcDataset dataset(tag);
    switch (value.GetType()) {
    case DataType::String:
        dataset.SetData(static_cast<std::string&>(value), GetEncoding());
        break;
    case DataType::Bytes:
        dataset.SetData(static_cast<std::vector<std::uint8_t>&>(value));
        break;
    default:
        throw InvalidTypeCastException("value");
    }
    return dataset;
}

DataItem IptcDataStorage::MakeValue(const IptcDataset& dataset, IptcEncoding encoding) const {
    std::string text = dataset.ToText(encoding);
    if (dataset.IsEmpty() || !text.empty()) {
        return DataItem(new std::string(std::move(text)));
    }
    return DataItem(new std::vector<std::uint8_t>(dataset.GetData().begin(), dataset.GetData().end()));
}

bool IptcDataStorage::GetItem(const std::uint32_t& key, DataItem& value) const {
    const auto datasets = FindDatasets(*this, key);
    value.Empty();
    if (!datasets.empty()) {
        value = MakeValue(datasets.front(), GetEncoding());
    }
    return !datasets.empty();
}

bool IptcDataStorage::GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const {
    const auto datasets = FindDatasets(*this, key);
    values.reserve(values.size() + datasets.size());
    const IptcEncoding encoding = GetEncoding();
    for (const IptcDataset& dataset : datasets) {
        values.push_back(MakeValue(dataset, encoding));
    }
    return !datasets.empty();
}

bool IptcDataStorage::GetItemString(const std::uint32_t& key, std::string& text) const {
    text.clear();
    return key <= MaxKey && GetTagString(static_cast<std::uint16_t>(key), text);
}

bool IptcDataStorage::AddDataset(std::uint32_t key, const DataItem& value) {
    IptcDataset dataset = MakeDataset(CheckedTag(key), value);
    if (dataset.IsEmpty()) {
        return false;
    }
    const IptcEncoding encoding = GetEncoding();
    SetTagInternal(std::move(dataset));
    ConvertTexts(encoding);
    return true;
}

bool IptcDataStorage::SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) {
    const std::uint16_t tag = CheckedTag(key);
    std::vector<IptcDataset> datasets;
    bool accepted = true;
    for (auto value = values.begin(); accepted && value != values.end(); ++value) {
        datasets.push_back(MakeDataset(tag, *value));
        accepted = !datasets.back().IsEmpty();
    }
    const IptcEncoding encoding = GetEncoding();
    RemoveTag(tag);
    for (IptcDataset& dataset : datasets) {
        if (!dataset.IsEmpty()) {
            SetTagInternal(std::move(dataset));
        }
    }
    ConvertTexts(encoding);
    for (DataItem value : values) {
        value.FreePointerValue();
    }
    return accepted;
}

bool IptcDataStorage::SetItem(const std::uint32_t& key, const DataItem& value) {
    return SetItemArray(key, {value});
}

// --- Keys

bool IptcDataStorage::GetKeyDescription(const std::uint32_t& key, std::string& text) const {
    const IptcTag* const tag = FindTag(key);
    text = tag != nullptr ? tag->Description : std::string_view();
    return tag != nullptr;
}

bool IptcDataStorage::KeyToName(const std::uint32_t& key, std::string& text) const {
    const IptcTag* const tag = FindTag(key);
    text = tag != nullptr ? tag->Name : std::string_view();
    return tag != nullptr;
}

bool IptcDataStorage::NameToKey(std::string_view text, std::uint32_t& key) const {
    const IptcTag* const tag = FindIptcTag(text);
    if (tag != nullptr) {
        key = tag->Key;
    }
    return tag != nullptr;
}

bool IptcDataStorage::GetKey(std::uint32_t index, std::uint32_t& key) const {
    if (index >= GetCount()) {
        return false;
    }
    key = GetTagsIdentifiers()[index];
    return true;
}

bool IptcDataStorage::Remove(const std::uint32_t& key) {
    if (!Contains(key)) {
        return false;
    }
    const IptcEncoding encoding = GetEncoding();
    RemoveTag(static_cast<std::uint16_t>(key));
    ConvertTexts(encoding);
    return true;
}

bool IptcDataStorage::Contains(const std::uint32_t& key) const {
    return !FindDatasets(*this, key).empty();
}

} // namespace ImagingFramework
