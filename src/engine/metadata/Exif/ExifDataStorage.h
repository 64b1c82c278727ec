#pragma once

#include "metadata/DataItem.h"
#include "metadata/Exif/ExifData.h"
#include "metadata/Exif/ExifKey.h"
#include "metadata/IDictionary.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// An EXIF block as a dictionary. Keys are those of `ExifKey`; the order is that of the directories, the tags, and the
/// thumbnail at the end. A key that cannot be one fails with `ArgumentException` ("key").
///
/// Shorts and longs are `UInt32`, signed longs `Int32`, rationals `UnsignedRational` and `Rational`, texts `String`,
/// bytes and undefined values `Bytes`, the thumbnail `BitmapData`. Pointer values that are read are fresh objects of
/// the receiver; those that are set belong to the storage from then on, unless the call fails.
class ExifDataStorage : public IDataItemObject, public IDictionary<std::uint32_t, DataItem>, public ExifData {
public:
    static constexpr DataType ItemType = DataType::ExifDataStorage;

    /// Texts and bytes are one value, numbers one for each.
    bool GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const override;
    bool GetItem(const std::uint32_t& key, DataItem& value) const override;
    bool GetItemString(const std::uint32_t& key, std::string& text) const override;
    bool GetKeyDescription(const std::uint32_t& key, std::string& text) const override;
    /// As `SetEntry`.
    bool SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) override;
    bool SetItem(const std::uint32_t& key, const DataItem& value) override;
    bool KeyToName(const std::uint32_t& key, std::string& text) const override;
    bool NameToKey(std::string_view text, std::uint32_t& key) const override;
    /// Tags of all directories, and 1 for the thumbnail.
    std::uint32_t GetCount() const override;
    bool GetKey(std::uint32_t index, std::uint32_t& key) const override;
    void Clear() override { ClearTags(); }
    /// Fails with `ArgumentException` ("key") for a key that is not there.
    bool Remove(const std::uint32_t& key) override;
    bool Contains(const std::uint32_t& key) const override;

    /// Stores values under a key of the tables, by their type and count; false, with nothing stored, for a tag that the
    /// tables do not have. Bytes are cut or filled with zeros to a fixed count; so are texts, which always end in a NUL
    /// and are cut between characters. Other types fail with `ArgumentOutOfRangeException` ("number of values") for a
    /// count that is not that of the table, and for none, and ("value") for a number above 65,535 in a short.
    bool SetEntry(std::uint32_t key, std::uint32_t count, const DataItem* pValues);
    /// Fails with `ArgumentException` ("key") for a key that is not there.
    void RemoveEntry(std::uint32_t key);

private:
    static void AssignValueToDataItem(const ExifTag& tag, std::uint32_t index, DataItem& value);
    static bool IsSingleValue(const ExifTag& tag) noexcept;
};

} // namespace ImagingFramework
