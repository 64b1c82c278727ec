#include "metadata/Xmp/XMPData.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XmpPacketParser.h"
#include "metadata/Xmp/XmpPacketWriter.h"

#include <algorithm>

namespace ImagingFramework {

XMPData::XMPData(std::string_view packet) {
    XmpPacketParser(*this).Parse(packet);
}

std::string XMPData::SaveToBuffer() const {
    return XmpPacketWriter(*this).Write();
}

// --- Namespaces

const XMPNamespace& XMPData::GetNamespaceByIndex(std::uint32_t uintIndex) const {
    if (uintIndex >= m_namespaces.size()) {
        throw ArgumentOutOfRangeException("uintIndex");
    }
    return *m_namespaces[uintIndex];
}

const XMPNamespace* XMPData::GetNamespaceByUri(std::string_view uri) const {
    const auto found = std::ranges::find_if(m_namespaces, [&](const auto* ns) { return ns->GetURI() == uri; });
    return found != m_namespaces.end() ? *found : nullptr;
}

void XMPData::AddNamespace(const XMPNamespace& ns) {
    if (std::ranges::find(m_namespaces, &ns) == m_namespaces.end()) {
        m_namespaces.push_back(&ns);
    }
}

const XMPNamespace& XMPData::AddNamespace(std::string_view uri, std::string_view prefix) {
    const XMPNamespace* const ns =
        prefix.empty() ? &XMPNamespace::Register(uri, prefix) : XMPNamespace::RegisterExactly(uri, prefix);
    if (ns == nullptr) {
        throw UnexpectedException("actual prefix is different");
    }
    AddNamespace(*ns);
    return *ns;
}

std::vector<const XMPNamespace*> XMPData::GetRegisteredNamespaces() {
    return XMPNamespace::GetRegistered();
}

// --- Nodes

XMPNode& XMPData::AddNode(XMPNodeType type, const XMPNamespace& ns, std::string_view name, std::string_view value) {
    XMPNode::RequireWritableName(ns, name, type);
    AddNamespace(ns);
    return AddNodeNoSync(std::make_shared<XMPNode>(type, &ns, name, value));
}

XMPNode& XMPData::AddNodeNoSync(std::shared_ptr<XMPNode> node) {
    const XMPNodeType type = node->GetNodeType();
    if (type == XMPNodeType::Qualifier || type == XMPNodeType::LocalizedTextItem) {
        throw UnexpectedException("not acceptable for a top-level node");
    }
    if (m_nodes.Find(&node->GetNamespace(), node->GetName()) != nullptr) {
        throw UnexpectedException("trying to add a duplicate");
    }
    return m_nodes.Add(std::move(node));
}

std::string XMPData::GetQualifiedName(const XMPNamespace& ns, std::string_view name) {
    return ns.GetPrefix() + ":" + std::string(name);
}

const XMPNamespace& XMPData::GetNamespaceByQualifiedNodeName(std::string_view name) const {
    const std::size_t colon = name.find(':');
    if (colon == name.npos) {
        throw UnexpectedException("Qualified name should contain a colon.");
    }
    const auto prefix = name.substr(0, colon);
    const auto found = std::ranges::find_if(m_namespaces, [&](const auto* ns) { return ns->GetPrefix() == prefix; });
    if (found == m_namespaces.end()) {
        throw UnexpectedException("invalid prefix");
    }
    return **found;
}

} // namespace ImagingFramework
