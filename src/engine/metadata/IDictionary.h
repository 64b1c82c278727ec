#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// A dictionary of values that have one or more entries per key. The order of the keys is that of the storage.
template <class Key, class Value>
class IDictionary {
public:
    virtual ~IDictionary() = default;
    /// Appends all values of the key; whether the key exists.
    virtual bool GetItemArray(const Key& key, std::vector<Value>& values) const = 0;
    /// The first value of the key; whether the key exists.
    virtual bool GetItem(const Key& key, Value& value) const = 0;
    /// The value in human-readable form.
    virtual bool GetItemString(const Key& key, std::string& text) const = 0;
    /// The name of the key for people.
    virtual bool GetKeyDescription(const Key& key, std::string& text) const = 0;
    /// Replaces the values of the key; whether all of them were accepted. A call that returns has taken over what the
    /// values point to; one that fails leaves it to the caller.
    virtual bool SetItemArray(const Key& key, const std::vector<Value>& values) = 0;
    virtual bool SetItem(const Key& key, const Value& value) = 0;
    /// The symbolic name of a key, as `ExifImageWidth`; false when it has none.
    virtual bool KeyToName(const Key& key, std::string& text) const = 0;
    /// The reverse; names compare without regard to case.
    virtual bool NameToKey(std::string_view text, Key& key) const = 0;
    /// Number of keys.
    virtual std::uint32_t GetCount() const = 0;
    virtual bool GetKey(std::uint32_t index, Key& key) const = 0;
    virtual void Clear() = 0;
    virtual bool Remove(const Key& key) = 0;
    virtual bool Contains(const Key& key) const = 0;
};

} // namespace ImagingFramework
