#pragma once

#include <Corvane/Rasterloom/Codecs/AdobeResourceBlock.h>
#include <Corvane/Rasterloom/Codecs/Rational.h>
#include <Corvane/Rasterloom/Codecs/UnsignedRational.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace ImagingFramework {
class DataItem;
template <class Key, class Value>
class IDictionary;
} // namespace ImagingFramework

namespace Corvane::Rasterloom {
class Bitmap;
}

namespace Corvane::Rasterloom::Codecs {

class MetadataEnumerator;

/// A value of a metadata dictionary; `std::monostate` is no value. Of a 64-bit number the low 32 bits count, unsigned.
using MetadataValue = std::variant<std::monostate, std::int32_t, std::int64_t, std::uint32_t, Rational,
                                   UnsignedRational, std::string, std::vector<std::uint8_t>, std::shared_ptr<Bitmap>,
                                   AdobeResourceBlock>;

/// A key with its first value.
using MetadataEntry = std::pair<std::uint32_t, MetadataValue>;

/// Metadata of one kind: one or more values per key. Adds nothing to the storage that it stands on, which says what
/// keys and values there are. Every call takes the lock. Of a 64-bit key the low 32 bits count.
class RASTERLOOM_API MetadataDictionary : public LockableObject {
public:
    using Storage = ImagingFramework::IDictionary<std::uint32_t, ImagingFramework::DataItem>;

    ~MetadataDictionary() override;

    using LockableObject::Dispose;

    /// The first value of a key. A key that is not there fails with `Host::ArgumentException` ("key").
    MetadataValue get_Item(std::int64_t key);
    /// No value fails with `Host::ArgumentNullException` ("value").
    void set_Item(std::int64_t key, const MetadataValue& value);
    std::vector<std::uint32_t> get_Keys();
    /// The first value of each key, in the order of the keys.
    std::vector<MetadataValue> get_Values();
    std::int32_t get_Count();
    /// Fail with `Host::ArgumentException` for a key that exists, and leave it as it is.
    void Add(std::int64_t key, const MetadataValue& value);
    void Add(std::int64_t key, const std::vector<MetadataValue>& values);
    void Clear();
    bool Contains(std::int64_t key);
    void Remove(std::int64_t key);
    /// Fails with `Host::ArgumentOutOfRangeException` ("index") for a negative index and with `Host::ArgumentException`
    /// ("array") when there is no room.
    void CopyTo(std::span<MetadataEntry> array, std::int32_t index);
    /// As `get_Item`.
    std::vector<MetadataValue> GetItemArray(std::int64_t key);
    void SetItemArray(std::int64_t key, const std::vector<MetadataValue>& values);
    /// The name of a key for people, and its value as a text; empty where the storage has none.
    std::string GetKeyDescription(std::int64_t key);
    std::string GetItemString(std::int64_t key);
    /// A cursor over the entries. The dictionary must outlive it.
    MetadataEnumerator GetEnumerator();

    bool get_IsFixedSize() const noexcept { return false; }
    bool get_IsReadOnly() const noexcept { return false; }
    bool get_IsSynchronized() const noexcept { return true; }
    const MetadataDictionary& get_SyncRoot() const noexcept { return *this; }

    /// Internal: the storage, for codecs.
    Storage& get__Storage() const;

protected:
    /// Null fails with `Host::ArgumentNullException` ("metaData").
    explicit MetadataDictionary(std::unique_ptr<Storage> metaData);

    void Dispose(bool disposing) override;
    static std::uint32_t ConvertKeyToUint(std::int64_t key) noexcept { return static_cast<std::uint32_t>(key); }

private:
    friend class MetadataEnumerator;

    template <class Body>
    auto Locked(Body body);
    template <class Read>
    std::string ReadText(std::int64_t key, Read read);
    std::vector<std::uint32_t> ReadKeys() const;
    MetadataValue ReadItem(std::uint32_t key) const;
    std::vector<MetadataValue> ReadItemArray(std::uint32_t key) const;
    void WriteItem(std::uint32_t key, const MetadataValue& value);
    void WriteItemArray(std::uint32_t key, const std::vector<MetadataValue>& values);

    std::unique_ptr<Storage> m_pMetaData;
};

} // namespace Corvane::Rasterloom::Codecs
