#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

#include "CallEngine.h"
#include "MetadataValues.h"
#include "ObjectGuard.h"
#include "ObjectLink.h"
#include "metadata/IDictionary.h"

#include <Corvane/Rasterloom/Codecs/MetadataEnumerator.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

[[noreturn]] void FailForMissingKey() {
    throw Host::ArgumentException("The value with the specified key does not exist in collection.", "key");
}

} // namespace

MetadataDictionary::MetadataDictionary(std::unique_ptr<Storage> metaData)
    : m_pMetaData(std::move(metaData)), m_pLink(std::make_shared<ObjectLink<MetadataDictionary>>(this)) {
    if (!m_pMetaData) {
        throw Host::ArgumentNullException("metaData");
    }
}

MetadataDictionary::~MetadataDictionary() {
    m_pLink->Clear();
    DisposeFinally();
}

void MetadataDictionary::Dispose(bool disposing) {
    m_pMetaData.reset();
    LockableObject::Dispose(disposing);
}

MetadataDictionary::Storage& MetadataDictionary::get__Storage() const {
    if (!m_pMetaData) {
        throw Host::ObjectDisposedException("MetadataDictionary");
    }
    return *m_pMetaData;
}

template <class Body>
auto MetadataDictionary::Locked(Body body) {
    const ObjectGuard guard(*this);
    get__Storage();
    return body();
}

// --- Bodies

std::vector<std::uint32_t> MetadataDictionary::ReadKeys() const {
    return CallEngine([&] {
        std::vector<std::uint32_t> keys;
        const std::uint32_t count = get__Storage().GetCount();
        for (std::uint32_t index = 0; index < count; ++index) {
            std::uint32_t key = 0;
            if (get__Storage().GetKey(index, key)) {
                keys.push_back(key);
            }
        }
        return keys;
    });
}

MetadataValue MetadataDictionary::ReadItem(std::uint32_t key) const {
    OwnedItems items;
    items.Get().resize(1);
    if (!CallEngine([&] { return get__Storage().GetItem(key, items.Get().front()); })) {
        FailForMissingKey();
    }
    return FromDataItem(items.Get().front());
}

std::vector<MetadataValue> MetadataDictionary::ReadItemArray(std::uint32_t key) const {
    OwnedItems items;
    if (!CallEngine([&] { return get__Storage().GetItemArray(key, items.Get()); })) {
        FailForMissingKey();
    }
    std::vector<MetadataValue> values(items.Get().size());
    std::ranges::transform(items.Get(), values.begin(), FromDataItem);
    return values;
}

void MetadataDictionary::WriteItem(std::uint32_t key, const MetadataValue& value) {
    OwnedItems items;
    items.Get().resize(1); // room first, so that the value has an owner as soon as it is there
    items.Get().front() = ToDataItem(value, "value");
    CallEngine([&] { get__Storage().SetItem(key, items.Get().front()); });
    items.Release();
}

void MetadataDictionary::WriteItemArray(std::uint32_t key, const std::vector<MetadataValue>& values) {
    OwnedItems items;
    items.Get().reserve(values.size());
    for (const MetadataValue& value : values) {
        items.Get().push_back(ToDataItem(value, "values"));
    }
    CallEngine([&] { get__Storage().SetItemArray(key, items.Get()); });
    items.Release();
}

// --- Members

MetadataValue MetadataDictionary::get_Item(std::int64_t key) {
    return Locked([&] { return ReadItem(ConvertKeyToUint(key)); });
}

void MetadataDictionary::set_Item(std::int64_t key, const MetadataValue& value) {
    Locked([&] { WriteItem(ConvertKeyToUint(key), value); });
}

std::vector<std::uint32_t> MetadataDictionary::get_Keys() {
    return Locked([&] { return ReadKeys(); });
}

std::vector<MetadataValue> MetadataDictionary::get_Values() {
    return Locked([&] {
        std::vector<MetadataValue> values;
        for (const std::uint32_t key : ReadKeys()) {
            values.push_back(ReadItem(key));
        }
        return values;
    });
}

std::int32_t MetadataDictionary::get_Count() {
    return Locked([&] { return CallEngine([&] { return static_cast<std::int32_t>(get__Storage().GetCount()); }); });
}

