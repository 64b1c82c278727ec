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
template <class T>
class ObjectLink;

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
    /// What the values stand in: the engine's.
    using Storage = ImagingFramework::IDictionary<std::uint32_t, ImagingFramework::DataItem>;

    ~MetadataDictionary() override;

    using LockableObject::Dispose;

    /// The first value of a key. A key that is not there fails with `Host::ArgumentException` ("key").
    MetadataValue get_Item(std::int64_t key);
    /// No value fails with `Host::ArgumentNullException` ("value").
    void set_Item(std::int64_t key, const MetadataValue& value);
    /// The keys that have values, in the order of the storage.
    std::vector<std::uint32_t> get_Keys();
    /// The first value of each key, in the order of the keys.
    std::vector<MetadataValue> get_Values();
    /// Number of keys.
    std::int32_t get_Count();
    /// Fail with `Host::ArgumentException` for a key that exists, and leave it as it is.
    void Add(std::int64_t key, const MetadataValue& value);
    void Add(std::int64_t key, const std::vector<MetadataValue>& values);
    /// Removes everything.
    void Clear();
    /// Whether a key has a value.
    bool Contains(std::int64_t key);
    /// Removes all values of a key.
    void Remove(std::int64_t key);
    /// Copies all entries to the places from `index` on. Fails with `Host::ArgumentOutOfRangeException` ("index") for a
    /// negative index and with `Host::ArgumentException`
    /// ("array") when there is no room.
    void CopyTo(std::span<MetadataEntry> array, std::int32_t index);
    /// All values of a key. Fails as `get_Item`.
    std::vector<MetadataValue> GetItemArray(std::int64_t key);
    /// Replaces all values of a key.
    void SetItemArray(std::int64_t key, const std::vector<MetadataValue>& values);
    /// The name of a key for people; empty where the storage has none.
    std::string GetKeyDescription(std::int64_t key);
    /// The first value of a key as a text for people; empty where the storage has none.
    std::string GetItemString(std::int64_t key);
    /// A cursor over the entries.
    MetadataEnumerator GetEnumerator();

    /// Always false: entries come and go.
    bool get_IsFixedSize() const noexcept { return false; }
    /// Always false: entries can be set.
    bool get_IsReadOnly() const noexcept { return false; }
    /// Always true: each call takes the lock.
    bool get_IsSynchronized() const noexcept { return true; }
    /// The object whose lock it is: this one.
    const MetadataDictionary& get_SyncRoot() const noexcept { return *this; }

    /// Internal: the storage, for codecs.
    Storage& get__Storage() const;

protected:
    /// Null fails with `Host::ArgumentNullException` ("metaData").
    explicit MetadataDictionary(std::unique_ptr<Storage> metaData);

    void Dispose(bool disposing) override;
    /// The low 32 bits.
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
    std::shared_ptr<ObjectLink<MetadataDictionary>> m_pLink; ///< how a cursor finds this object
};

} // namespace Corvane::Rasterloom::Codecs
