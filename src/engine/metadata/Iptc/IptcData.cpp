#include "metadata/Iptc/IptcData.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Iptc/IptcTags.h"
#include "metadata/Streams/MemoryWriter.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace ImagingFramework {

namespace {

constexpr std::string_view Separator = "; ";
/// The escape sequence of UTF-8: ESC % G.
constexpr std::uint8_t Utf8Declaration[] = {0x1B, 0x25, 0x47};

} // namespace

// --- Binary form

void IptcData::ReadDatasets(AbstractReader* pReader) {
    for (;;) {
        IptcDataset dataset;
        if (!dataset.Initialize(pReader)) {
            return;
        }
        m_datasets.push_back(std::move(dataset));
    }
}

void IptcData::SortByKey() {
    std::ranges::stable_sort(m_datasets, {}, &IptcDataset::GetKey);
    m_keys.clear();
    for (const IptcDataset& dataset : m_datasets) {
        if (m_keys.empty() || m_keys.back() != dataset.GetKey()) {
            m_keys.push_back(dataset.GetKey());
        }
    }
}

void IptcData::Initialize(AbstractReader* pReader) {
    RemoveAllTags();
    try {
        ReadDatasets(pReader);
    } catch (const Exception&) {
        SortByKey();
        throw;
    } catch (...) {
        RemoveAllTags();
        throw UnexpectedException();
    }
    SortByKey();
}

std::uint64_t IptcData::GetIptcAsBinary(std::vector<std::uint8_t>& bytes) const {
    const std::uint64_t size = std::accumulate(
        m_datasets.begin(), m_datasets.end(), std::uint64_t{0},
        [](std::uint64_t sum, const IptcDataset& dataset) { return sum + dataset.GetSerializedSize(); });
    bytes.clear();
    if (size == 0) {
        return 0;
    }
    try {
        bytes.resize(size);
    } catch (const std::exception&) {
        throw UnexpectedException("Cannot create IStream while storing IPTC data.");
    }
    MemoryWriter writer(bytes.data(), size);
    for (const IptcDataset& dataset : m_datasets) {
        dataset.Serialize(writer);
    }
    return size;
}

// --- Data sets

std::span<const IptcDataset> IptcData::GetDatasets(std::uint16_t key) const {
    const auto found = std::ranges::equal_range(m_datasets, key, {}, &IptcDataset::GetKey);
    return {found.begin(), found.end()};
}

void IptcData::SetTagInternal(IptcDataset dataset) {
    const std::uint16_t key = dataset.GetKey();
    const auto keyPlace = std::ranges::lower_bound(m_keys, key);
    if (keyPlace == m_keys.end() || *keyPlace != key) {
        m_keys.insert(keyPlace, key);
    }
    m_datasets.insert(std::ranges::upper_bound(m_datasets, key, {}, &IptcDataset::GetKey), std::move(dataset));
}

bool IptcData::RemoveTag(std::uint16_t key) {
    std::erase(m_keys, key);
    return std::erase_if(m_datasets, [&](const IptcDataset& dataset) { return dataset.GetKey() == key; }) != 0;
}

void IptcData::RemoveAllTags() noexcept {
    m_datasets.clear();
    m_keys.clear();
}

// --- Texts

bool IptcData::GetTagString(std::uint16_t key, std::string& text) const {
    const auto datasets = GetDatasets(key);
    text.clear();
    if (FindIptcTag(key) != nullptr) {
        const IptcEncoding encoding = GetEncoding();
        for (const IptcDataset& dataset : datasets) {
            text.append(&dataset == datasets.data() ? std::string_view() : Separator).append(dataset.ToText(encoding));
        }
    }
    return !datasets.empty();
}

bool IptcData::GetTagDescription(std::uint16_t key, std::string& text) {
    return IptcDataset(key).GetTagDescription(text);
}

IptcEncoding IptcData::GetEncoding() const {
    const auto declarations = GetDatasets(CodedCharacterSet);
    const bool isUtf8 = !declarations.empty() && std::ranges::equal(declarations.front().GetData(), Utf8Declaration);
    return isUtf8 ? IptcEncoding::Utf8 : IptcEncoding::Ansi;
}

void IptcData::ConvertTexts(IptcEncoding encoding) {
    const IptcEncoding declared = GetEncoding();
    if (declared == encoding) {
        return;
    }
    const auto differs = [](std::uint8_t byte) { return byte >= 0x80; };
    for (IptcDataset& dataset : m_datasets) {
        if (FindIptcTag(dataset.GetKey()) != nullptr && std::ranges::any_of(dataset.GetData(), differs)) {
            dataset.SetData(dataset.ToText(encoding), declared);
        }
    }
}

} // namespace ImagingFramework
