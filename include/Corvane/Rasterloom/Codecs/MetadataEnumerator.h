#pragma once

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

namespace Corvane::Rasterloom::Codecs {

/// A cursor over a metadata dictionary, at first before the first entry. Reads the keys when it is made; an entry that
/// is removed later fails with `Host::ArgumentException` when it is read. It may outlive the dictionary; its values
/// then fail with `Host::ObjectDisposedException`.
class RASTERLOOM_API MetadataEnumerator {
public:
    /// Null fails with `Host::ArgumentNullException` ("metaData").
    explicit MetadataEnumerator(MetadataDictionary* metaData);

    /// Goes to the next entry; false behind the last one.
    bool MoveNext() noexcept;
    /// Back before the first entry.
    void Reset() noexcept { m_intIndex = -1; }
    /// The key with its first value. These four fail with `Host::InvalidOperationException` while the cursor is on no
    /// entry.
    MetadataEntry get_Current() const { return get_Entry(); }
    /// The same as `Current`.
    MetadataEntry get_Entry() const;
    /// The key alone.
    std::uint32_t get_Key() const;
    /// The first value alone.
    MetadataValue get_Value() const;

private:
    std::shared_ptr<ObjectLink<MetadataDictionary>> m_pMetaDataLink;
    std::vector<std::uint32_t> m_keys;
    std::int64_t m_intIndex = -1;
};

} // namespace Corvane::Rasterloom::Codecs
