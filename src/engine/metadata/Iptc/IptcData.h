#pragma once

#include "metadata/Iptc/IptcDataset.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ImagingFramework {

/// The data sets of an IPTC-IIM block, in the order of their keys; data sets of one key keep the order in which they
/// came.
class IptcData {
public:
    /// The data set that declares the encoding of the texts.
    static constexpr std::uint16_t CodedCharacterSet = 0x15A;

    /// Replaces the data sets by those that are read; what stands behind the last good one is ignored. A data set that
    /// is cut off fails as the reader does and leaves those before it; a failure that is not the engine's becomes
    /// `UnexpectedException`. Null fails with `ArgumentNullPointerException` ("pReader").
    void Initialize(AbstractReader* pReader);
    /// The block as it stands in files, empty without data sets; its size in bytes. Fails with `UnexpectedException`
    /// when a data set is too large.
    std::uint64_t GetIptcAsBinary(std::vector<std::uint8_t>& bytes) const;

    /// The texts of all data sets of the key, joined by "; "; whether there are any data sets.
    bool GetTagString(std::uint16_t key, std::string& text) const;
    /// The text for people of a key; false when it has none.
    static bool GetTagDescription(std::uint16_t key, std::string& text);
    /// Puts a data set behind those of its key, as it is.
    void SetTagInternal(IptcDataset dataset);
    /// The keys that there are, each once, ascending.
    const std::vector<std::uint16_t>& GetTagsIdentifiers() const noexcept { return m_keys; }
    /// Removes all data sets of the key; whether there were any.
    bool RemoveTag(std::uint16_t key);
    void RemoveAllTags() noexcept;
    std::span<const IptcDataset> GetDatasets(std::uint16_t key) const;
    std::uint64_t GetDatasetCount() const noexcept { return m_datasets.size(); }
    /// UTF-8 when the block declares it by the escape sequence ESC % G.
    IptcEncoding GetEncoding() const;

protected:
    /// Texts that are kept in `encoding` become texts in the declared one.
    void ConvertTexts(IptcEncoding encoding);

private:
    void ReadDatasets(AbstractReader* pReader);
    void SortByKey();

    std::vector<IptcDataset> m_datasets;
    std::vector<std::uint16_t> m_keys;
};

} // namespace ImagingFramework
