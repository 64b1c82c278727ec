#pragma once

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

namespace Corvane::Rasterloom::Codecs {

/// A cursor over a metadata dictionary, at first before the first entry. Reads the keys when it is made; an entry that
/// is removed later fails with `Host::ArgumentException` when it is read.
class RASTERLOOM_API MetadataEnumerator {
public:
    /// Null fails with `Host::ArgumentNullException` ("metaData").
    explicit MetadataEnumerator(MetadataDictionary* metaData);

    bool MoveNext() noexcept;
    void Reset() noexcept { m_intIndex = -1; }
    /// These fail with `Host::InvalidOperationException` while the cursor is on no entry.
    MetadataEntry get_Current() const { return get_Entry(); }
    MetadataEntry get_Entry() const;
    std::uint32_t get_Key() const;
    MetadataValue get_Value() const;

private:
    MetadataDictionary* m_pMetaData;
    std::vector<std::uint32_t> m_keys;
    std::int64_t m_intIndex = -1;
};

} // namespace Corvane::Rasterloom::Codecs
