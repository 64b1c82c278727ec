#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNodeDictionary.h>

namespace Corvane::Rasterloom::Codecs {

/// The properties of an XMP packet, as a tree of nodes that a host can read, change and build. Readers and writers of
/// image formats carry packets as strings and know nothing of the tree; `Load` and `Save` lead from one to the other.
///
/// The nodes are those of the top level: each has a qualified name, which is its key.
class RASTERLOOM_API XmpData final : public LockableObject, public XmpNodeDictionary {
public:
    /// Without properties.
    XmpData();
    /// As `Load`.
    explicit XmpData(std::string_view xmp);
    explicit XmpData(const char* xmp);
    ~XmpData() override;

    /// Replaces the nodes by those of a packet in UTF-8, with or without its wrapper; an empty string has none. Fails
    /// with `Exception` when it is no well-formed XMP, and then changes nothing. Null fails with
    /// `Host::ArgumentNullException` ("xmp").
    ///
    /// Qualifiers of arrays and structures, and qualifiers that are no plain texts, are not read. Of two texts of one
    /// language the first stands. Packets of more than a million elements and attributes, or nested more than 256 deep,
    /// are refused.
    void Load(std::string_view xmp);
    void Load(const char* xmp);
    /// A packet in UTF-8 with its wrapper. Fails with `UnexpectedException` when a name or a text cannot be written,
    /// and when the nodes are nested more deeply than `Load` accepts.
    std::string Save();

    using LockableObject::Dispose;

protected:
    void CheckNode(const XmpNode& node) const override;
    void Dispose(bool disposing) override;
};

} // namespace Corvane::Rasterloom::Codecs
