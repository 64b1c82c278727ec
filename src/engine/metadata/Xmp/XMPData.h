#pragma once

#include "metadata/Xmp/XMPNode.h"

#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// The tree of an XMP packet: top-level properties, each in a namespace.
class XMPData {
public:
    /// Without properties.
    XMPData() = default;
    /// Parses a packet in UTF-8, with or without its wrapper; one that holds no RDF has no properties. A packet that is
    /// no well-formed XMP fails with `Exception`, whose text tells the place.
    explicit XMPData(std::string_view packet);
    XMPData(const XMPData&) = delete;
    XMPData& operator=(const XMPData&) = delete;

    /// A packet in UTF-8 with its wrapper and some room to grow in place.
    std::string SaveToBuffer() const;

    /// The namespaces that the packet declares and those that were added.
    std::uint32_t GetNamespaceCount() const noexcept { return static_cast<std::uint32_t>(m_namespaces.size()); }
    /// Fails with `ArgumentOutOfRangeException` ("uintIndex").
    const XMPNamespace& GetNamespaceByIndex(std::uint32_t uintIndex) const;
    /// Null when it is none of this tree's.
    const XMPNamespace* GetNamespaceByUri(std::string_view uri) const;
    /// Fails with `UnexpectedException` when the process knows the URI by another prefix, or the prefix is another
    /// URI's. An empty prefix asks for none in particular.
    const XMPNamespace& AddNamespace(std::string_view uri, std::string_view prefix);
    /// Takes up a namespace as it is.
    void AddNamespace(const XMPNamespace& ns);
    static std::vector<const XMPNamespace*> GetRegisteredNamespaces();

    std::uint32_t GetNodeCount() const noexcept { return m_nodes.GetCount(); }
    /// Fails with `ArgumentOutOfRangeException` ("uintIndex").
    XMPNode& GetNodeRef(std::uint32_t uintIndex) const { return m_nodes.At(uintIndex); }
    const XmpNodeList& GetNodesRef() const noexcept { return m_nodes; }
    /// Null when there is none.
    XMPNode* GetNodeRef(const XMPNamespace& ns, std::string_view name) const { return m_nodes.Find(&ns, name); }
    /// Qualifiers and items fail with `UnexpectedException`, and so does a name that is there.
    XMPNode& AddNode(XMPNodeType type, const XMPNamespace& ns, std::string_view name, std::string_view value);
    /// The form for a tree that is being read.
    XMPNode& AddNodeNoSync(std::shared_ptr<XMPNode> node);

    /// As "dc:title".
    static std::string GetQualifiedName(const XMPNamespace& ns, std::string_view name);
    /// The namespace of this tree that the prefix stands for; fails with `UnexpectedException`.
    const XMPNamespace& GetNamespaceByQualifiedNodeName(std::string_view name) const;

private:
    std::vector<const XMPNamespace*> m_namespaces;
    XmpNodeList m_nodes;
};

} // namespace ImagingFramework