bool MetadataDictionary::Contains(std::int64_t key) {
    return Locked([&] { return CallEngine([&] { return get__Storage().Contains(ConvertKeyToUint(key)); }); });
}

namespace {

void RequireNewKey(const MetadataDictionary::Storage& storage, std::uint32_t key) {
    if (CallEngine([&] { return storage.Contains(key); })) {
        throw Host::ArgumentException("An element with the same key already exists in the dictionary.");
    }
}

} // namespace

void MetadataDictionary::Add(std::int64_t key, const MetadataValue& value) {
    Locked([&] {
        RequireNewKey(get__Storage(), ConvertKeyToUint(key));
        WriteItem(ConvertKeyToUint(key), value);
    });
}

void MetadataDictionary::Add(std::int64_t key, const std::vector<MetadataValue>& values) {
    Locked([&] {
        RequireNewKey(get__Storage(), ConvertKeyToUint(key));
        WriteItemArray(ConvertKeyToUint(key), values);
    });
}

void MetadataDictionary::Clear() {
    Locked([&] { CallEngine([&] { get__Storage().Clear(); }); });
}

void MetadataDictionary::Remove(std::int64_t key) {
    Locked([&] { CallEngine([&] { get__Storage().Remove(ConvertKeyToUint(key)); }); });
}

void MetadataDictionary::CopyTo(std::span<MetadataEntry> array, std::int32_t index) {
    if (index < 0) {
        throw Host::ArgumentOutOfRangeException("index", "The index should be non-negative.");
    }
    Locked([&] {
        const auto keys = ReadKeys();
        const auto begin = static_cast<std::size_t>(index);
        if (begin > array.size() || keys.size() > array.size() - begin) {
            throw Host::ArgumentException("The array is too small.", "array");
        }
        for (std::size_t i = 0; i < keys.size(); ++i) {
            array[begin + i] = {keys[i], ReadItem(keys[i])};
        }
    });
}

std::vector<MetadataValue> MetadataDictionary::GetItemArray(std::int64_t key) {
    return Locked([&] { return ReadItemArray(ConvertKeyToUint(key)); });
}

void MetadataDictionary::SetItemArray(std::int64_t key, const std::vector<MetadataValue>& values) {
    Locked([&] { WriteItemArray(ConvertKeyToUint(key), values); });
}

template <class Read>
std::string MetadataDictionary::ReadText(std::int64_t key, Read read) {
    return Locked([&] {
        return CallEngine([&] {
            std::string text;
            return (get__Storage().*read)(ConvertKeyToUint(key), text) ? text : std::string();
        });
    });
}

std::string MetadataDictionary::GetKeyDescription(std::int64_t key) {
    return ReadText(key, &Storage::GetKeyDescription);
}

std::string MetadataDictionary::GetItemString(std::int64_t key) { return ReadText(key, &Storage::GetItemString); }

MetadataEnumerator MetadataDictionary::GetEnumerator() { return MetadataEnumerator(this); }

// --- MetadataEnumerator

MetadataEnumerator::MetadataEnumerator(MetadataDictionary* metaData) {
    if (metaData == nullptr) {
        throw Host::ArgumentNullException("metaData");
    }
    m_pMetaDataLink = metaData->m_pLink;
    m_keys = metaData->get_Keys();
}

bool MetadataEnumerator::MoveNext() noexcept {
    const auto count = static_cast<std::int64_t>(m_keys.size());
    m_intIndex = std::min(m_intIndex + 1, count);
    return m_intIndex < count;
}

std::uint32_t MetadataEnumerator::get_Key() const {
    if (m_intIndex < 0 || m_intIndex >= static_cast<std::int64_t>(m_keys.size())) {
        throw Host::InvalidOperationException();
    }
    return m_keys[static_cast<std::size_t>(m_intIndex)];
}

MetadataValue MetadataEnumerator::get_Value() const {
    const std::uint32_t key = get_Key();
    MetadataDictionary* const metaData = m_pMetaDataLink->Get();
    if (metaData == nullptr) {
        throw Host::ObjectDisposedException("MetadataDictionary");
    }
    return metaData->get_Item(key);
}

MetadataEntry MetadataEnumerator::get_Entry() const { return {get_Key(), get_Value()}; }

} // namespace Corvane::Rasterloom::Codecs
