#include "metadata/AdobeResources/AdobeResources.h"

#include "Common/AnsiCodePage.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/AdobeResources/AdobeResourceBlockIterator.h"

#include <algorithm>
#include <limits>

namespace ImagingFramework {

namespace {

std::string NameOf(const AdobeResourceBlockIterator& block) {
    const auto bytes = block.GetName();
    return AnsiToUtf8(std::as_bytes(std::span(bytes.begin(), std::ranges::find(bytes, 0))));
}

std::uint64_t RoundUpToEven(std::uint64_t size) {
    return size + size % 2;
}

void PutBigEndian(std::vector<std::uint8_t>& bytes, std::uint32_t value, std::uint32_t count) {
    while (count-- > 0) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * count)));
    }
}

/// A block with its name as it stands in files.
struct StoredBlock {
    const AdobeResourceBlock* Block;
    std::vector<std::byte> Name;

    std::uint64_t GetSize() const {
        return AdobeResourceBlockIterator::Signature.size() + 2 + RoundUpToEven(1 + Name.size()) + 4 +
               RoundUpToEven(Block->GetData().size());
    }
    void Append(std::vector<std::uint8_t>& bytes) const {
        const auto padToEven = [&] { bytes.resize(RoundUpToEven(bytes.size())); };
        const auto put = [&](const auto* pFirst, std::size_t count) {
            const auto* const bytesToPut = reinterpret_cast<const std::uint8_t*>(pFirst);
            bytes.insert(bytes.end(), bytesToPut, bytesToPut + count);
        };
        const auto& data = Block->GetData();
        put(AdobeResourceBlockIterator::Signature.data(), AdobeResourceBlockIterator::Signature.size());
        PutBigEndian(bytes, Block->GetId(), 2);
        PutBigEndian(bytes, static_cast<std::uint32_t>(Name.size()), 1);
        put(Name.data(), Name.size());
        padToEven();
        PutBigEndian(bytes, static_cast<std::uint32_t>(data.size()), 4);
        put(data.data(), data.size());
        padToEven();
    }
};

} // namespace

AdobeResources::AdobeResources(const AdobeResources& other) {
    *this = other;
}

AdobeResources& AdobeResources::operator=(const AdobeResources& other) {
    std::vector<std::shared_ptr<AdobeResourceBlock>> blocks(other.m_blocks.size());
    std::ranges::transform(other.m_blocks, blocks.begin(),
                           [](const auto& block) { return std::make_shared<AdobeResourceBlock>(*block); });
    m_blocks = std::move(blocks);
    return *this;
}

// --- Binary form

void AdobeResources::Initialize(const std::uint8_t* pData, std::uint64_t uintSize) {
    if (uintSize == 0) {
        throw ArgumentException("uintSize");
    }
    for (AdobeResourceBlockIterator block(pData, uintSize); block.IsOnBlock(); block.Next()) {
        std::vector<std::uint8_t> data(block.GetData(), block.GetData() + block.GetDataSize());
        m_blocks.push_back(std::make_shared<AdobeResourceBlock>(block.GetId(), NameOf(block), std::move(data)));
    }
}

void AdobeResources::Load(const std::vector<std::uint8_t>& objSrcBlock) {
    if (objSrcBlock.empty()) {
        throw ArgumentException("objSrcBlock");
    }
    Clear();
    Initialize(objSrcBlock.data(), objSrcBlock.size());
}

void AdobeResources::Save(std::vector<std::uint8_t>& bytes) const {
    std::uint64_t size = 0;
    std::vector<StoredBlock> blocks;
    blocks.reserve(m_blocks.size());
    for (const auto& block : m_blocks) {
        if (block->GetData().size() > std::numeric_limits<std::uint32_t>::max()) {
            throw OverflowException();
        }
        blocks.push_back({block.get(), Utf8ToAnsi(block->GetName())});
        size += blocks.back().GetSize();
    }
    bytes.clear();
    bytes.reserve(size);
    for (const StoredBlock& block : blocks) {
        block.Append(bytes);
    }
}

// --- By position

AdobeResourceBlock& AdobeResources::BlockAt(std::uint32_t uintIndex) const {
    if (uintIndex >= m_blocks.size()) {
        throw ArgumentOutOfRangeException("uintIndex");
    }
    return *m_blocks[uintIndex];
}

std::uint16_t AdobeResources::GetItemIdByIndex(std::uint32_t uintIndex) const {
    return BlockAt(uintIndex).GetId();
}

const std::vector<std::uint8_t>& AdobeResources::GetItemDataByIndex(std::uint32_t uintIndex) const {
    return BlockAt(uintIndex).GetData();
}

void AdobeResources::SetItemDataByIndex(std::uint32_t uintIndex, const std::vector<std::uint8_t>& objSrcItemData) {
    BlockAt(uintIndex).SetData(objSrcItemData);
}

void AdobeResources::SetItemNameByIndex(std::uint32_t uintIndex, std::string_view name) {
    BlockAt(uintIndex).SetName(name);
}

// --- As a dictionary

AdobeResourceBlock* AdobeResources::FindBlock(std::uint32_t key) const {
    const auto found = std::ranges::find_if(m_blocks, [&](const auto& block) { return block->GetId() == key; });
    return found != m_blocks.end() ? found->get() : nullptr;
}

bool AdobeResources::GetItem(const std::uint32_t& key, DataItem& value) const {
    const AdobeResourceBlock* const block = FindBlock(key);
    value.Empty();
    if (block != nullptr) {
        value = new AdobeResourceBlock(*block);
    }
    return block != nullptr;
}

bool AdobeResources::GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const {
    if (!Contains(key)) {
        return false;
    }
    return GetItem(key, values.emplace_back());
}

bool AdobeResources::SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) {
    if (key > std::numeric_limits<std::uint16_t>::max()) {
        throw ArgumentOutOfRangeException("key");
    }
    const auto id = static_cast<std::uint16_t>(key);
    std::shared_ptr<AdobeResourceBlock> changed;
    for (const DataItem& value : values) {
        const auto& source = static_cast<AdobeResourceBlock&>(value);
        changed = std::make_shared<AdobeResourceBlock>(id, source.GetName(), source.GetData());
    }
    if (changed) {
        const auto found = std::ranges::find_if(m_blocks, [&](const auto& block) { return block->GetId() == key; });
        if (found != m_blocks.end()) {
            *found = std::move(changed);
        } else {
            m_blocks.push_back(std::move(changed));
        }
    }
    for (DataItem value : values) {
        value.FreePointerValue();
    }
    return true;
}

bool AdobeResources::SetItem(const std::uint32_t& key, const DataItem& value) {
    return SetItemArray(key, {value});
}

bool AdobeResources::GetKey(std::uint32_t index, std::uint32_t& key) const {
    if (index >= m_blocks.size()) {
        return false;
    }
    key = m_blocks[index]->GetId();
    return true;
}

bool AdobeResources::Remove(const std::uint32_t& key) {
    return std::erase_if(m_blocks, [&](const auto& block) { return block->GetId() == key; }) != 0;
}

bool AdobeResources::GetItemString(const std::uint32_t&, std::string& text) const {
    text.clear();
    return false;
}

bool AdobeResources::GetKeyDescription(const std::uint32_t&, std::string& text) const {
    text.clear();
    return false;
}

bool AdobeResources::KeyToName(const std::uint32_t&, std::string& text) const {
    text.clear();
    return false;
}

bool AdobeResources::NameToKey(std::string_view, std::uint32_t&) const {
    return false;
}

} // namespace ImagingFramework
