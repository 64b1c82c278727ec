#pragma once

#include "metadata/AdobeResources/AdobeResourceBlock.h"
#include "metadata/IDictionary.h"

#include <memory>

namespace ImagingFramework {

/// The image resource blocks of a file, in their order. As a dictionary its key is the number of a resource, and its
/// value an `AdobeResourceBlock` (`DataType::AdobeResources`).
///
/// Several blocks may share a number: a look-up finds the first of them, setting a value changes the first alone, and
/// removing takes them all. Numbers above 0xFFFF do not exist; setting one fails with `ArgumentOutOfRangeException`
/// ("key"). A value of another type fails with `InvalidTypeCastException`.
class AdobeResources : public IDataItemObject, public IDictionary<std::uint32_t, DataItem> {
public:
    static constexpr DataType ItemType = DataType::AdobeResources;
    /// The block that holds the IPTC data sets.
    static constexpr std::uint16_t IptcId = 0x0404;

    AdobeResources() = default;
    AdobeResources(const AdobeResources& other);
    AdobeResources& operator=(const AdobeResources& other);

    /// Appends the blocks of a buffer, as far as they are sound. No bytes fail with `ArgumentException` ("uintSize"),
    /// and others as `AdobeResourceBlockIterator` tells.
    void Initialize(const std::uint8_t* pData, std::uint64_t uintSize);
    /// Replaces the blocks by those of a buffer; an empty one fails with `ArgumentException` ("objSrcBlock").
    void Load(const std::vector<std::uint8_t>& objSrcBlock);
    /// All blocks as they stand in files. More than 4 GiB in one of them fails with `OverflowException`.
    void Save(std::vector<std::uint8_t>& bytes) const;

    /// These fail with `ArgumentOutOfRangeException` ("uintIndex").
    std::uint16_t GetItemIdByIndex(std::uint32_t uintIndex) const;
    const std::vector<std::uint8_t>& GetItemDataByIndex(std::uint32_t uintIndex) const;
    void SetItemDataByIndex(std::uint32_t uintIndex, const std::vector<std::uint8_t>& objSrcItemData);
    void SetItemNameByIndex(std::uint32_t uintIndex, std::string_view name);

    /// One value: a copy of the first block.
    bool GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const override;
    bool GetItem(const std::uint32_t& key, DataItem& value) const override;
    /// Sets one value after the other, so that the last one stays.
    bool SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) override;
    bool SetItem(const std::uint32_t& key, const DataItem& value) override;
    /// Number of blocks.
    std::uint32_t GetCount() const override { return static_cast<std::uint32_t>(m_blocks.size()); }
    /// The number of the block at a position.
    bool GetKey(std::uint32_t index, std::uint32_t& key) const override;
    void Clear() override { m_blocks.clear(); }
    bool Remove(const std::uint32_t& key) override;
    bool Contains(const std::uint32_t& key) const override { return FindBlock(key) != nullptr; }
    /// Resources have neither texts nor names.
    bool GetItemString(const std::uint32_t& key, std::string& text) const override;
    bool GetKeyDescription(const std::uint32_t& key, std::string& text) const override;
    bool KeyToName(const std::uint32_t& key, std::string& text) const override;
    bool NameToKey(std::string_view text, std::uint32_t& key) const override;

private:
    AdobeResourceBlock* FindBlock(std::uint32_t key) const;
    AdobeResourceBlock& BlockAt(std::uint32_t uintIndex) const;

    std::vector<std::shared_ptr<AdobeResourceBlock>> m_blocks;
};

} // namespace ImagingFramework
