#pragma once

#include "metadata/DataItem.h"
#include "metadata/IDictionary.h"
#include "metadata/Iptc/IptcData.h"

namespace ImagingFramework {

/// An IPTC block as a dictionary. Values are texts (`DataType::String`) of the keys that have a name, and bytes
/// (`DataType::Bytes`) of all others; both kinds are accepted for every key. An empty value is not kept.
///
/// Keys above 0xFFFF do not exist; setting one fails with `ArgumentOutOfRangeException` ("key"). A value of another
/// type fails with `InvalidTypeCastException` and changes nothing. Setting or removing the declaration of UTF-8
/// converts the texts that there are.
class IptcDataStorage : public IDataItemObject, public IDictionary<std::uint32_t, DataItem>, public IptcData {
public:
    static constexpr DataType ItemType = DataType::IptcDataStorage;

    /// Adds a value behind those of the key; false for an empty one, which is dropped. The value stays the caller's.
    bool AddDataset(std::uint32_t key, const DataItem& value);

    bool GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const override;
    bool GetItem(const std::uint32_t& key, DataItem& value) const override;
    bool GetItemString(const std::uint32_t& key, std::string& text) const override;
    bool GetKeyDescription(const std::uint32_t& key, std::string& text) const override;
    /// Stops at the first value that is empty; those behind it are not added.
    bool SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) override;
    bool SetItem(const std::uint32_t& key, const DataItem& value) override;
    bool KeyToName(const std::uint32_t& key, std::string& text) const override;
    bool NameToKey(std::string_view text, std::uint32_t& key) const override;
    std::uint32_t GetCount() const override { return static_cast<std::uint32_t>(GetTagsIdentifiers().size()); }
    /// In ascending order.
    bool GetKey(std::uint32_t index, std::uint32_t& key) const override;
    void Clear() override { RemoveAllTags(); }
    bool Remove(const std::uint32_t& key) override;
    bool Contains(const std::uint32_t& key) const override;

private:
    IptcDataset MakeDataset(std::uint16_t tag, const DataItem& value) const;
    DataItem MakeValue(const IptcDataset& dataset, IptcEncoding encoding) const;
};

} // namespace ImagingFramework
